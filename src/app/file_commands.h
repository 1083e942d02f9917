// The commands of the file menu. Nothing that fails or is cancelled changes the editor's text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "app/disk_watch.h"
#include "app/edited_script.h"
#include "app/recent_files.h"
#include "app/recovery.h"
#include "app/run_cycle.h"
#include "app/script_file.h"

namespace vaxel {

class FileCommands {
 public:
  // All must outlive it.
  FileCommands(AppContext& app, RunCycle& runs, RecentFiles& recent, EditedScript& script)
      : app_(app), runs_(runs), recent_(recent), script_(script) {}

  // Loads the script of the start, once the settings are read: the one that fileName names with its folders,
  // or the one that the user chooses when there is no such file. One that was named by the user is told of
  // instead.
  void LoadFirst(const std::string& fileName, bool isNamed);
  // Takes the text of a recovery copy, which counts as not saved.
  void Restore(const RecoveryCopy& copy);
  // Runs the script onto the screen. The comments that the run writes are no changes of the user's.
  void DrawUnchanged();
  // The text was changed by the user, or by the comments of a run.
  void TextChanged(bool isComment);
  // The script with which the next start begins.
  const std::string& StartupFile() const { return startupFile_; }
  // Shows the program, the script's name and whether it is saved, in the language of messages.
  void ShowTitle();
  // Asks what is to become of the text when another program has changed the script's file. The result says
  // whether the text counts as not saved since.
  bool FollowDisk();

  void Open();             // Mnu_Ouvrir
  void ImportMeter();      // Mnu_OuvrirMeter
  void New();              // Mnu_Nouveau
  void NewFromTemplate();  // Mnu_NouveauModele
  void Save();             // Mnu_EnregistrerS
  void SaveAs();           // Mnu_Enregistrer
  void InsertFileNames();  // Mnu_Liste_Fic
  // These open a script that was dropped, and one of the recent ones; a Meter file is imported.
  void OpenFile(const std::string& fileName);
  void OpenRecent(std::size_t index);

  // Asks whether changes are to be saved, and saves them. The result is false when the user cancelled, or
  // when what was to be saved could not be.
  bool SettleChanges();

 private:
  // Loads a script into the editor, colours it and makes it the current one (LitFic). The result says whether
  // that could be done; else the user was told why not and nothing is changed.
  bool Load(const std::string& fileName);
  // Loads the script that is made of a Meter file (LitFicMeter), and says how many of its lines were not
  // understood. The file's own name is the current one: saving asks for another.
  bool LoadMeter(const std::string& fileName);
  // Does one or the other, as the name says.
  bool LoadByName(const std::string& fileName);
  void FileLoaded(const std::string& fileName);
  // Puts another script into the editor, in its colours (Cmd_Ctrl_K), with the file that it belongs to.
  void SetScript(const ScriptFile& script, std::string fileName);
  // The file that is chosen in the dialog with this filter; empty when it was cancelled.
  std::string ChooseFile(std::string filter);
  // Shows the Open dialog, does what follows it and returns whether a script was opened.
  bool ChooseAndLoad();
  void SetModified(bool isModified);
  // Begins an unsaved script, which is in the editor already.
  void BeginNew();
  void LoadAgain();
  void ShowOpened();
  void DrawOpened();
  bool WriteTo(const std::string& fileName);
  bool MayReplace(const std::string& fileName);
  void Tell(TextId text, const std::string& fileName, const Failure& why);
  void TellNotSaved(const std::string& fileName, const Failure& why);
  void TellNotLoaded(const std::string& fileName, const Failure& why, std::size_t maxBytes);

  AppContext& app_;
  RunCycle& runs_;
  RecentFiles& recent_;
  EditedScript& script_;
  DiskWatch watch_;
  std::string startupFile_;
  std::string openFolder_;  // where the next Open dialog begins
  std::string shownTitle_;
  bool isOpening_ = false;  // a script is drawn for the first time
};

// "a.b" of "a.b.dat": a name with several points is cut before its last one.
std::string CutExtraExtension(const std::string& fileName);

// The names, each with a line end, relative to the script's folder where they lie below it.
std::string ListOfNames(const std::vector<std::string>& names, std::string_view scriptName);

}  // namespace vaxel
