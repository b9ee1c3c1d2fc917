// The language of the interface, installed at start. "appLanguage" chooses it; `system` takes the
// first of the locale's preferred languages that the application speaks, else English. The
// application's own translations are compiled into the program (":/i18n/tessane_<code>.qm"),
// English being the language of the source; Qt's own texts (standard buttons, file dialogs) come
// from the system's Qt translations when they are installed, and are simply left out otherwise.
//
// Installing needs a QCoreApplication. The translators stay installed while the object lives; the
// default QLocale follows a language chosen by hand, so that dates read in that language too.
#pragma once

#include <QLocale>
#include <QString>

#include <memory>

#include "TessaneRename/AppLanguage.h"

class QTranslator;

namespace tessane {

class InterfaceTranslation {
 public:
  // `system` stands for the system's locale (tests pass their own).
  explicit InterfaceTranslation(AppLanguage language, const QLocale& system = QLocale::system());
  ~InterfaceTranslation();
  InterfaceTranslation(const InterfaceTranslation&) = delete;
  InterfaceTranslation& operator=(const InterfaceTranslation&) = delete;

  // "en" or "it": the language the interface speaks.
  QString languageCode() const { return code_; }
  // Whether Qt's own texts were found in that language (always true for English).
  bool hasQtTexts() const { return hasQtTexts_; }

  // The language `language` stands for on a system with `system`'s locale.
  static QString languageCodeFor(AppLanguage language, const QLocale& system);
  // The choice as the settings list it: "System language" in the interface's language, each
  // language in its own ("English", "Italiano"), so that it can be found whatever is showing.
  static QString title(AppLanguage language);

 private:
  QString code_;
  bool hasQtTexts_ = false;
  QLocale previousDefault_;
  std::unique_ptr<QTranslator> own_;
  std::unique_ptr<QTranslator> qt_;
};

}  // namespace tessane
