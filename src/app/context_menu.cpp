#include "app/context_menu.h"

#include <array>

namespace vaxel {
namespace {

using enum MenuId;
using enum ContextPlace;

constexpr bool WithCtrl = true, EndsGroup = true;

constexpr auto Rows = std::to_array<ContextRow>({
    {Editor, Mnu_AideMot},
    {Editor, Mnu_Syntaxe, TextId::None, false, EndsGroup},
    {Editor, Mnu_Visualiser, TextId::RunScript},
    {Editor, Mnu_EnregistrerS, TextId::None, false, EndsGroup},
    {Editor, Mnu_Couleur},
    {Editor, Mnu_Liste_Fic},
    {Drawing, Mnu_Visualiser, TextId::RunScript, false, EndsGroup},
    {Drawing, Mnu_Zoom},
    {Drawing, Mnu_Zoom, TextId::ZoomOfScript, WithCtrl, EndsGroup},
    {Drawing, Positionner, TextId::CentreHere},
    {Drawing, Positionner, TextId::CentreAsAtFirst, WithCtrl, EndsGroup},
    {Drawing, Mnu_RefCurseur},
    {Drawing, Mnu_RefCurseur, TextId::ReferenceAtCentre, WithCtrl, EndsGroup},
    {Drawing, Mnu_Imprimer},
    {Drawing, Mnu_Exporter},
});

}  // namespace

std::span<const ContextRow> ContextRows() {
  return Rows;
}

}  // namespace vaxel
