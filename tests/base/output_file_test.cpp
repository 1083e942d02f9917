// Files as they are written: what is beside them meanwhile, and what stays.
#include "base/output_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

#include "base/files.h"
#include "tests/support/test_folder.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

void WriteOut(const std::string& name, Lasting lasting) {
  OutputFile file(name, lasting);
  file.Write("new");
  const Result<> committed = file.Commit();
  EXPECT_TRUE(committed) << name;
}

TEST(OutputFile, IsThereWholeOrNotAtAll) {
  const TestFolder folder;
  folder.Write("dial.svg", "old");
  {
    OutputFile left(folder.NameOf("dial.svg"));
    left.Write("half");
    EXPECT_EQ(folder.FileCount(), 2);
    EXPECT_TRUE(left.Finish());
    EXPECT_EQ(folder.Read("dial.svg"), "old");
  }
  EXPECT_EQ(folder.FileCount(), 1);
  for (const Lasting lasting : {Lasting::Redrawable, Lasting::Kept}) {
    folder.Write("dial.svg", "old");
    WriteOut(folder.NameOf("dial.svg"), lasting);
    EXPECT_EQ(folder.Read("dial.svg"), "new");
    EXPECT_EQ(folder.FileCount(), 1);
  }
}

TEST(OutputFile, SweepsWhatKilledRunsHaveLeft) {
  const TestFolder folder;
  const auto leave = [&](const std::string& name, std::chrono::minutes age) {
    folder.Write(name, "half");
    fs::last_write_time(folder.Path() / name, fs::file_time_type::clock::now() - age);
  };
  constexpr std::chrono::minutes old{90}, young{5};
  leave("dial.svg.4294967295.tmp", old);
  leave("dial.svg.7.tmp", young);  // another run may be at it
  for (const char* const others : {"dial.svg.7a.tmp", "dial.svg.tmp", "dial.svg..tmp", "other.svg.7.tmp",
                                   "dial.svg.7.tmp.bak", "dial.7.tmp"}) {
    leave(others, old);
  }
  const std::ptrdiff_t before = folder.FileCount();
  WriteOut(folder.NameOf("dial.svg"), Lasting::Kept);
  EXPECT_EQ(folder.FileCount(), before);  // one has gone, one has come
  EXPECT_FALSE(folder.Has("dial.svg.4294967295.tmp"));
  EXPECT_TRUE(folder.Has("dial.svg.7.tmp"));
}

// The disk refuses the second of two: the first is as it was, whether there was one or not.
TEST(OutputFile, IsTakenBackWhenAnotherCannotBeInItsPlace) {
  const TestFolder folder;
  for (const bool wasThere : {true, false}) {
    fs::remove(folder.Path() / "a.svg");
    if (wasThere) folder.Write("a.svg", "old");
    {
      OutputFile one(folder.NameOf("a.svg"), Lasting::Redrawable);
      OutputFile other(folder.NameOf("b.svg"), Lasting::Redrawable);
      one.Write("new");
      fs::create_directory(folder.Path() / "b.svg");
      one.KeepOld();
      other.KeepOld();
      ASSERT_TRUE(one.Commit());
      EXPECT_EQ(folder.Read("a.svg"), "new");
      EXPECT_FALSE(other.Commit());
      EXPECT_TRUE(one.TakeBack());
      EXPECT_TRUE(other.TakeBack());  // there is nothing to take back
    }
    EXPECT_EQ(folder.Has("a.svg"), wasThere);
    EXPECT_EQ(wasThere ? folder.Read("a.svg") : "", wasThere ? "old" : "");
    fs::remove(folder.Path() / "b.svg");
    EXPECT_EQ(folder.FileCount(), wasThere ? 1 : 0);
  }
}

#ifndef _WIN32
TEST(OutputFile, TakesNamesAsLongAsTheFileSystemDoes) {
  const TestFolder folder;
  std::string name(1, 'x');
  while (name.size() < 255) name += "é";
  WriteOut(folder.NameOf(name), Lasting::Kept);
  EXPECT_EQ(folder.Read(name), "new");
  EXPECT_EQ(folder.FileCount(), 1);
  EXPECT_FALSE(OutputFile(folder.NameOf(name + "x")).Commit());
}

TEST(OutputFile, IsNeverMoreReadableThanWhatItReplaces) {
  const TestFolder folder;
  folder.Write("dial.svg", "old");
  for (const fs::perms rights : {fs::perms{0600}, fs::perms{0640}, fs::perms{0666}}) {
    fs::permissions(folder.Path() / "dial.svg", rights);
    OutputFile file(folder.NameOf("dial.svg"));
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path())) {
      EXPECT_EQ(entry.status().permissions(), rights) << entry.path();
    }
    ASSERT_TRUE(file.Commit());
    EXPECT_EQ(fs::status(folder.Path() / "dial.svg").permissions(), rights);
  }
}

// The system's words count where the program has none of its own.
TEST(Files, TellWhatIsWrongWithThem) {
  const std::error_code rare = std::make_error_code(std::errc::too_many_files_open);
  EXPECT_EQ(FileFailure(rare).Words, rare.message());
  EXPECT_EQ(FileFailure(rare).Fault, FileFault::None);
  const Failure full = FileFailure(std::make_error_code(std::errc::no_space_on_device));
  EXPECT_EQ(full.Fault, FileFault::DiskIsFull);
  EXPECT_EQ(full.Words, "");
}

TEST(OutputFile, NamesOfOneFileHaveOneTarget) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "a");
  fs::create_directory_symlink("a", folder.Path() / "b");
  fs::create_symlink("a/dial.svg", folder.Path() / "link.svg");
  const fs::path target = TargetOf(folder.NameOf("a/dial.svg"));
  for (const char* const name : {"b/dial.svg", "./a/../b/dial.svg", "link.svg"}) {
    EXPECT_EQ(TargetOf(folder.NameOf(name)), target) << name;
  }
  EXPECT_NE(TargetOf(folder.NameOf("a/Dial.svg")), target);
}
#endif

}  // namespace
}  // namespace vaxel::test
