// Lets GoogleTest show Qt strings in its failure messages as text.
#pragma once

#include <QString>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
