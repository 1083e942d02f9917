// Reads an SVG document of ours as strictly as the strictest of its readers.
#pragma once

#include <string>
#include <string_view>

namespace vaxel::fuzz {

// What is wrong with the document, and where; empty when it is well-formed XML of valid UTF-8, has no other
// elements and attributes than the renderer is known to write, and every number in it is one.
std::string FaultOfSvg(std::string_view document);

}  // namespace vaxel::fuzz
