#include "render/cairo_module.h"

#ifndef _WIN32
#include <dlfcn.h>
#include <sys/auxv.h>

#include <filesystem>
#include <system_error>
#else
#include "resources/text_id.h"
#endif

namespace vaxel {

#ifdef _WIN32

Result<const CairoFunctions*> LoadCairo() {
  return Failure{.Text = TextId::CliSvgAndListOnly};
}

#else

namespace {

// The program's own file. Where /proc is not mounted, as in a bare root, the name by which it was started
// leads to it.
std::filesystem::path ProgramFile() {
  std::error_code unreadable;
  std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unreadable);
  if (!program.empty()) return program;
  const auto* const started = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
  return started ? std::filesystem::canonical(started, unreadable) : program;
}

// The function by which a module beside the program is entered. The module stays loaded as long as the
// program runs.
template <class Made>
Result<Made> EnterModule(const char* fileName, const char* function) {
  const std::filesystem::path name = ProgramFile().parent_path() / fileName;
  void* const module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = module ? dlsym(module, function) : nullptr;
  if (entry) return reinterpret_cast<Made (*)()>(entry)();
  const char* const reason = dlerror();
  return Failure{.Words = reason ? reason : name.string()};
}

// The program owns what the module has made.
template <class Made>
Result<std::unique_ptr<Made>> MadeBy(const char* fileName, const char* function) {
  const Result<Made*> made = EnterModule<Made*>(fileName, function);
  if (!made) return made.Why();
  return std::unique_ptr<Made>(*made);
}

}  // namespace

Result<const CairoFunctions*> LoadCairo() {
  return EnterModule<const CairoFunctions*>("vaxel-cairo.so", "VaxelCairo");
}

Result<std::unique_ptr<SystemText>> LoadPango() {
  return MadeBy<SystemText>("vaxel-pango.so", "VaxelPango");
}

Result<std::unique_ptr<PictureDecoder>> LoadPixbuf() {
  return MadeBy<PictureDecoder>("vaxel-pixbuf.so", "VaxelPixbuf");
}

#endif

}  // namespace vaxel
