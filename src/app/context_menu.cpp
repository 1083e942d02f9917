#include "app/context_menu.h"

#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

#include "base/text.h"

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

// The places in a caption where a letter may be marked: the beginnings of words before the rest. What is
// behind the TAB is the key.
std::vector<std::size_t> LetterPlaces(std::string_view caption) {
  std::vector<std::size_t> beginnings, others;
  char before = ' ';
  for (std::size_t i = 0; i < caption.size() && caption[i] != '\t'; ++i) {
    if (IsLetter(caption[i])) (before == ' ' ? beginnings : others).push_back(i);
    before = caption[i];
  }
  beginnings.insert(beginnings.end(), others.begin(), others.end());
  return beginnings;
}

}  // namespace

void GiveOwnLetters(std::span<ContextItem> items) {
  std::set<std::string> taken;
  const auto take = [&taken](std::string_view caption, std::size_t place) {
    return taken.insert(UpperCase(caption.substr(place, 1))).second;
  };
  std::vector<ContextItem*> others;
  for (ContextItem& item : items) {
    const std::size_t mark = item.Caption.find('&');
    if (mark == std::string::npos || !take(item.Caption, mark + 1)) others.push_back(&item);
  }
  for (ContextItem* const item : others) {
    std::erase(item->Caption, '&');
    for (std::size_t place : LetterPlaces(item->Caption)) {
      if (!take(item->Caption, place)) continue;
      item->Caption.insert(place, 1, '&');
      break;
    }
  }
}

std::span<const ContextRow> ContextRows() {
  return MenusAtHand;
}

}  // namespace vaxel
