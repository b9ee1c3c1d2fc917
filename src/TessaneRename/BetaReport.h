// A problem report as the user reads it before sending: a header line with the system's facts
// (the version with its build number first), the user's words as typed under "— What happened"
// ("(none)" when empty) and, when the user includes the details, what the window showed, the
// rules being built, the diary and the crash text, each in a section of its own. The headings are
// in English whatever the interface's language: the report is read by the developers.
#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>

namespace tessane {

struct BetaReport {
  struct System {
    QString app;           // "Tessane 0.1.0 (412)": the version and the build number
    QString os;            // the operating system's name and version
    QString machine;       // the hardware model, "?" when it can't be read
    QString architecture;  // "x86_64"
    QStringList languages;

    // This machine's facts. `root` is where /sys and /proc are looked for (tests pass their own).
    static System current(const QString& version, const QString& build,
                          const std::filesystem::path& root = "/");
  };

  QString comment;
  System system;
  QString context;  // "Error on screen: …" and "Folders in the list: …"
  QStringList diary;
  QString rules;
  std::optional<QString> crash;
  bool includesDetails = true;

  QString headerLine() const;
  QString text() const;
};

// The hardware model: the firmware's vendor and product name, else the device tree's model,
// else "?".
QString hardwareModel(const std::filesystem::path& root = "/");

}  // namespace tessane
