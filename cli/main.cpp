#include <clocale>
#include <cstdio>
#include <exception>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/render_script.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <filesystem>
#endif

namespace {

vaxel::ExitStatus Run(std::vector<std::string> arguments) {
  vaxel::ExitStatus status = vaxel::ExitStatus::Drawn;
  // Dates alone follow the user's locale; numbers have their "." everywhere.
  std::setlocale(LC_TIME, "");
  const auto options = vaxel::ReadOptions(std::move(arguments), status);
  return options ? vaxel::RenderScript(*options) : status;
}

// Whatever is thrown, the user gets a message and a status instead of a signal.
int Guarded(const std::function<vaxel::ExitStatus()>& program) {
  try {
    return static_cast<int>(program());
  } catch (const std::bad_alloc&) {
    std::fputs("vaxel-render: out of memory\n", stderr);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "vaxel-render: %s\n", failure.what());
  } catch (...) {
    std::fputs("vaxel-render: unknown failure\n", stderr);
  }
  return static_cast<int>(vaxel::ExitStatus::FileFailed);
}

}  // namespace

#ifdef _WIN32

extern "C" int wmain(int count, wchar_t** arguments) {
  // Line ends are written as they are: a drawing is the same file on every system.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  return Guarded([&] {
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) {
      const std::u8string text = std::filesystem::path(arguments[i]).u8string();
      texts.emplace_back(text.begin(), text.end());
    }
    return Run(std::move(texts));
  });
}

#else

int main(int count, char** arguments) {
  return Guarded([&] { return Run({arguments + 1, arguments + count}); });
}

#endif
