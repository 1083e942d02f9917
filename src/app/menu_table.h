// The menu bar: which items there are, where they stand and what they are called.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "resources/string_table.h"

namespace vaxel {

enum class MenuId : std::uint8_t {
  Mnu_Fichier,
  Mnu_Ouvrir,
  Mnu_Nouveau,
  Mnu_OuvrirMeter,
  Mnu_Enregistrer,   // under another name
  Mnu_EnregistrerS,  // under the present one
  Mnu_Exporter,
  Mnu_Imprimante,
  Mnu_Imprimer,
  Mnu_ImprimerZoom,
  Mnu_ImprimerCode,
  Mnu_Quitter,
  Mnu_Syntaxe,
  Mnu_Visualiser,
  Mnu_Zoom,
  Mnu_RefCurseur,
  Mnu_Options,
  Mnu_DblClick,
  Mnu_Code,
  Mnu_AgrandirCode,
  Mnu_IniCode,
  Mnu_TaillCar,
  Mnu_CentreCurseur,
  Mnu_Patchs,
  Mnu_Langue,
  Mnu_Couleur,
  Mnu_Polices,
  Mnu_Liste_Fic,
  Mnu_Help,
  Mnu_Aide,
  Mnu_AideMot,
  Mnu_AProposDe,
  Bar  // no item: where the popups stand
};

struct MenuRow {
  MenuId Item;
  int Caption;                   // id of its text
  MenuId Popup;                  // where it stands
  std::string_view KeyHint{};    // put behind the caption
  std::string_view Separator{};  // the name of the one that follows it
};

// In the order in which they stand, each popup before its items.
inline constexpr auto MenuRows = std::to_array<MenuRow>({
    {MenuId::Mnu_Fichier, 10, MenuId::Bar},
    {MenuId::Mnu_Ouvrir, 11, MenuId::Mnu_Fichier},
    {MenuId::Mnu_Nouveau, 12, MenuId::Mnu_Fichier},
    {MenuId::Mnu_OuvrirMeter, 13, MenuId::Mnu_Fichier, "", "Mnu_Sep0"},
    {MenuId::Mnu_Enregistrer, 15, MenuId::Mnu_Fichier, "", "Mnu_Sep1"},
    {MenuId::Mnu_EnregistrerS, 14, MenuId::Mnu_Fichier},
    {MenuId::Mnu_Exporter, 20, MenuId::Mnu_Fichier},
    {MenuId::Mnu_Imprimante, 16, MenuId::Mnu_Fichier},
    {MenuId::Mnu_Imprimer, 17, MenuId::Mnu_Fichier},
    {MenuId::Mnu_ImprimerZoom, 78, MenuId::Mnu_Fichier},
    {MenuId::Mnu_ImprimerCode, 18, MenuId::Mnu_Fichier, "", "Mnu_Sep2"},
    {MenuId::Mnu_Quitter, 19, MenuId::Mnu_Fichier},
    {MenuId::Mnu_Syntaxe, 50, MenuId::Bar, " (F2)"},
    {MenuId::Mnu_Visualiser, 30, MenuId::Bar, " (F4)"},
    {MenuId::Mnu_Zoom, 73, MenuId::Bar, " (F7)"},
    {MenuId::Mnu_RefCurseur, 74, MenuId::Bar, " (F8)"},
    {MenuId::Mnu_Options, 60, MenuId::Bar},
    {MenuId::Mnu_DblClick, 61, MenuId::Mnu_Options},
    {MenuId::Mnu_Code, 62, MenuId::Mnu_Options},
    {MenuId::Mnu_AgrandirCode, 76, MenuId::Mnu_Options},
    {MenuId::Mnu_IniCode, 77, MenuId::Mnu_Options},
    {MenuId::Mnu_TaillCar, 82, MenuId::Mnu_Options},
    {MenuId::Mnu_CentreCurseur, 79, MenuId::Mnu_Options, "", "Mnu_sep3"},
    {MenuId::Mnu_Patchs, 80, MenuId::Mnu_Options, "", "Mnu_sep4"},
    {MenuId::Mnu_Langue, 63, MenuId::Mnu_Options},
    {MenuId::Mnu_Couleur, 75, MenuId::Mnu_Options},
    {MenuId::Mnu_Polices, 40, MenuId::Mnu_Options},
    {MenuId::Mnu_Liste_Fic, 83, MenuId::Mnu_Options},
    {MenuId::Mnu_Help, 70, MenuId::Bar},
    {MenuId::Mnu_Aide, 71, MenuId::Mnu_Help},
    {MenuId::Mnu_AideMot, 81, MenuId::Mnu_Help, "", "Mnu_sep5"},
    {MenuId::Mnu_AProposDe, 72, MenuId::Mnu_Help},
});

constexpr const MenuRow& MenuRowOf(MenuId item) {
  return MenuRows[static_cast<std::size_t>(item)];
}
constexpr int CaptionId(MenuId item) {
  return MenuRowOf(item).Caption;
}

namespace menu_checks {

constexpr bool RowsStandAtTheirItems() {
  for (std::size_t i = 0; i < MenuRows.size(); ++i) {
    if (MenuRows[i].Item != static_cast<MenuId>(i) || !HasString(MenuRows[i].Caption)) return false;
  }
  return MenuRows.size() == static_cast<std::size_t>(MenuId::Bar);
}

// The letter behind the "&", in upper case; 0 when there is not just one, or what stands there is no letter
// of every keyboard.
constexpr char Accelerator(std::string_view caption) {
  const std::size_t mark = caption.find('&');
  if (mark == std::string_view::npos || mark + 1 >= caption.size() || mark != caption.rfind('&')) return 0;
  const char letter = caption[mark + 1];
  if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
  return letter >= 'A' && letter <= 'Z' ? letter : char{0};
}

constexpr std::string_view TextOf(int id, std::size_t language) {
  for (const StringRow& row : StringRows) {
    if (row.Id == id) return row.Texts[language];
  }
  return {};
}

constexpr bool EveryCaptionHasAccelerator() {
  for (const MenuRow& row : MenuRows) {
    for (std::size_t language = 0; language < BuiltInLanguages; ++language) {
      if (!Accelerator(TextOf(row.Caption, language))) return false;
    }
  }
  return true;
}

constexpr bool AcceleratorsAreUnique(std::size_t language) {
  for (std::size_t i = 0; i < MenuRows.size(); ++i) {
    for (std::size_t other = 0; other < i; ++other) {
      if (MenuRows[i].Popup != MenuRows[other].Popup) continue;
      if (Accelerator(TextOf(MenuRows[i].Caption, language)) ==
          Accelerator(TextOf(MenuRows[other].Caption, language))) {
        return false;
      }
    }
  }
  return true;
}

static_assert(RowsStandAtTheirItems(),
              "every item of a menu has its row, in the order of MenuId, and a caption");
static_assert(EveryCaptionHasAccelerator(), "every caption has one accelerator");
// The French captions are those that users know by heart, with letters that two of them share.
static_assert(AcceleratorsAreUnique(1) && AcceleratorsAreUnique(2), "no letter twice in a menu");

}  // namespace menu_checks

}  // namespace vaxel
