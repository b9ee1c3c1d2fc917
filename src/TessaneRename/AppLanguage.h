// The interface language, stored for the next start ("appLanguage": "en" or "it"; absent means
// the system's). InterfaceTranslation installs the language it stands for at start.
#pragma once

#include <optional>
#include <string_view>

class QSettings;

namespace tessane {

enum class AppLanguage { system, english, italian };

std::string_view rawValue(AppLanguage language);  // "system", "en", "it"
std::optional<AppLanguage> appLanguageFromRawValue(std::string_view text);

AppLanguage storedLanguage(const QSettings& settings);
// `system` removes the stored choice; a language stores its code.
void storeLanguage(QSettings& settings, AppLanguage language);

}  // namespace tessane
