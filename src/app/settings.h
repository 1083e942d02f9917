// The options that are kept in the configuration file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/configuration.h"

namespace vaxel {

inline constexpr std::size_t MostRecentFiles = 9;
// Points, of the editor's characters where the settings say nothing.
inline constexpr double UsualCodeFontSize = 10;

class Settings {
 public:
  explicit Settings(AppContext& app) : app_(app) {}

  // Reads the configuration file of the folder of data, which is written first where there is none, and the
  // languages that lie there and in the program's folder. The result says whether the language dialog is to
  // be shown.
  bool Read();
  // The settings as they are now, but for the script and lines of ours, which are as they were read.
  const Configuration& Values() const { return values_; }
  std::vector<std::string> RecentFiles() const { return RecentFilesIn(values_); }
  // Those that the file names now, which another program may have written, and their writing.
  std::vector<std::string> ReadRecentFiles();
  void WriteRecentFiles(const std::vector<std::string>& names);
  // The name of the help file with its folder.
  std::string HelpFile() const { return app_.ProgramFolder + helpFile_; }

  bool IsEditorShown() const { return isEditorShown_; }

  // Writes lines of the kind of OwnLine, of which others know what they mean.
  void Keep(const std::vector<ConfigurationLine>& ownLines) { WriteLines(ownLines); }
  void SetZmm(double zmm);
  void ChooseLanguages();  // Mnu_Langue, without showing the menus anew
  void ChoosePatches();    // Mnu_Patchs
  void ChooseFontSize();   // Mnu_TaillCar
  // By points, as the wheel turns. It is written when the wheel rests.
  void StepFontSize(int points);
  void WriteFontSize();
  // Whether the script is drawn while it is written (Mnu_DessinDirect).
  bool DrawsLive() const { return drawsLive_; }
  void ToggleLiveDrawing();
  void ToggleDoubleClick();
  void ToggleEditor();             // Mnu_Code
  void WidenEditor();              // Mnu_AgrandirCode
  void ResetEditor();              // Mnu_IniCode
  void ToggleToolBar();            // Mnu_BarreOutils
  void SetEditorWidth(int width);  // in units of 1/96 inch
  // Writes what is kept at the end of the program, with the script that the next one begins with.
  void WriteAtEnd(const std::string& startupFile);
  // What cannot be written is not told any more: nobody is there to read it.
  void FailInSilence() { isFailureTold_ = true; }

 private:
  // What is wrong in the file of a language.
  struct LanguageProblems {
    std::string FileName;
    Result<std::vector<LineProblem>> Lines;
  };
  static std::vector<std::string> RecentFilesIn(const Configuration& settings);
  std::vector<LanguageProblems> AddLanguages();
  void TellProblems(const LanguageProblems& found);
  void ShowOptions();
  // Writes lines of the configuration. The first failure is told, all of them leave the values in memory.
  void WriteLines(const std::vector<ConfigurationLine>& lines);
  void TellNotWritten(const Failure& why);
  void UseHelpLanguage(int index);
  void UseMessageLanguage(int index);
  void UseHelpFile();
  void CopyTemplate();
  std::string LanguageText(int index, TextId id) const;
  int SystemLanguage() const;
  LanguageDialog LanguagesWith(int messages, int help) const;

  AppContext& app_;
  Configuration values_;
  std::optional<ConfigurationFile> file_;  // once the program's folder is known
  bool isFailureTold_ = false;
  std::string helpFile_ = "Vaxel.hlp";
  bool drawsLive_ = true;
  bool isFontSizeNew_ = false;  // since it was written
  bool isEditorShown_ = true;
  bool isToolBarShown_ = true;
  int editorWidth_ = 0;  // units of 1/96 inch, while it is shown
};

}  // namespace vaxel
