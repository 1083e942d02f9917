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

void GeneralHelp(const CommandTargets& on) {
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
    {Mnu_Fichier, TextId::MenuFile, Bar},
    {Mnu_Ouvrir, TextId::MenuOpen, Mnu_Fichier, Files<&FileCommands::Open>, Ctrl('O')},
    {Mnu_Nouveau, TextId::MenuNew, Mnu_Fichier, Files<&FileCommands::New>, Ctrl('N')},
    {Mnu_OuvrirMeter, TextId::MenuImportMeter, Mnu_Fichier, nullptr, {}, "Mnu_Sep0"},
    {Mnu_Enregistrer, TextId::MenuSaveAs, Mnu_Fichier, Files<&FileCommands::SaveAs>, {}, "Mnu_Sep1"},
    {Mnu_EnregistrerS, TextId::MenuSave, Mnu_Fichier, Files<&FileCommands::Save>, Ctrl('S')},
    {Mnu_Exporter, TextId::MenuExport, Mnu_Fichier, Files<&FileCommands::Export>},
    {Mnu_Imprimante, TextId::MenuPrinter, Mnu_Fichier},
    {Mnu_Imprimer, TextId::MenuPrint, Mnu_Fichier, Runs<&RunCycle::Print>, Ctrl('P')},
    {Mnu_ImprimerZoom, TextId::MenuPrintWithZoom, Mnu_Fichier},
    {Mnu_ImprimerCode, TextId::MenuPrintCode, Mnu_Fichier, nullptr, {}, "Mnu_Sep2"},
    {Mnu_Quitter, TextId::MenuQuit, Mnu_Fichier, Quit},
    {Mnu_Syntaxe, TextId::MenuSyntax, Bar, nullptr, {{{Key::F2}}}},
    {Mnu_Visualiser, TextId::MenuView, Bar, Runs<&RunCycle::Visualise>, {{{Key::F4}}}},
    {Mnu_Zoom, TextId::MenuZoom, Bar, Runs<&RunCycle::Zoom>, {{{Key::F7}}}},
    {Mnu_RefCurseur, TextId::MenuReference, Bar, Runs<&RunCycle::Reference>, {{{Key::F8}}}},
    {Mnu_Options, TextId::MenuOptions, Bar},
    {Mnu_DblClick, TextId::MenuDoubleClick, Mnu_Options, Options<&Settings::ToggleDoubleClick>},
    {Mnu_Code, TextId::MenuCode, Mnu_Options, Options<&Settings::ToggleEditor>},
    {Mnu_AgrandirCode, TextId::MenuWidenCode, Mnu_Options, Options<&Settings::WidenEditor>},
    {Mnu_IniCode, TextId::MenuResetCode, Mnu_Options, Options<&Settings::ResetEditor>},
    {Mnu_TaillCar, TextId::MenuCodeSize, Mnu_Options, Options<&Settings::ChooseFontSize>},
    {Mnu_CentreCurseur, TextId::MenuCentreCursor, Mnu_Options, Simple<CentreCursor>, {}, "Mnu_sep3"},
    {Mnu_Patchs, TextId::MenuPatches, Mnu_Options, Options<&Settings::ChoosePatches>, {}, "Mnu_sep4"},
    {Mnu_Langue, TextId::MenuLanguage, Mnu_Options, ChooseLanguages},
    {Mnu_Couleur, TextId::MenuColour, Mnu_Options, Simple<InsertColour>},
    {Mnu_Polices, TextId::MenuPrinterFonts, Mnu_Options},
    {Mnu_Liste_Fic,
     TextId::MenuListFiles,
     Mnu_Options,
     Files<&FileCommands::InsertFileNames>,
     {},
     "Mnu_sep6"},
    {Mnu_BarreOutils, TextId::MenuToolBar, Mnu_Options, Options<&Settings::ToggleToolBar>},
    {Mnu_Help, TextId::MenuHelp, Bar},
    {Mnu_Aide, TextId::MenuHelpFile, Mnu_Help, GeneralHelp},
    {Mnu_AideMot, TextId::MenuHelpOnWord, Mnu_Help, HelpOnWord, {{{Key::F1, Held::NoShift}}}, "Mnu_sep5"},
    {Mnu_AProposDe, TextId::MenuAbout, Mnu_Help, Simple<ShowAbout>},
    {Positionner, TextId::None, Nowhere, Place, {{{Key::F6}, {Key::F12}}}},
});

constexpr bool RowsStandAtTheirItems() {
  for (std::size_t i = 0; i < Rows.size(); ++i) {
    if (Rows[i].Item != static_cast<MenuId>(i)) return false;
    if ((Rows[i].Place == Nowhere) != (Rows[i].Caption == TextId::None)) return false;
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

// The letter after the "&", in upper case; 0 when there is not just one, or what stands there is no letter of
// every keyboard.
constexpr char Accelerator(std::string_view caption) {
  const std::size_t mark = caption.find('&');
  if (mark == std::string_view::npos || mark + 1 >= caption.size() || mark != caption.rfind('&')) return 0;
  const char letter = caption[mark + 1];
  if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
  return letter >= 'A' && letter <= 'Z' ? letter : char{0};
}

constexpr char AcceleratorOf(const MenuRow& item, std::size_t language) {
  const auto caption = RowOf(item.Caption);
  return caption ? Accelerator(StringRows[*caption].Texts[language]) : char{0};
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

std::string KeyText(const MenuRow& row) {
  const Keystroke& shown = row.Keys.front();
  return shown.Key == Key::None ? std::string() : TextOf(shown);
}

std::string KeyHint(const MenuRow& row) {
  const std::string key = KeyText(row);
  if (key.empty()) return {};
  return row.Place == Bar ? " (" + key + ")" : "\t" + key;
}

}  // namespace vaxel
