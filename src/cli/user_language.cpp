#include "cli/user_language.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#endif

namespace vaxel {
namespace {

// The language is known before the options are read, so that what is wrong with them is told in this language
// too. A wrong code is theirs to tell.
std::string_view LanguageAskedFor(const std::vector<std::string>& arguments) {
  constexpr std::string_view option = "--language";
  std::string_view code;
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    const std::string_view argument = arguments[i];
    if (argument == option && i + 1 < arguments.size()) code = arguments[i + 1];
    if (argument.starts_with(option) && argument.substr(option.size()).starts_with('=')) {
      code = argument.substr(option.size() + 1);
    }
  }
  return code;
}

#ifdef _WIN32

std::string UsersLanguage() {
  switch (PRIMARYLANGID(GetUserDefaultUILanguage())) {
    case LANG_FRENCH:
      return "fr";
    case LANG_SPANISH:
      return "es";
    default:
      return "en";
  }
}

#else

// "fr" of "fr_FR.UTF-8", "fr.UTF-8" and "fr@euro".
std::string UsersLanguage() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (!value || !*value) continue;
    const std::string_view locale = value;
    return std::string(locale.substr(0, locale.find_first_of("_.@")));
  }
  return {};
}

#endif

}  // namespace

int LanguageBase(const StringTable& strings, const std::vector<std::string>& arguments) {
  const int asked = strings.BaseOfCode(LanguageAskedFor(arguments));
  if (asked >= 0) return asked;
  const int users = strings.BaseOfCode(UsersLanguage());
  return users >= 0 ? users : strings.BaseOfCode("en");
}

}  // namespace vaxel
