// The menu bar and the keys: which commands there are, where they stand, what they are called and what they
// run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "app/keys.h"
#include "resources/text_id.h"

namespace vaxel {

enum class MenuId : std::uint8_t {
  Mnu_Fichier,
  Mnu_Ouvrir,
  Mnu_Nouveau,
  Mnu_NouveauModele,
  Mnu_OuvrirMeter,
  Mnu_Enregistrer,   // under another name
  Mnu_EnregistrerS,  // under the present one
  Mnu_Exporter,
  Mnu_CopierDessin,
  Mnu_Imprimante,
  Mnu_Calibrage,
  Mnu_Apercu,
  Mnu_Imprimer,
  Mnu_ImprimerZoom,
  Mnu_ImprimerCode,
  Mnu_Quitter,
  Mnu_Edition,
  Mnu_Annuler,
  Mnu_Refaire,
  Mnu_Couper,
  Mnu_Copier,
  Mnu_Coller,
  Mnu_ToutSelectionner,
  Mnu_Chercher,
  Mnu_Suivant,
  Mnu_Precedent,
  Mnu_AllerLigne,
  Mnu_Commenter,
  Mnu_Indenter,
  Mnu_Desindenter,
  Mnu_Dupliquer,
  Mnu_SupprimerLignes,
  Mnu_Monter,
  Mnu_Descendre,
  Mnu_Recolorer,
  Mnu_Completer,
  Mnu_NombrePlus,
  Mnu_NombreMoins,
  Mnu_Syntaxe,
  Mnu_Visualiser,
  Mnu_Zoom,
  Mnu_RefCurseur,
  Mnu_Dessin,
  Mnu_Ajuster,
  Mnu_TailleReelle,
  Mnu_PagePrecedente,
  Mnu_PageSuivante,
  Mnu_Options,
  Mnu_DblClick,
  Mnu_DessinDirect,
  Mnu_Code,
  Mnu_AgrandirCode,
  Mnu_IniCode,
  Mnu_TaillCar,
  Mnu_CentreCurseur,
  Mnu_Feuille,
  Mnu_Regles,
  Mnu_Patchs,
  Mnu_Langue,
  Mnu_Couleur,
  Mnu_Polices,
  Mnu_Liste_Fic,
  Mnu_BarreOutils,
  Mnu_Help,
  Mnu_Aide,
  Mnu_AideMot,
  Mnu_AProposDe,
  Positionner,  // these have keys alone
  Mnu_ErreurSuivante,
  Mnu_ErreurPrecedente,
  Mnu_NombrePlusFin,
  Mnu_NombreMoinsFin,
  // No items, but places: the bar itself, where the popups stand, and none at all.
  Bar,
  Nowhere
};

inline constexpr auto MenuItems = static_cast<std::size_t>(MenuId::Bar);

struct AppContext;
class Application;
class EditingCommands;
class ExportCommands;
class FileCommands;
class PrintCommands;
class RunCycle;
class Settings;
class WritingAid;

// What commands work on.
struct CommandTargets {
  AppContext& App;
  Application& Owner;
  FileCommands& Files;
  EditingCommands& Editing;
  ExportCommands& Exports;
  PrintCommands& Prints;
  RunCycle& Runs;
  Settings& Options;
  WritingAid& Aid;
  bool WithCtrl;  // Ctrl was held down when the command was given
};

struct MenuRow {
  MenuId Item;
  TextId Caption;  // None where it stands in no menu
  MenuId Place;    // the popup that it stands in, or Bar
  // It is null for a popup, and for a command that there is not yet, which is greyed.
  void (*Run)(const CommandTargets& on) = nullptr;
  std::array<Keystroke, 2> Keys{};  // the first is shown in the menu
  std::string_view Separator{};     // the name of the one that follows the item
};

// The rows are in the order of MenuId, in which they stand in the menus, each popup before its items.
std::span<const MenuRow> MenuRows();
const MenuRow& MenuRowOf(MenuId item);
// The row of the command that a key runs; it is null when no command has the key.
const MenuRow* MenuRowOf(Key key, const HeldKeys& held);

bool IsPopup(MenuId item);
// The key that is shown for an item: "Ctrl+S". Empty when it has none.
std::string KeyText(const MenuRow& row);
// What is written after the caption: " (F4)" in the bar, which has no column for keys, and elsewhere the key
// after a TAB, "\tCtrl+S".
std::string KeyHint(const MenuRow& row);

}  // namespace vaxel
