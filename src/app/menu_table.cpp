#include "app/menu_table.h"

#include <algorithm>

#include "app/application.h"
#include "app/file_commands.h"
#include "app/run_cycle.h"
#include "app/settings.h"
#include "app/simple_commands.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

using enum MenuId;

template <void (FileCommands::*Command)()>
void Files(const CommandTargets& on) {
  (on.Files.*Command)();
}

template <void (Settings::*Command)()>
void Options(const CommandTargets& on) {
  (on.Options.*Command)();
}

template <void (RunCycle::*Command)()>
void Runs(const CommandTargets& on) {
  (on.Runs.*Command)();
}

template <void (RunCycle::*Command)(bool withCtrl)>
void Runs(const CommandTargets& on) {
  (on.Runs.*Command)(on.WithCtrl);
}

template <void (*Command)(AppContext&)>
void Simple(const CommandTargets& on) {
  Command(on.App);
}

void Quit(const CommandTargets& on) {
  if (on.Owner.Quit()) on.App.Window.Close();
}

void ChooseLanguages(const CommandTargets& on) {
  on.Options.ChooseLanguages();
  on.Owner.AfficheMenus();
}

void Help(const CommandTargets& on) {
  ShowHelp(on.App, on.Options.HelpFile(), {});
}

void HelpOnWord(const CommandTargets& on) {
  ShowHelp(on.App, on.Options.HelpFile(), on.App.Editor.WordAtCursor());
}

// It ends with a run onto the screen, and is not there without one.
void Place(const CommandTargets& on) {
  if (on.Owner.IsEnabled(Mnu_Visualiser)) on.Runs.Positionner(on.WithCtrl);
}

constexpr std::array<Keystroke, 2> Ctrl(char letter) {
  return {Keystroke{static_cast<Key>(letter), Held::Ctrl}};
}

constexpr auto Rows = std::to_array<MenuRow>({
    {Mnu_Fichier, 10, Bar},
    {Mnu_Ouvrir, 11, Mnu_Fichier, Files<&FileCommands::Open>, Ctrl('O')},
    {Mnu_Nouveau, 12, Mnu_Fichier, Files<&FileCommands::New>, Ctrl('N')},
    {Mnu_OuvrirMeter, 13, Mnu_Fichier, nullptr, {}, "Mnu_Sep0"},
    {Mnu_Enregistrer, 15, Mnu_Fichier, Files<&FileCommands::SaveAs>, {}, "Mnu_Sep1"},
    {Mnu_EnregistrerS, 14, Mnu_Fichier, Files<&FileCommands::Save>, Ctrl('S')},
    {Mnu_Exporter, 20, Mnu_Fichier, Files<&FileCommands::Export>},
    {Mnu_Imprimante, 16, Mnu_Fichier},
    {Mnu_Imprimer, 17, Mnu_Fichier, Runs<&RunCycle::Print>, Ctrl('P')},
    {Mnu_ImprimerZoom, 78, Mnu_Fichier},
    {Mnu_ImprimerCode, 18, Mnu_Fichier, nullptr, {}, "Mnu_Sep2"},
    {Mnu_Quitter, 19, Mnu_Fichier, Quit},
    {Mnu_Syntaxe, 50, Bar, nullptr, {{{Key::F2}}}},
    {Mnu_Visualiser, 30, Bar, Runs<&RunCycle::Visualise>, {{{Key::F4}}}},
    {Mnu_Zoom, 73, Bar, Runs<&RunCycle::Zoom>, {{{Key::F7}}}},
    {Mnu_RefCurseur, 74, Bar, Runs<&RunCycle::Reference>, {{{Key::F8}}}},
    {Mnu_Options, 60, Bar},
    {Mnu_DblClick, 61, Mnu_Options, Options<&Settings::ToggleDoubleClick>},
    {Mnu_Code, 62, Mnu_Options, Options<&Settings::ToggleEditor>},
    {Mnu_AgrandirCode, 76, Mnu_Options, Options<&Settings::WidenEditor>},
    {Mnu_IniCode, 77, Mnu_Options, Options<&Settings::ResetEditor>},
    {Mnu_TaillCar, 82, Mnu_Options, Options<&Settings::ChooseFontSize>},
    {Mnu_CentreCurseur, 79, Mnu_Options, Simple<CentreCursor>, {}, "Mnu_sep3"},
    {Mnu_Patchs, 80, Mnu_Options, Options<&Settings::ChoosePatches>, {}, "Mnu_sep4"},
    {Mnu_Langue, 63, Mnu_Options, ChooseLanguages},
    {Mnu_Couleur, 75, Mnu_Options, Simple<InsertColour>},
    {Mnu_Polices, 40, Mnu_Options},
    {Mnu_Liste_Fic, 83, Mnu_Options, Files<&FileCommands::InsertFileNames>},
    {Mnu_Help, 70, Bar},
    {Mnu_Aide, 71, Mnu_Help, Help},
    {Mnu_AideMot, 81, Mnu_Help, HelpOnWord, {{{Key::F1, Held::NoShift}}}, "Mnu_sep5"},
    {Mnu_AProposDe, 72, Mnu_Help, Simple<ShowAbout>},
    {Positionner, 0, Nowhere, Place, {{{Key::F6}, {Key::F12}}}},
});

constexpr bool RowsStandAtTheirItems() {
  for (std::size_t i = 0; i < Rows.size(); ++i) {
    if (Rows[i].Item != static_cast<MenuId>(i)) return false;
    if (Rows[i].Place == Nowhere ? Rows[i].Caption != 0 : !HasString(Rows[i].Caption)) return false;
  }
  return Rows.size() == MenuItems;
}

constexpr bool KeysAreUnique() {
  for (const MenuRow& row : Rows) {
    for (const MenuRow& other : Rows) {
      if (&row == &other) continue;
      for (const Keystroke& key : row.Keys) {
        const bool withCtrl = key.Held == Held::Ctrl, withShift = key.Held == Held::Shift;
        for (const Keystroke& taken : other.Keys) {
          if (taken.IsPressedBy(key.Key, withCtrl, withShift)) return false;
        }
      }
    }
  }
  return true;
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

constexpr char AcceleratorOf(const MenuRow& item, std::size_t language) {
  for (const StringRow& row : StringRows) {
    if (row.Id == item.Caption) return Accelerator(row.Texts[language]);
  }
  return 0;
}

constexpr bool EveryCaptionHasAccelerator() {
  for (const MenuRow& row : Rows) {
    for (std::size_t language = 0; language < BuiltInLanguages; ++language) {
      if (row.Place != Nowhere && !AcceleratorOf(row, language)) return false;
    }
  }
  return true;
}

constexpr bool AcceleratorsAreUnique(std::size_t language) {
  for (std::size_t i = 0; i < Rows.size(); ++i) {
    for (std::size_t other = 0; other < i; ++other) {
      if (Rows[i].Place != Rows[other].Place) continue;
      if (AcceleratorOf(Rows[i], language) == AcceleratorOf(Rows[other], language)) return false;
    }
  }
  return true;
}

static_assert(RowsStandAtTheirItems(), "every item has its row, in the order of MenuId, and a caption");
static_assert(KeysAreUnique(), "a key runs one command");
static_assert(EveryCaptionHasAccelerator(), "every caption has one accelerator");
// The French captions are those that users know by heart, with letters that two of them share.
static_assert(AcceleratorsAreUnique(1) && AcceleratorsAreUnique(2), "no letter twice in a menu");

std::string TextOf(const Keystroke& stroke) {
  const std::string held = stroke.Held == Held::Ctrl ? "Ctrl+" : stroke.Held == Held::Shift ? "Shift+" : "";
  if (stroke.Key < Key::F1) return held + static_cast<char>(stroke.Key);
  return held + "F" + std::to_string(static_cast<int>(stroke.Key) - static_cast<int>(Key::F1) + 1);
}

}  // namespace

std::span<const MenuRow> MenuRows() {
  return Rows;
}

const MenuRow& MenuRowOf(MenuId item) {
  return Rows[static_cast<std::size_t>(item)];
}

const MenuRow* MenuRowOf(Key key, bool withCtrl, bool withShift) {
  const auto isPressed = [&](const Keystroke& stroke) {
    return stroke.IsPressedBy(key, withCtrl, withShift);
  };
  const auto* const row =
      std::ranges::find_if(Rows, [&](const MenuRow& r) { return std::ranges::any_of(r.Keys, isPressed); });
  return row == Rows.end() ? nullptr : row;
}

bool IsPopup(MenuId item) {
  return std::ranges::find(Rows, item, &MenuRow::Place) != Rows.end();
}

std::string KeyHint(const MenuRow& row) {
  const Keystroke& shown = row.Keys.front();
  if (shown.Key == Key::None) return {};
  return row.Place == Bar ? " (" + TextOf(shown) + ")" : "\t" + TextOf(shown);
}

}  // namespace vaxel
