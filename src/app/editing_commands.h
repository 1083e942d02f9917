// The commands of the edit menu. Each change is one step to undo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "app/dialogs.h"
#include "app/text_search.h"

namespace vaxel {

class EditingCommands {
 public:
  // It must outlive this.
  explicit EditingCommands(AppContext& app) : app_(app) {}

  void Undo();       // Mnu_Annuler
  void Redo();       // Mnu_Refaire
  void Cut();        // Mnu_Couper
  void Copy();       // Mnu_Copier
  void Paste();      // Mnu_Coller
  void SelectAll();  // Mnu_ToutSelectionner

  void Search();  // Mnu_Chercher: the dialog
  // Mnu_Suivant and Mnu_Precedent: without it, once something was looked for.
  void SearchNext() { SearchOn(true); }
  void SearchPrevious() { SearchOn(false); }
  void GoToLine();  // Mnu_AllerLigne

  // On the lines in which something is selected, or on the cursor's. A selection that ends at a line's start
  // has nothing of that line.
  void ToggleComments();  // Mnu_Commenter
  void Indent();          // Mnu_Indenter
  void Unindent();        // Mnu_Desindenter
  void Duplicate();       // Mnu_Dupliquer
  void DeleteLines();     // Mnu_SupprimerLignes
  void MoveUp();          // Mnu_Monter
  void MoveDown();        // Mnu_Descendre
  void ColourAll();       // Cmd_Ctrl_K

 private:
  struct LineBlock {
    std::size_t First, Last;
    EditorRange Range;
  };
  LineBlock SelectedLines();
  void ChangeLines(std::string (*change)(std::string_view lines));
  void SwapWithNeighbour(std::size_t first, std::size_t last, bool movesUp);

  struct Match {
    TextPart Bytes;
    EditorRange Range;
  };
  std::vector<Match> MatchesIn(const std::string& text, const SearchEntry& entry) const;
  enum class Found : std::uint8_t { Nothing, Ahead, GoingAround };
  Found SelectMatch(const SearchEntry& entry, bool isForward);
  void SearchOn(bool isForward);
  // What is selected for the search has become longer or shorter.
  void NoteLength(std::size_t before, std::size_t after);
  // What the buttons of the dialog do; the answer is for the user.
  std::string Find(const SearchEntry& entry, bool isForward);
  std::string ReplaceOne(const SearchEntry& entry);
  std::string ReplaceAll(const SearchEntry& entry);

  AppContext& app_;
  SearchEntry last_;                   // what was looked for last
  std::optional<EditorRange> within_;  // what was selected when the dialog opened
};

}  // namespace vaxel
