// What a script may read.
#include "interpreter/script_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "resources/text_id.h"
#include "tests/support/test_folder.h"

namespace vaxel::test {
namespace {

// What comes of a script's wish to read a file.
TextId RefusalOf(const ScriptFiles& files, const std::string& script, const std::string& name) {
  const std::string found = files.Find(script, name);
  if (found.empty()) return TextId::FileMissing;
  const Result<std::string> bytes = files.Read(found, 1000);
  return bytes ? TextId::None : bytes.Why().Text;
}

FileRights Rooted(const std::string& root) {
  FileRights rights;
  rights.Root = root;
  return rights;
}

TEST(ScriptFiles, NamesOfServersAreNotOpened) {
  const ScriptFiles files("C:/dials/dial.dat", {});
  for (const char* const name :
       {"\\\\server\\share\\a.png", "//server/share/a.png", "\\/server\\a.png", "\\\\?\\UNC\\server\\a.png",
        "\\\\.\\UNC\\server\\a.png", "\\??\\UNC\\server\\a.png"}) {
    EXPECT_EQ(RefusalOf(files, "C:/dials/dial.dat", name), TextId::NetworkForbidden) << name;
  }
  FileRights network;
  network.Network = true;
  EXPECT_NE(RefusalOf(ScriptFiles("dial.dat", network), "dial.dat", "//localhost/none/a.png"),
            TextId::NetworkForbidden);
  // A script on a server may read there, and nowhere else.
  const std::string script = "//localhost/none/dial.dat";
  const ScriptFiles there(script, {});
  EXPECT_EQ(RefusalOf(there, script, "a.png"), TextId::FileMissing);
  EXPECT_EQ(RefusalOf(there, script, "\\\\LOCALHOST\\none\\a.png"), TextId::FileMissing);
  EXPECT_EQ(RefusalOf(there, script, "\\\\other\\none\\a.png"), TextId::NetworkForbidden);
  EXPECT_EQ(RefusalOf(ScriptFiles("//?/C:/dial.dat", {}), "", "//?/UNC/server/a.png"),
            TextId::NetworkForbidden);
}

TEST(ScriptFiles, ARootConfinesWhatIsRead) {
  const TestFolder folder;
  std::filesystem::create_directories(folder.Path() / "root" / "deep");
  folder.Write("root/a.txt", "a");
  folder.Write("root/deep/b.txt", "b");
  folder.Write("rooted.txt", "secret");
  const std::string script = folder.NameOf("root/deep/dial.dat");
  for (const char* const root : {"root", "root/", "root/deep/.."}) {
    const ScriptFiles files(script, Rooted(folder.NameOf(root)));
    EXPECT_EQ(RefusalOf(files, script, "b.txt"), TextId::None) << root;
    EXPECT_EQ(RefusalOf(files, script, "..\\A.TXT"), TextId::None) << root;
    EXPECT_EQ(RefusalOf(files, script, "none.txt"), TextId::FileMissing) << root;
    // Whether a file is there, out of reach, is not told.
    for (const char* const name : {"../../rooted.txt", "../../none.txt"}) {
      EXPECT_EQ(RefusalOf(files, script, name), TextId::FileOutsideRoot) << root << name;
    }
    EXPECT_EQ(RefusalOf(files, script, folder.NameOf("rooted.txt")), TextId::FileOutsideRoot);
  }
#ifndef _WIN32
  std::filesystem::create_symlink("../rooted.txt", folder.Path() / "root" / "link.txt");
  EXPECT_EQ(RefusalOf(ScriptFiles(script, Rooted(folder.NameOf("root"))), script, "../link.txt"),
            TextId::FileOutsideRoot);
#endif
}

TEST(ScriptFiles, NoFilesMeansNone) {
  const TestFolder folder;
  folder.Write("a.txt", "a");
  FileRights none;
  none.NoFiles = true;
  const std::string script = folder.NameOf("dial.dat");
  EXPECT_EQ(RefusalOf(ScriptFiles(script, {}), script, "a.txt"), TextId::None);
  for (const char* const name : {"a.txt", "none.txt"}) {
    EXPECT_EQ(RefusalOf(ScriptFiles(script, none), script, name), TextId::FilesForbidden);
  }
}

}  // namespace
}  // namespace vaxel::test
