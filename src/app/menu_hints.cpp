#include "app/menu_hints.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vaxel {
namespace {

constexpr auto Hints = std::to_array<std::pair<MenuId, TextId>>({
    {MenuId::Mnu_NouveauModele, TextId::HintNewFromTemplate},
    {MenuId::Mnu_NombrePlus, TextId::HintTurnNumber},
    {MenuId::Mnu_NombreMoins, TextId::HintTurnNumber},
    {MenuId::Mnu_Imprimante, TextId::HintPrinter},
    {MenuId::Mnu_Calibrage, TextId::HintCalibration},
    {MenuId::Mnu_Apercu, TextId::HintPreview},
    {MenuId::Mnu_ImprimerZoom, TextId::HintPrintZoom},
    {MenuId::Mnu_ImprimerCode, TextId::HintPrintCode},
    {MenuId::Mnu_Visualiser, TextId::HintRun},
    {MenuId::Mnu_Zoom, TextId::HintZoom},
    {MenuId::Mnu_RefCurseur, TextId::HintReference},
    {MenuId::Mnu_Code, TextId::HintCode},
    {MenuId::Mnu_AgrandirCode, TextId::HintWidenCode},
    {MenuId::Mnu_IniCode, TextId::HintResetCode},
    {MenuId::Mnu_TaillCar, TextId::HintCodeSize},
    {MenuId::Mnu_CentreCurseur, TextId::HintCentreCursor},
    {MenuId::Mnu_Patchs, TextId::HintPatches},
    {MenuId::Mnu_Couleur, TextId::HintColour},
    {MenuId::Mnu_Polices, TextId::HintPrinterFonts},
    {MenuId::Mnu_Liste_Fic, TextId::HintListFiles},
    {MenuId::Mnu_AideMot, TextId::HintHelpOnWord},
});

}  // namespace

std::string HintOf(const AppContext& app, MenuId item) {
  const auto* const hint =
      std::find_if(Hints.begin(), Hints.end(), [&](const auto& h) { return h.first == item; });
  return hint == Hints.end() ? std::string() : app.MenuText(hint->second);
}

}  // namespace vaxel
