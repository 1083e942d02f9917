// What the tests of the real program share. It needs a printer (scripts/wine-with-printer), the tests named
// WithoutPrinter need that there is none (scripts/wine-run). VAXEL_PROGRAM names another Vaxel.exe.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "app/application.h"
#include "resources/string_table.h"
#include "tests/support/test_folder.h"
#include "tests/win32/program_driver.h"
#include "win32/control_ids.h"

namespace vaxel {

enum Language : int { French, English, Spanish };

// The text of the interface, as windows show it.
inline std::string TextIn(Language language, TextId id) {
  return std::string(StringTable().Text(language * LanguageBlock, id));
}

inline std::string Version() {
  return VersionTextOf(VAXEL_MAJOR, VAXEL_MINOR, VAXEL_REVISION);
}

inline std::string Header() {
  return "'Fichier de configuration du Programme Vaxel V" + Version() + "\r\n";
}

inline std::string SettingsWith(const std::string& language, const std::string& script) {
  return Header() + "Langue = " + language + "\r\nLangueAide = " + language + "\r\nFichierDat = " + script +
         "\r\nDoubleClic = Non\r\nDessinDirect = Non\r\nZmm = 1\r\nPatchs = 0\r\n";
}

// Of a saved script; the name of a new one is empty.
inline std::string TitleWith(Language language, const std::string& file) {
  return "Vaxel  V" + Version() + "  (mm × mm)   " + TextIn(language, TextId::FileWord) + ": " +
         (file.empty() ? TextIn(language, TextId::NewScript) : file);
}

inline bool HasLine(const std::string& text, const std::string& line) {
  return ("\n" + text).find("\n" + line + "\r\n") != std::string::npos;
}

inline constexpr char Endless[] = "Again:\nTrait = 0, 0, 10, 10\nNPage\nGoto Again";

class ProgramTest : public testing::Test {
 protected:
  // Starts English, with this script.
  void StartWith(const std::string& script) {
    folder_.Write("dial.dat", script);
    folder_.Write("Vaxel.cfg", SettingsWith("English", folder_.NameOf("dial.dat")));
    program_.emplace(folder_);
    program_->AwaitIdle();
  }
  // The text that is asked about is given up.
  void EndWithoutSaving() {
    program_->Close();
    program_->AwaitDialog().Answer(IDNO);
    EXPECT_EQ(program_->AwaitExit(), 0);
  }
  void EndUnasked() {
    program_->Close();
    EXPECT_EQ(program_->AwaitExit(), 0);
  }
  void AwaitEditor(const std::string& text) {
    try {
      Await(
          "the editor's text", [&] { return program_->EditorText() == text; }, std::chrono::seconds(8));
    } catch (const DriveFailure&) {
    }
    EXPECT_EQ(program_->EditorText(), text);
    program_->AwaitIdle();
  }
  // Until the pointer at 120, 90 is shown there.
  void AwaitPlace(const std::string& text) {
    Await("the place " + text, [&] { return program_->MovePointer(120, 90) == text; });
    program_->AwaitIdle();
  }

  test::TestFolder folder_;
  std::optional<RunningProgram> program_;
};

}  // namespace vaxel
