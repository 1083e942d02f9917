#include <clocale>
#include <cstdio>
#include <exception>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/options.h"
#include "cli/render_script.h"
#include "cli/user_language.h"
#include "cli/user_texts.h"
#include "resources/string_table.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <filesystem>

#include "winbase/safe_process.h"
#endif

namespace {

using Arguments = std::vector<std::string>;

vaxel::ExitStatus Run(Arguments arguments, const vaxel::UserTexts& texts) {
  vaxel::ExitStatus status = vaxel::ExitStatus::Drawn;
  // Dates alone follow the user's locale; numbers have their "." everywhere.
  std::setlocale(LC_TIME, "");
  const auto options = vaxel::ReadOptions(std::move(arguments), texts, status);
  return options ? vaxel::RenderScript(*options, texts) : status;
}

// Whatever is thrown, the user gets a message and a status instead of a signal.
int Guarded(const std::function<Arguments()>& readArguments) {
  constexpr int english = vaxel::LanguageBlock;
  const vaxel::StringTable strings;
  vaxel::UserTexts texts(strings, english);
  try {
    try {
      Arguments arguments = readArguments();
      texts = vaxel::UserTexts(strings, vaxel::LanguageBase(strings, arguments));
      return static_cast<int>(Run(std::move(arguments), texts));
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception& failure) {
      vaxel::Complain(texts.Fill(vaxel::TextId::CliUnforeseen, failure.what()));
    } catch (...) {
      vaxel::Complain(texts.Fill(vaxel::TextId::CliUnforeseen, "?"));
    }
  } catch (...) {
    // There may not even be room to put a message together.
    const std::string_view text = texts.Get(vaxel::TextId::CliOutOfMemory);
    std::fprintf(stderr, "vaxel-render: %.*s\n", static_cast<int>(text.size()), text.data());
  }
  return static_cast<int>(vaxel::ExitStatus::FileFailed);
}

}  // namespace

#ifdef _WIN32

extern "C" int wmain(int count, wchar_t** arguments) {
  vaxel::GuardProcess();
  // Line ends are written as they are: a drawing is the same file on every system.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  return Guarded([&] {
    Arguments texts;
    for (int i = 1; i < count; ++i) {
      const std::u8string text = std::filesystem::path(arguments[i]).u8string();
      texts.emplace_back(text.begin(), text.end());
    }
    return texts;
  });
}

#else

int main(int count, char** arguments) {
  return Guarded([&] { return Arguments(arguments + 1, arguments + count); });
}

#endif
