#include "AppLanguage.h"

#include <QSettings>

#include "RenameEngine/StoredText.h"

namespace tessane {

namespace {
constexpr std::pair<AppLanguage, std::string_view> kLanguages[] = {
    {AppLanguage::system, "system"}, {AppLanguage::english, "en"}, {AppLanguage::italian, "it"}};
}  // namespace

std::string_view rawValue(AppLanguage language) {
  return storedText(kLanguages, language);
}

std::optional<AppLanguage> appLanguageFromRawValue(std::string_view text) {
  return fromStoredText(kLanguages, text);
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
