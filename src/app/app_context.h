// What all parts of the application share: the texts, what the program is and what the platform offers.
#pragma once

#include <string>
#include <string_view>

#include "app/dialogs.h"
#include "app/main_window.h"
#include "app/platform.h"
#include "app/script_editor.h"
#include "base/result.h"
#include "resources/string_table.h"

namespace vaxel {

// All of them must outlive the application.
struct Shell {
  MainWindow& Window;
  ScriptEditor& Editor;
  vaxel::Dialogs& Dialogs;
  vaxel::Printers& Printers;
  vaxel::Platform& Platform;
};

struct AppContext : Shell {
  explicit AppContext(const Shell& shell) : Shell(shell) {}
  AppContext(const AppContext&) = delete;
  AppContext& operator=(const AppContext&) = delete;

  // "major.minor" and a letter for the revision, or a blank for none.
  std::string VersionText;
  std::string ProgramFolder;  // with its last separator; of the configuration, templates and help files

  StringTable Strings;
  // Of the languages of messages, and of menus and help. French until the settings are read.
  int LangBase = 0, HelpLangBase = 0;

  std::string Message(int id) const { return std::string(Strings.Text(LangBase, id)); }
  std::string Message(int id, std::string_view value, std::string_view second = {}) const {
    return Strings.Text(LangBase, id, value, second);
  }
  std::string Message(const Failure& why) const { return Strings.Text(LangBase, why); }
  std::string MenuText(int id) const { return std::string(Strings.Text(HelpLangBase, id)); }

  void Tell(BoxIcon icon, const std::string& text) { Dialogs.ShowMessage(icon, "Vaxel", text); }
  YesNoCancel AskYesNoCancel(const std::string& text) { return Dialogs.AskYesNoCancel("Vaxel", text); }
  // Of the cursor's line and the number of lines, into Text1.
  void ShowPlace();
};

// Ids of the texts that the application shows.
namespace text_id {
inline constexpr int CannotRead = 101, CannotWrite = 102, FileTooLarge = 103;
inline constexpr int VaxelFiles = 105, AllFiles = 106, FileWord = 110, NewScript = 111;
inline constexpr int ChangedOnDisk = 112, ReplaceFile = 116, RecoveryFound = 117, SaveChanges = 118;
inline constexpr int ConfigNotWritten = 120, ActivePatches = 121, EnterPatch = 122;
inline constexpr int PrintFailed = 125, SvgFiles = 126, PngFiles = 127, EmfFiles = 128, NothingToExport = 129;
inline constexpr int LineToolTip = 130, PlaceToolTip = 131;
inline constexpr int ZoomFactor = 133, FontSizePrompt = 135, NotUsable = 136;
inline constexpr int LanguageCaption = 137, MessagesLanguage = 138, HelpLanguage = 139,
                     ValidateLanguage = 140;
inline constexpr int MoreLanguages = 141, AddLanguage = 142;
inline constexpr int LanguageFileWrong = 143, LanguageFileLine = 144, LanguageFileRefused = 145;
inline constexpr int AboutText = 146, AboutVersion = 147, AboutSystem = 148, NoHelp = 149;
inline constexpr int Yes = 153, No = 154, Cancel = 155, Ok = 156;
inline constexpr int ReadOnlyScript = 157, SavedAsUtf8 = 158, FolderGone = 159;
inline constexpr int NoPrinter = 160;
inline constexpr int Validate = 162, MmCorrection = 163, ValidateReference = 164, ReferenceLabel = 165;
inline constexpr int ReferenceHint = 166;
inline constexpr int OutOfMemory = 170, Unexpected = 171;
}  // namespace text_id

}  // namespace vaxel
