#include "AppLanguage.h"

#include <QSettings>

namespace tessane {

std::string_view rawValue(AppLanguage language) {
  switch (language) {
    case AppLanguage::system:
      return "system";
    case AppLanguage::english:
      return "en";
    case AppLanguage::italian:
      return "it";
  }
  return "system";
}

std::optional<AppLanguage> appLanguageFromRawValue(std::string_view text) {
  for (AppLanguage l : {AppLanguage::system, AppLanguage::english, AppLanguage::italian}) {
    if (rawValue(l) == text) return l;
  }
  return std::nullopt;
}

AppLanguage storedLanguage(const QSettings& settings) {
  return appLanguageFromRawValue(settings.value("appLanguage").toString().toStdString())
      .value_or(AppLanguage::system);
}

void storeLanguage(QSettings& settings, AppLanguage language) {
  if (language == AppLanguage::system) {
    settings.remove("appLanguage");
  } else {
    const std::string_view code = rawValue(language);
    settings.setValue("appLanguage",
                      QString::fromLatin1(code.data(), static_cast<qsizetype>(code.size())));
  }
}

}  // namespace tessane
