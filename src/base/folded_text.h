// Text as it is compared when someone searches: without case and without accents.
#pragma once

#include <string>
#include <string_view>

namespace vaxel {

// The text in upper case, Latin letters without their accents ("Círculo" is "CIRCULO", "œ" is "OE").
std::string FoldedText(std::string_view text);

}  // namespace vaxel
