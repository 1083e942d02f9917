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

const CairoFunctions* LoadCairo(std::string& error) {
  using Entry = const CairoFunctions* (*)();
  // It lies beside the program and stays loaded as long as the program runs.
  std::error_code unreadable;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unreadable);
  const std::filesystem::path name = program.parent_path() / "vaxel-cairo.so";
  void* const module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = module ? dlsym(module, "VaxelCairo") : nullptr;
  if (!entry) {
    const char* reason = dlerror();
    error = reason ? reason : name.string();
    return nullptr;
  }
  return reinterpret_cast<Entry>(entry)();
}

#endif

}  // namespace vaxel
