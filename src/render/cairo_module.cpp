#include "render/cairo_module.h"

#ifndef _WIN32
#include <dlfcn.h>

#include <filesystem>
#include <system_error>
#endif

namespace vaxel {

#ifdef _WIN32

const CairoFunctions* LoadCairo(std::string& error) {
  error = "this build writes SVG and the list format only";
  return nullptr;
}

#else

namespace {

// The function by which a module beside the program is entered. The module stays loaded as long as the
// program runs.
template <class Entry>
Entry EntryOf(const char* fileName, const char* function, std::string& error) {
  std::error_code unreadable;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unreadable);
  const std::filesystem::path name = program.parent_path() / fileName;
  void* const module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = module ? dlsym(module, function) : nullptr;
  if (!entry) {
    const char* reason = dlerror();
    error = reason ? reason : name.string();
  }
  return reinterpret_cast<Entry>(entry);
}

}  // namespace

const CairoFunctions* LoadCairo(std::string& error) {
  const auto entry = EntryOf<const CairoFunctions* (*)()>("vaxel-cairo.so", "VaxelCairo", error);
  return entry ? entry() : nullptr;
}

std::unique_ptr<SystemText> LoadPango(std::string& error) {
  const auto entry = EntryOf<SystemText* (*)()>("vaxel-pango.so", "VaxelPango", error);
  return std::unique_ptr<SystemText>(entry ? entry() : nullptr);
}

std::unique_ptr<PictureDecoder> LoadPixbuf(std::string& error) {
  const auto entry = EntryOf<PictureDecoder* (*)()>("vaxel-pixbuf.so", "VaxelPixbuf", error);
  return std::unique_ptr<PictureDecoder>(entry ? entry() : nullptr);
}

#endif

}  // namespace vaxel
