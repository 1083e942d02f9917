// What all parts of the application share: the texts, the version and folder of the program, and what the
// platform offers.
#pragma once

#include <string>
#include <string_view>

#include "app/dialogs.h"
#include "app/main_window.h"
#include "app/platform.h"
#include "app/script_editor.h"
#include "app/writing_aid_view.h"
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
  WritingAidView& Aid;
};

struct AppContext : Shell {
  explicit AppContext(const Shell& shell) : Shell(shell) {}
  AppContext(const AppContext&) = delete;
  AppContext& operator=(const AppContext&) = delete;

  // "major.minor" and a letter for the revision, or a blank for none.
  std::string VersionText;
  // Both with their last separator: where templates, languages and help files come from, and where the
  // program writes its own files (ChooseDataFolder). They are mostly one.
  std::string ProgramFolder, DataFolder;

  // Whether scripts may read files by the names of servers, wherever they lie themselves.
  bool MayUseNetwork = false;

  StringTable Strings;
  // The bases of the languages of messages, and of menus and help. They are French until the settings are
  // read.
  int LangBase = 0, HelpLangBase = 0;

  std::string Message(TextId id) const { return std::string(Strings.Text(LangBase, id)); }
  std::string Message(TextId id, std::string_view value, std::string_view second = {}) const {
    return Strings.Text(LangBase, id, value, second);
  }
  std::string Message(const Failure& why) const { return Strings.Text(LangBase, why); }
  std::string MenuText(TextId id, std::string_view value) const {
    return Strings.Text(HelpLangBase, id, value);
  }
  std::string MenuText(TextId id) const { return std::string(Strings.Text(HelpLangBase, id)); }

  void Tell(BoxIcon icon, const std::string& text) { Dialogs.ShowMessage(icon, "Vaxel", text); }
  YesNoCancel AskYesNoCancel(const std::string& text, SafeAnswer safe) {
    return Dialogs.AskYesNoCancel("Vaxel", text, safe);
  }
  bool AskYesNo(const std::string& text, SafeAnswer safe) { return Dialogs.AskYesNo("Vaxel", text, safe); }
  // An entry that is no number, or none that there may be.
  void TellNotUsable(const std::string& entry) {
    Tell(BoxIcon::Information, Message(TextId::NotUsable, entry));
  }
  // Writes the cursor's line and the number of lines into Text1.
  void ShowPlace();
};

}  // namespace vaxel
