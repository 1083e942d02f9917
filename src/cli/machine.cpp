#include "cli/machine.h"

#include "base/files.h"
#include "base/printable.h"
#include "base/utf8.h"

namespace vaxel {

std::string DisplayName(const std::string& fileName, std::string_view standard) {
  return fileName == "-" ? std::string(standard) : fileName;
}

std::string Title(const RenderOptions& options) {
  if (options.Script == "-") return "Vaxel";
  const std::string title = NameOf(PathOf(options.Script).stem());
  return IsValidUtf8(title) ? Printable(title) : "Vaxel";
}

}  // namespace vaxel
