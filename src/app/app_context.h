// What all parts of the application share: the state, the texts and what the platform offers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/application_state.h"
#include "app/configuration.h"
#include "app/dialogs.h"
#include "app/main_window.h"
#include "app/platform.h"
#include "app/script_editor.h"
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

  ApplicationState State;
  StringTable Strings;
  std::optional<ConfigurationFile> Config;  // once the program's folder is known
  bool IsConfigFailureTold = false;

  // In the language of messages, and in that of menus and help.
  std::string Message(int id) const { return std::string(Strings.Text(State.LangBase + id)); }
  std::string Message(int id, std::string_view value, std::string_view second = {}) const {
    return Strings.Text(State.LangBase + id, value, second);
  }
  std::string MenuText(int id) const { return std::string(Strings.Text(State.HelpLangBase + id)); }

  void Tell(BoxIcon icon, const std::string& text) { Dialogs.ShowMessage(icon, "Vaxel", text); }
  YesNoCancel AskYesNoCancel(const std::string& text) { return Dialogs.AskYesNoCancel("Vaxel", text); }

  // Writes a line of the configuration. The first failure is told, all of them leave the values in memory.
  void WriteKey(std::string_view key, std::string_view value) {
    WriteLines({{std::string(key), std::string(value)}});
  }
  void WriteLines(const std::vector<ConfigurationLine>& lines);
  void UpdateTitle();
  // Of the cursor's line and the number of lines, into Text1.
  void ShowPlace();
};

// Ids of the texts that the application shows.
namespace text_id {
inline constexpr int CannotRead = 101, CannotWrite = 102, FileTooLarge = 103, NotAText = 104;
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
