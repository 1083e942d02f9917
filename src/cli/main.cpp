#include <clocale>
#include <cstdio>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "cli/options.h"
#include "cli/render_script.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <filesystem>
#endif

namespace {

int Run(std::vector<std::string> arguments) {
  vaxel::ExitStatus status = vaxel::ExitStatus::Drawn;
  // Dates alone follow the user's locale; numbers have their "." everywhere.
  std::setlocale(LC_TIME, "");
  try {
    const auto options = vaxel::ReadOptions(std::move(arguments), status);
    if (options) status = vaxel::RenderScript(*options);
  } catch (const std::bad_alloc&) {
    std::fputs("vaxel-render: out of memory\n", stderr);
    status = vaxel::ExitStatus::FileFailed;
  }
  return static_cast<int>(status);
}

}  // namespace

#ifdef _WIN32

extern "C" int wmain(int count, wchar_t** arguments) {
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) {
    const std::u8string text = std::filesystem::path(arguments[i]).u8string();
    texts.emplace_back(text.begin(), text.end());
  }
  // Line ends are written as they are: a drawing is the same file on every system.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  return Run(std::move(texts));
}

#else

int main(int count, char** arguments) {
  return Run({arguments + 1, arguments + count});
}

#endif
