#include "app/context_menu.h"

#include <array>

namespace vaxel {
namespace {

using enum MenuId;
using enum ContextPlace;

constexpr bool WithCtrl = true, EndsGroup = true;

constexpr auto MenusAtHand = std::to_array<ContextRow>({
    {Editor, Mnu_Annuler},
    {Editor, Mnu_Refaire, TextId::None, false, EndsGroup},
    {Editor, Mnu_Couper},
    {Editor, Mnu_Copier},
    {Editor, Mnu_Coller},
    {Editor, Mnu_ToutSelectionner, TextId::None, false, EndsGroup},
    {Editor, Mnu_Chercher},
    {Editor, Mnu_Suivant},
    {Editor, Mnu_Precedent},
    {Editor, Mnu_AllerLigne, TextId::None, false, EndsGroup},
    {Editor, Mnu_Commenter},
    {Editor, Mnu_Dupliquer},
    {Editor, Mnu_SupprimerLignes},
    {Editor, Mnu_Monter},
    {Editor, Mnu_Descendre, TextId::None, false, EndsGroup},
    {Editor, Mnu_AideMot},
    {Editor, Mnu_Syntaxe, TextId::None, false, EndsGroup},
    {Editor, Mnu_Visualiser, TextId::RunScript},
    {Editor, Mnu_EnregistrerS, TextId::None, false, EndsGroup},
    {Editor, Mnu_Couleur},
    {Editor, Mnu_Liste_Fic},
    {Drawing, Mnu_Visualiser, TextId::RunScript, false, EndsGroup},
    {Drawing, Mnu_Ajuster},
    {Drawing, Mnu_TailleReelle},
    {Drawing, Mnu_Zoom},
    {Drawing, Mnu_Zoom, TextId::ZoomOfScript, WithCtrl, EndsGroup},
    {Drawing, Positionner, TextId::CentreHere},
    {Drawing, Positionner, TextId::CentreAsAtFirst, WithCtrl, EndsGroup},
    {Drawing, Mnu_RefCurseur},
    {Drawing, Mnu_RefCurseur, TextId::ReferenceAtCentre, WithCtrl, EndsGroup},
    {Drawing, Mnu_PagePrecedente},
    {Drawing, Mnu_PageSuivante, TextId::None, false, EndsGroup},
    {Drawing, Mnu_CopierDessin},
    {Drawing, Mnu_Imprimer},
    {Drawing, Mnu_Exporter},
});

}  // namespace

std::span<const ContextRow> ContextRows() {
  return MenusAtHand;
}

}  // namespace vaxel
