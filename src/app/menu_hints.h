// Says what an item of the menus does where its caption, which users know by heart, says little.
#pragma once

#include <string>

#include "app/app_context.h"
#include "app/menu_table.h"

namespace vaxel {

// In the language of menus; empty where the caption says it all.
std::string HintOf(const AppContext& app, MenuId item);

}  // namespace vaxel
