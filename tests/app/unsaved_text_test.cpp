// Whatever goes wrong or happens meanwhile, the text that the user has typed is in the editor or on the disk,
// and the program knows that it is not saved.
#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "files/files.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

const char* const Line = "X = 0,0,1\n";

TEST(RunBridge, KeepsTheUsersOwnNumbers) {
  FakeShell shell;
  shell.StartWith("?  ' 1998\nEpaisT ' 2, 3\n?  ' see 'x' 5\n? ' 7 pixels\n? ' 1E+20,-0.5\n");
  EXPECT_EQ(shell.Editor.Content,
            "?  ' 1998  ' 0, 0\nEpaisT ' 2, 3  '  1 pixels, 0.25mm\n?  ' see 'x' 5  ' 0, 0\n"
            "? ' 7 pixels  ' 0, 0\n?  ' 0, 0\n");
  const std::string commented = shell.Editor.Content;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, commented);
}

// On the disk the script has other lines than in the editor.
TEST(RunBridge, WritesNothingIntoLinesOfAScriptThatIncludesItself) {
  FakeShell shell;
  shell.StartWith("?\n");
  const std::string edited = "Texte = 0,0,,,my words\nFichier = dial.dat\n";
  shell.Editor.Content = edited;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, edited);
}

}  // namespace
}  // namespace vaxel::test
