#include "app/menu_table.h"

#include <algorithm>

#include "app/application.h"
#include "app/editing_commands.h"
#include "app/export_commands.h"
#include "app/file_commands.h"
#include "app/print_commands.h"
#include "app/run_cycle.h"
#include "app/settings.h"
#include "app/simple_commands.h"
#include "app/writing_aid.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

using enum MenuId;

template <void (FileCommands::*Command)()>
void Files(const CommandTargets& on) {
  (on.Files.*Command)();
}

// A text that is not seen must not be changed.
template <void (EditingCommands::*Command)()>
void Editing(const CommandTargets& on) {
  if (on.Options.IsEditorShown()) (on.Editing.*Command)();
}

template <void (ExportCommands::*Command)()>
void Exports(const CommandTargets& on) {
  (on.Exports.*Command)();
}

template <void (PrintCommands::*Command)()>
void Prints(const CommandTargets& on) {
  (on.Prints.*Command)();
}

template <void (WritingAid::*Command)()>
void Aid(const CommandTargets& on) {
  if (on.Options.IsEditorShown()) (on.Aid.*Command)();
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

template <void (DrawingView::*Command)()>
void Views(const CommandTargets& on) {
  (on.Runs.Shown().*Command)();
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
  on.Files.ShowTitle();
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

constexpr std::array<Keystroke, 2> Ctrl(Key key) {
  return {Keystroke{key, Held::Ctrl}};
}

constexpr std::array<Keystroke, 2> Ctrl(char sign) {
  return Ctrl(static_cast<Key>(sign));
}

// The number under the cursor grows by so many tenths.
template <int Tenths>
void TurnNumber(const CommandTargets& on) {
  if (on.Options.IsEditorShown()) on.Owner.TurnNumber(Tenths);
}

constexpr std::array<Keystroke, 2> CtrlShift(char letter) {
  return {Keystroke{static_cast<Key>(letter), Held::CtrlShift}};
}

constexpr auto Rows = std::to_array<MenuRow>({
    {Mnu_Fichier, TextId::MenuFile, Bar},
    {Mnu_Ouvrir, TextId::MenuOpen, Mnu_Fichier, Files<&FileCommands::Open>, Ctrl('O')},
    {Mnu_Nouveau, TextId::MenuNew, Mnu_Fichier, Files<&FileCommands::New>, Ctrl('N')},
    {Mnu_NouveauModele, TextId::MenuNewFromTemplate, Mnu_Fichier, Files<&FileCommands::NewFromTemplate>},
    {Mnu_OuvrirMeter,
     TextId::MenuImportMeter,
     Mnu_Fichier,
     Files<&FileCommands::ImportMeter>,
     {},
     "Mnu_Sep0"},
    {Mnu_Enregistrer, TextId::MenuSaveAs, Mnu_Fichier, Files<&FileCommands::SaveAs>, {}, "Mnu_Sep1"},
    {Mnu_EnregistrerS, TextId::MenuSave, Mnu_Fichier, Files<&FileCommands::Save>, Ctrl('S')},
    {Mnu_Exporter, TextId::MenuExport, Mnu_Fichier, Exports<&ExportCommands::Export>},
    {Mnu_CopierDessin, TextId::MenuCopyDrawing, Mnu_Fichier, Exports<&ExportCommands::CopyDrawing>,
     CtrlShift('C')},
    {Mnu_Imprimante, TextId::MenuPrinter, Mnu_Fichier, Prints<&PrintCommands::ChoosePrinter>},
    {Mnu_Calibrage, TextId::MenuCalibration, Mnu_Fichier, Prints<&PrintCommands::Calibrate>},
    {Mnu_Apercu, TextId::MenuPreview, Mnu_Fichier, Prints<&PrintCommands::Preview>, Ctrl('P')},
    {Mnu_Imprimer, TextId::MenuPrint, Mnu_Fichier, Prints<&PrintCommands::Print>},
    {Mnu_ImprimerZoom, TextId::MenuPrintWithZoom, Mnu_Fichier, Prints<&PrintCommands::PrintWithZoom>},
    {Mnu_ImprimerCode, TextId::MenuPrintCode, Mnu_Fichier, Prints<&PrintCommands::PrintCode>, {}, "Mnu_Sep2"},
    {Mnu_Quitter, TextId::MenuQuit, Mnu_Fichier, Quit},
    {Mnu_Edition, TextId::MenuEdit, Bar},
    {Mnu_Annuler, TextId::MenuUndo, Mnu_Edition, Editing<&EditingCommands::Undo>, Ctrl('Z')},
    {Mnu_Refaire, TextId::MenuRedo, Mnu_Edition, Editing<&EditingCommands::Redo>, Ctrl('Y'), "Mnu_sep6"},
    {Mnu_Couper, TextId::MenuCut, Mnu_Edition, Editing<&EditingCommands::Cut>, Ctrl('X')},
    {Mnu_Copier, TextId::MenuCopy, Mnu_Edition, Editing<&EditingCommands::Copy>, Ctrl('C')},
    {Mnu_Coller, TextId::MenuPaste, Mnu_Edition, Editing<&EditingCommands::Paste>, Ctrl('V')},
    {Mnu_ToutSelectionner, TextId::MenuSelectAll, Mnu_Edition, Editing<&EditingCommands::SelectAll>,
     Ctrl('A'), "Mnu_sep7"},
    {Mnu_Chercher,
     TextId::MenuSearch,
     Mnu_Edition,
     Editing<&EditingCommands::Search>,
     {{{Key{'F'}, Held::Ctrl}, {Key{'H'}, Held::Ctrl}}}},
    {Mnu_Suivant,
     TextId::MenuSearchNext,
     Mnu_Edition,
     Editing<&EditingCommands::SearchNext>,
     {{{Key::F3, Held::NoShift}}}},
    {Mnu_Precedent,
     TextId::MenuSearchPrevious,
     Mnu_Edition,
     Editing<&EditingCommands::SearchPrevious>,
     {{{Key::F3, Held::Shift}}}},
    {Mnu_AllerLigne, TextId::MenuGoToLine, Mnu_Edition, Editing<&EditingCommands::GoToLine>, Ctrl('G'),
     "Mnu_sep8"},
    {Mnu_Commenter, TextId::MenuComment, Mnu_Edition, Editing<&EditingCommands::ToggleComments>, Ctrl('Q')},
    {Mnu_Indenter,
     TextId::MenuIndent,
     Mnu_Edition,
     Editing<&EditingCommands::Indent>,
     {{{Key::Tab, Held::NoShift}}}},
    {Mnu_Desindenter,
     TextId::MenuUnindent,
     Mnu_Edition,
     Editing<&EditingCommands::Unindent>,
     {{{Key::Tab, Held::Shift}}}},
    {Mnu_Dupliquer, TextId::MenuDuplicate, Mnu_Edition, Editing<&EditingCommands::Duplicate>, Ctrl('D')},
    {Mnu_SupprimerLignes,
     TextId::MenuDeleteLines,
     Mnu_Edition,
     Editing<&EditingCommands::DeleteLines>,
     {{{Key{'K'}, Held::CtrlShift}}}},
    {Mnu_Monter,
     TextId::MenuMoveUp,
     Mnu_Edition,
     Editing<&EditingCommands::MoveUp>,
     {{{Key::Up, Held::CtrlShift}}}},
    {Mnu_Descendre,
     TextId::MenuMoveDown,
     Mnu_Edition,
     Editing<&EditingCommands::MoveDown>,
     {{{Key::Down, Held::CtrlShift}}},
     "Mnu_sep9"},
    {Mnu_Recolorer, TextId::MenuColourText, Mnu_Edition, Editing<&EditingCommands::ColourAll>, Ctrl('K')},
    {Mnu_Completer, TextId::MenuComplete, Mnu_Edition, Aid<&WritingAid::Complete>, Ctrl(Key::Space),
     "Mnu_sep10"},
    {Mnu_NombrePlus, TextId::MenuNumberUp, Mnu_Edition, TurnNumber<10>, {{{Key::Up, Held::Alt}}}},
    {Mnu_NombreMoins, TextId::MenuNumberDown, Mnu_Edition, TurnNumber<-10>, {{{Key::Down, Held::Alt}}}},
    {Mnu_Syntaxe, TextId::MenuSyntax, Bar, Aid<&WritingAid::ToggleHelp>, {{{Key::F2}}}},
    {Mnu_Visualiser, TextId::MenuView, Bar, Runs<&RunCycle::Visualise>, {{{Key::F4}}}},
    {Mnu_Zoom, TextId::MenuZoom, Bar, Runs<&RunCycle::Zoom>, {{{Key::F7}}}},
    {Mnu_RefCurseur, TextId::MenuReference, Bar, Runs<&RunCycle::Reference>, {{{Key::F8}}}},
    {Mnu_Dessin, TextId::MenuDrawing, Bar},
    {Mnu_Ajuster, TextId::MenuFit, Mnu_Dessin, Views<&DrawingView::Fit>, Ctrl('0')},
    {Mnu_TailleReelle, TextId::MenuTrueSize, Mnu_Dessin, Runs<&RunCycle::ShowTrueSize>, Ctrl('1'),
     "Mnu_sep6"},
    {Mnu_PagePrecedente, TextId::MenuPreviousPage, Mnu_Dessin, Views<&DrawingView::PreviousPage>,
     Ctrl(Key::PageUp)},
    {Mnu_PageSuivante, TextId::MenuNextPage, Mnu_Dessin, Views<&DrawingView::NextPage>, Ctrl(Key::PageDown)},
    {Mnu_Options, TextId::MenuOptions, Bar},
    {Mnu_DblClick, TextId::MenuDoubleClick, Mnu_Options, Options<&Settings::ToggleDoubleClick>},
    {Mnu_DessinDirect, TextId::MenuLiveDrawing, Mnu_Options, Options<&Settings::ToggleLiveDrawing>},
    {Mnu_Code, TextId::MenuCode, Mnu_Options, Options<&Settings::ToggleEditor>},
    {Mnu_AgrandirCode, TextId::MenuWidenCode, Mnu_Options, Options<&Settings::WidenEditor>},
    {Mnu_IniCode, TextId::MenuResetCode, Mnu_Options, Options<&Settings::ResetEditor>},
    {Mnu_TaillCar, TextId::MenuCodeSize, Mnu_Options, Options<&Settings::ChooseFontSize>},
    {Mnu_CentreCurseur, TextId::MenuCentreCursor, Mnu_Options, Simple<CentreCursor>, {}, "Mnu_sep3"},
    {Mnu_Feuille, TextId::MenuSheet, Mnu_Options, Runs<&RunCycle::ToggleSheet>},
    {Mnu_Regles, TextId::MenuRulers, Mnu_Options, Views<&DrawingView::ToggleRulers>, {}, "Mnu_sep7"},
    {Mnu_Patchs, TextId::MenuPatches, Mnu_Options, Options<&Settings::ChoosePatches>, {}, "Mnu_sep4"},
    {Mnu_Langue, TextId::MenuLanguage, Mnu_Options, ChooseLanguages},
    {Mnu_Couleur, TextId::MenuColour, Mnu_Options, Simple<InsertColour>},
    {Mnu_Polices, TextId::MenuPrinterFonts, Mnu_Options, Prints<&PrintCommands::ListFonts>},
    {Mnu_Liste_Fic,
     TextId::MenuListFiles,
     Mnu_Options,
     Files<&FileCommands::InsertFileNames>,
     {},
     "Mnu_sep6"},
    {Mnu_BarreOutils, TextId::MenuToolBar, Mnu_Options, Options<&Settings::ToggleToolBar>},
    {Mnu_Help, TextId::MenuHelp, Bar},
    {Mnu_Aide, TextId::MenuHelpFile, Mnu_Help, GeneralHelp, {{{Key::F1, Held::Shift}}}},
    {Mnu_AideMot, TextId::MenuHelpOnWord, Mnu_Help, HelpOnWord, {{{Key::F1, Held::NoShift}}}, "Mnu_sep5"},
    {Mnu_AProposDe, TextId::MenuAbout, Mnu_Help, Simple<ShowAbout>},
    {Positionner, TextId::None, Nowhere, Place, {{{Key::F6}, {Key::F12}}}},
    {Mnu_ErreurSuivante, TextId::None, Nowhere, Aid<&WritingAid::NextProblem>, {{{Key::F9, Held::NoShift}}}},
    {Mnu_ErreurPrecedente,
     TextId::None,
     Nowhere,
     Aid<&WritingAid::PreviousProblem>,
     {{{Key::F9, Held::Shift}}}},
    {Mnu_NombrePlusFin, TextId::None, Nowhere, TurnNumber<1>, {{{Key::Up, Held::AltShift}}}},
    {Mnu_NombreMoinsFin, TextId::None, Nowhere, TurnNumber<-1>, {{{Key::Down, Held::AltShift}}}},
});

// What must be held down, and nothing more.
constexpr HeldKeys HeldFor(const Keystroke& stroke) {
  return {stroke.Held == Held::Ctrl || stroke.Held == Held::CtrlShift,
          stroke.Held == Held::Shift || stroke.Held == Held::CtrlShift || stroke.Held == Held::AltShift,
          stroke.Held == Held::Alt || stroke.Held == Held::AltShift};
}

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
        for (const Keystroke& taken : other.Keys) {
          if (taken.IsPressedBy(key.Key, HeldFor(key))) return false;
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
      if (Rows[i].Place != Rows[other].Place || Rows[i].Place == Nowhere) continue;
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

std::string NameOfKey(Key key) {
  switch (key) {
    case Key::Tab:
      return "Tab";
    case Key::Space:
      return "Space";
    case Key::Up:
      return "↑";
    case Key::Down:
      return "↓";
    case Key::PageUp:
      return "PgUp";
    case Key::PageDown:
      return "PgDn";
    default:
      break;
  }
  if (key < Key::F1) return {static_cast<char>(key)};
  return "F" + std::to_string(static_cast<int>(key) - static_cast<int>(Key::F1) + 1);
}

std::string TextOf(const Keystroke& stroke) {
  const HeldKeys held = HeldFor(stroke);
  return std::string(held.Ctrl ? "Ctrl+" : "") + (held.Alt ? "Alt+" : "") + (held.Shift ? "Shift+" : "") +
         NameOfKey(stroke.Key);
}

}  // namespace

std::span<const MenuRow> MenuRows() {
  return Rows;
}

const MenuRow& MenuRowOf(MenuId item) {
  return Rows[static_cast<std::size_t>(item)];
}

const MenuRow* MenuRowOf(Key key, const HeldKeys& held) {
  const auto isPressed = [&](const Keystroke& stroke) { return stroke.IsPressedBy(key, held); };
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
