#include "app/context_menu.h"

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
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

// The places in a caption where a letter may be marked: that of the caption itself, the beginnings of words,
// the rest. What is behind the TAB is the key.
std::vector<std::size_t> LetterPlaces(std::string_view caption, std::size_t own) {
  std::vector<std::size_t> places, others;
  if (own < caption.size() && IsLetter(caption[own])) places.push_back(own);
  char before = ' ';
  for (std::size_t i = 0; i < caption.size() && caption[i] != '\t'; ++i) {
    if (IsLetter(caption[i])) (before == ' ' ? places : others).push_back(i);
    before = caption[i];
  }
  places.insert(places.end(), others.begin(), others.end());
  return places;
}

// Gives letters to items so that as many as possible have one: who finds none free asks an owner to move.
class LetterTable {
 public:
  explicit LetterTable(const std::vector<std::string>& captions) : captions_(captions) {}

  bool TakeOwn(std::size_t item, std::size_t place) { return Take(item, place); }

  bool TakeAny(std::size_t item, const std::vector<std::vector<std::size_t>>& places) {
    for (std::size_t place : places[item]) {
      if (Take(item, place)) return true;
    }
    for (std::size_t place : places[item]) {
      const char letter = LetterAt(item, place);
      if (!asked_.insert(letter).second) continue;
      const std::size_t owner = owners_.at(letter).Item;
      if (!TakeAny(owner, places)) continue;
      owners_[letter] = {item, place};
      return true;
    }
    return false;
  }

  void ForgetAsked() { asked_.clear(); }

  // The place of the item's letter; npos when it has none.
  std::size_t PlaceOf(std::size_t item) const {
    for (const auto& [letter, owner] : owners_) {
      if (owner.Item == item) return owner.Place;
    }
    return std::string::npos;
  }

 private:
  struct Owner {
    std::size_t Item = 0, Place = 0;
  };

  char LetterAt(std::size_t item, std::size_t place) const {
    return UpperCase(std::string_view(captions_[item]).substr(place, 1)).front();
  }
  bool Take(std::size_t item, std::size_t place) {
    return owners_.try_emplace(LetterAt(item, place), Owner{item, place}).second;
  }

  const std::vector<std::string>& captions_;
  std::map<char, Owner> owners_;
  std::set<char> asked_;
};

}  // namespace

void GiveOwnLetters(std::span<ContextItem> items) {
  std::vector<std::string> captions;
  std::vector<std::vector<std::size_t>> places;
  for (const ContextItem& item : items) {
    const std::size_t own = item.Caption.find('&');
    captions.push_back(item.Caption);
    std::erase(captions.back(), '&');
    places.push_back(LetterPlaces(captions.back(), own));
  }
  LetterTable letters(captions);
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (places[i].empty() || !letters.TakeOwn(i, places[i].front())) others.push_back(i);
  }
  for (std::size_t i : others) {
    letters.ForgetAsked();
    letters.TakeAny(i, places);
  }
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::size_t place = letters.PlaceOf(i);
    items[i].Caption = captions[i];
    if (place != std::string::npos) items[i].Caption.insert(place, 1, '&');
  }
}

std::span<const ContextRow> ContextRows() {
  return MenusAtHand;
}

}  // namespace vaxel
