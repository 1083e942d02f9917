// The names of the interface texts, made from the file that holds them.
#pragma once

#include <cstdint>

namespace vaxel {

// The values are the ids by which files of added languages name the texts.
enum class TextId : std::int16_t {
  None = 0,
#define VAXEL_STRING(name, id, french, english, spanish) name = id,
#include "resources/strings.def"
};

// The syntax help of the commands, Help::CentreE of CentreE.
namespace Help {
#define VAXEL_STRING(name, id, french, english, spanish)
#define VAXEL_HELP(name, id, french, english, spanish) inline constexpr TextId name = TextId::Help##name;
#include "resources/strings.def"
}  // namespace Help

}  // namespace vaxel
