// The options that are kept in the configuration file.
#pragma once

#include <string>
#include <vector>

#include "app/app_context.h"

namespace vaxel {

class Settings {
 public:
  explicit Settings(AppContext& app) : app_(app) {}

  // Reads the configuration file of the program's folder, which is written first where there is none, and the
  // languages that lie beside it. Whether the language dialog is to be shown.
  bool Read();
  void ChooseLanguages();  // Mnu_Langue, without showing the menus anew
  void ChoosePatches();    // Mnu_Patchs
  void ChooseFontSize();   // Mnu_TaillCar
  void ToggleDoubleClick();
  void ToggleEditor();  // Mnu_Code
  void WidenEditor();   // Mnu_AgrandirCode
  void ResetEditor();   // Mnu_IniCode
  void SetEditorWidth(int width);
  // What is written at the end of the program.
  void WriteAtEnd();

 private:
  // What is wrong in the file of a language.
  struct LanguageProblems {
    std::string FileName;
    std::vector<LineProblem> Lines;
    std::string Unreadable;  // why it cannot be read
  };
  std::vector<LanguageProblems> AddLanguages();
  void TellProblems(const LanguageProblems& found);
  void UseHelpLanguage(int index);
  void UseMessageLanguage(int index);
  void CopyTemplate();
  std::string LanguageText(int index, int id) const;

  AppContext& app_;
};

}  // namespace vaxel
