#include "win32/file_dialogs.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/win32/dialog_driver.h"
#include "win32/dialogs.h"
#include "win32/wide_text.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::wstring>;

TEST(FileDialogs, ReturnedBuffersAreListsOfFullNames) {
  using namespace std::string_view_literals;
  EXPECT_EQ(NamesInBuffer(L"C:\\a b.dat\0\0\0"sv), (Names{L"C:\\a b.dat"}));
  EXPECT_EQ(NamesInBuffer(L"C:\\f\0a.dat\0b c.dat\0\0x\0"sv), (Names{L"C:\\f\\a.dat", L"C:\\f\\b c.dat"}));
  EXPECT_EQ(NamesInBuffer(L"C:\\\0a\0b\0\0"sv), (Names{L"C:\\a", L"C:\\b"}));
  EXPECT_EQ(NamesInBuffer(L"\0\0"sv), Names{});
  EXPECT_EQ(NamesInBuffer(L"C:\\unfinished"sv), (Names{L"C:\\unfinished"}));
}

auto TypeName(const std::string& name) {
  return [name](const ShownDialog& dialog) { dialog.AnswerFile(name); };
}

class FileDialogsTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::remove_all(Folder);
    fs::create_directories(Folder);
    for (const wchar_t* name : {L"un.dat", L"deux mots.dat", L"Ωé.dat"}) std::ofstream(Folder / name) << "x";
  }
  void TearDown() override { fs::remove_all(Folder); }

  std::string FullName(const wchar_t* name) const { return Utf8((Folder / name).wstring()); }
  FileDialog Request(std::uint32_t flags) const {
    return {"Vaxel (*.dat)|*.dat|Tous (*.*)|*.*", Utf8(Folder.wstring()), "", "", flags};
  }

  fs::path Folder = fs::temp_directory_path() / L"vaxel dialogs Ω";
  DialogsWin32 Shown{GetModuleHandleW(nullptr), [] { return HWND{}; }};
};

TEST_F(FileDialogsTest, OpenReturnsAFileAndKeepsTheWorkingFolder) {
  const fs::path before = fs::current_path();
  std::vector<std::string> chosen;
  const auto open = [&] { chosen = Shown.ShowOpen(Request(FileMustExist | HideReadOnly)); };
  Drive(open, TypeName("Ωé.dat"));
  EXPECT_EQ(chosen, (std::vector<std::string>{FullName(L"Ωé.dat")}));
  EXPECT_EQ(fs::current_path(), before);
  Drive(open, [](const ShownDialog& dialog) { dialog.Press(IDCANCEL); });
  EXPECT_TRUE(chosen.empty());
}

TEST_F(FileDialogsTest, SeveralFilesComeWithTheirFolder) {
  std::vector<std::string> chosen;
  const auto open = [&] {
    chosen =
        Shown.ShowOpen(Request(MultipleSelection | ExplorerStyle | LongNames | FileMustExist | HideReadOnly));
  };
  Drive(open, TypeName("\"un.dat\" \"deux mots.dat\""));
  EXPECT_EQ(chosen, (std::vector<std::string>{FullName(L"un.dat"), FullName(L"deux mots.dat")}));
  Drive(open, TypeName("un.dat"));
  EXPECT_EQ(chosen, (std::vector<std::string>{FullName(L"un.dat")}));
}

TEST_F(FileDialogsTest, SaveAddsTheExtensionAndAsksBeforeItReplaces) {
  std::string chosen;
  FileDialog request = Request(OverwritePrompt | HideReadOnly);
  request.DefaultExtension = "dat";
  const auto save = [&] { chosen = Shown.ShowSave(request); };
  Drive(save, TypeName("neuf"));
  EXPECT_EQ(chosen, FullName(L"neuf.dat"));
  Drive(save, TypeName("a.b.dat"));
  EXPECT_EQ(chosen, FullName(L"a.b.dat"));
  Drive(save, [](const ShownDialog& dialog) {
    dialog.AnswerFile("un.dat");
    Await("the question", [&] { return GetLastActivePopup(dialog.Window()) != dialog.Window(); });
    ShownDialog(GetLastActivePopup(dialog.Window())).Answer(IDNO);
    dialog.Press(IDCANCEL);
  });
  EXPECT_EQ(chosen, "");
}

// A script's name proposes that of its export, and a script may be called what it likes.
TEST_F(FileDialogsTest, AnyProposedNameOpensTheDialog) {
  FileDialog request = Request(OverwritePrompt);
  for (const char* name : {"cadran", "a<b>:\"c|d?*", "x/y\\z", "...", "\x01\x02", ""}) {
    request.FileName = name;
    std::string proposed;
    std::string chosen;
    Drive([&] { chosen = Shown.ShowSave(request); },
          [&](const ShownDialog& dialog) {
            proposed = dialog.FileName();
            dialog.Press(IDCANCEL);
          });
    EXPECT_EQ(proposed, Utf8(ProposedName(Wide(name)))) << name;
    EXPECT_EQ(proposed.find_first_of("<>:\"|?*/\\"), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace vaxel
