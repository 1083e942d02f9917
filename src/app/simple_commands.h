// Commands of the menus that need nothing but what all parts of the application share.
#pragma once

#include <string>

#include "app/app_context.h"

namespace vaxel {

void CentreCursor(AppContext& app);  // Mnu_CentreCurseur
void InsertColour(AppContext& app);  // Mnu_Couleur
void ShowAbout(AppContext& app);     // Mnu_AProposDe
// Opens the help file, given with its folder, at a word, which may be empty.
void ShowHelp(AppContext& app, const std::string& helpFile, const std::string& word);

}  // namespace vaxel
