// What all runs and outputs of vaxel-render share of this machine and its user.
#pragma once

#include <string>
#include <string_view>

#include "cli/console_host.h"
#include "cli/options.h"
#include "cli/user_texts.h"
#include "render/system_decoder.h"
#include "render/system_measurer.h"

namespace vaxel {

struct Machine {
  const UserTexts& Texts;
  ConsoleHost Host;
  SystemMeasurer Measurer{};
  SystemDecoder Decoder{};
};

// The name as it is shown; standard is that of a standard stream.
std::string DisplayName(const std::string& fileName, std::string_view standard);

// The script's name without its folder and extension.
std::string Title(const RenderOptions& options);

}  // namespace vaxel
