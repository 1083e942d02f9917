// The commands of the file menu. Nothing that fails or is cancelled changes the editor's text.
#pragma once

#include <cstddef>
#include <string>

#include "app/app_context.h"
#include "app/run_cycle.h"
#include "app/script_file.h"

namespace vaxel {

class FileCommands {
 public:
  FileCommands(AppContext& app, RunCycle& runs) : app_(app), runs_(runs) {}

  void Open();             // Mnu_Ouvrir
  void New();              // Mnu_Nouveau
  void Save();             // Mnu_EnregistrerS
  void SaveAs();           // Mnu_Enregistrer
  void InsertFileNames();  // Mnu_Liste_Fic
  void Export();           // Mnu_Exporter
  // A script that was dropped, or chosen from the recent ones.
  void OpenFile(const std::string& fileName);
  void OpenRecent(std::size_t index);

  // Loads a script into the editor, colours it and makes it the current one (LitFic). Whether that could be
  // done; else the user was told why not and nothing is changed.
  bool Load(const std::string& fileName);
  // Another script for the editor, in its colours (Cmd_Ctrl_K), and the file that it belongs to.
  void SetScript(ScriptFile script, std::string fileName);
  // The Open dialog and what follows it; whether a script was opened.
  bool ChooseAndLoad();
  // Asks whether changes are to be saved, and saves them. False when the user cancelled, or when what was to
  // be saved could not be.
  bool SettleChanges();

 private:
  void HandleEvents();
  void ShowOpened();
  void DrawOpened();
  bool WriteTo(const std::string& fileName);
  bool MayReplace(const std::string& fileName);
  void Remember(const std::string& fileName);
  void TellNotSaved(const std::string& fileName, const std::string& reason);
  void TellNotLoaded(const std::string& fileName, const ScriptFile& script);

  AppContext& app_;
  RunCycle& runs_;
};

// "a.b" of "a.b.dat": a name with several points is cut before its last one.
std::string CutExtraExtension(const std::string& fileName);

// The names, one a line, relative to the script's folder where they lie below it.
std::string ListOfNames(const std::vector<std::string>& names, std::string_view scriptName);

}  // namespace vaxel
