// What vaxel-render promises of its files: all outputs or none, nothing left behind, nothing read that may
// not be.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

TEST_F(VaxelRender, RefusesOutputsThatWouldMeet) {
  Write("dial.dat", "X = 0,0,1\nNPage\nX = 0,0,2\n");
  Write("one.dat", "X = 0,0,1\n");
  fs::create_directory(folder_ / "sub");
  fs::create_directory_symlink("sub", folder_ / "link");
  Write("a.svg", "old");
  const std::size_t before = FileCount();
  const std::pair<const char*, const char*> cases[] = {
      {"-o a.svg -o ./sub/../a.svg one.dat", "-o a.svg and -o ./sub/../a.svg"},
      {"-o sub/b.pdf -o link/b.pdf one.dat", "-o sub/b.pdf and -o link/b.pdf"},
      {"--target printer -o c.svg -o c-2.svg dial.dat", "-o c.svg and -o c-2.svg"},
      {"--target printer -o c.svg -o c.png -o c-2.png dial.dat", "-o c.png and -o c-2.png"}};
  for (const auto& [arguments, names] : cases) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 2) << arguments;
    EXPECT_EQ(outcome.Printed, "vaxel-render: " + std::string(names) + " would write the same file\n");
  }
  EXPECT_EQ(FileCount(), before);
  EXPECT_EQ(Read("a.svg"), "old");
  // A device takes any number.
  fs::create_symlink("/dev/null", folder_ / "null");
  EXPECT_EQ(Run("-o /dev/null --format svg -o null one.dat").Status, 0);
}

// Whoever draws, wherever, in whatever language: the bytes are the same. Fonts of the user's own choice are
// for PDF and PNG alone.
TEST_F(VaxelRender, DrawsTheSameInAnySurroundings) {
  fs::create_directories(folder_ / "home/fontconfig");
  Write("home/fontconfig/fonts.conf",
        "<?xml version='1.0'?><fontconfig><match target='pattern'><edit name='family' mode='assign'>"
        "<string>monospace</string></edit></match></fontconfig>");
  for (const std::string name : {"vu-meter", "front-panel"}) {
    const auto draw = [&](const std::string& output, const std::string& surroundings) {
      std::string arguments = "'" + std::string(VAXEL_SOURCE_DIR) + "/examples/" + name + ".dat'";
      for (const char* kind : {"list", "svg", "pdf", "png"})
        arguments += " -o '" + (folder_ / output).string() + "." + kind + "'";
      const Outcome outcome = Run(arguments, "export SOURCE_DATE_EPOCH=1700000000; " + surroundings);
      EXPECT_EQ(outcome.Status, 0) << surroundings << ": " << outcome.Printed;
    };
    draw("here", "LC_ALL=C TZ=UTC");
    draw("there",
         "umask 077; cd /; LC_ALL=fr_FR.UTF-8 LANGUAGE=fr TZ=Asia/Tokyo HOME=/nonexistent TMPDIR=/none");
    draw("fonts", "XDG_CONFIG_HOME=\"$PWD/home\"");
    for (const std::string kind : {"list", "svg", "pdf", "png"}) {
      const std::string here = Read("here." + kind);
      EXPECT_GT(here.size(), 2000U) << name << "." << kind;
      EXPECT_TRUE(here == Read("there." + kind)) << name << "." << kind;
      EXPECT_EQ(here == Read("fonts." + kind), kind == "list" || kind == "svg") << name << "." << kind;
    }
  }
}

TEST_F(VaxelRender, WritesAllOutputsOrNone) {
  Write("dial.dat", "X = 0,0,1\n");
  Write("a.svg", "old");
  Write("b.svg", "old");
  fs::create_directory(folder_ / "c.svg");
  for (const char* const last : {"none/d.svg", "c.svg", "/dev/full"}) {
    EXPECT_EQ(Run("--format svg -o a.svg -o b.svg -o " + std::string(last) + " dial.dat").Status, 3) << last;
    EXPECT_EQ(Read("a.svg") + Read("b.svg"), "oldold") << last;
  }
  EXPECT_EQ(FileCount(), 4U);
  EXPECT_EQ(Run("-o a.svg -o b.svg dial.dat").Status, 0);
  EXPECT_EQ(Read("a.svg"), Read("b.svg"));
  EXPECT_NE(Read("a.svg"), "old");
}

// An output that nobody takes from a pipe: the writing of it, as a library's work, cannot ask.
TEST_F(VaxelRender, LeavesNoTemporaryFileHoweverItIsEnded) {
  Write("dial.dat", "X = 0,0,1\n");
  // Who runs the tests may have hang-ups ignored.
  const std::string program = "env --default-signal=HUP '" + (Programs / "vaxel-render").string() + "'";
  const std::string begin =
      "rm -f pipe; mkfifo pipe; " + program + " -o a.svg -o a.pdf --format svg -o pipe ";
  const std::string awaited =
      "dial.dat & for i in $(seq 1000); do ls a.pdf.*.tmp 2>&- && break; sleep 0.01; done; ";
  const std::pair<std::string, int> cases[] = {{begin + awaited + "kill -TERM $!; wait $!", 128 + 15},
                                               {begin + awaited + "kill -HUP $!; wait $!", 128 + 1},
                                               {begin + awaited + "kill -INT $!; wait $!", 130},
                                               {begin + "--max-seconds 0.5 " + awaited + "wait $!", 1}};
  for (const auto& [command, status] : cases) {
    Write("a.svg", "old");
    EXPECT_EQ(WEXITSTATUS(Shell(command)), status) << Read("log");
    EXPECT_EQ(Read("a.svg"), "old");
    EXPECT_EQ(FileCount(), 4U) << command;  // the script, the old drawing, the pipe and the log
  }
  EXPECT_NE(Read("log").find("The time allowed is up"), std::string::npos) << Read("log");
}

// While a pipe is waited for, in the place of the second file comes a folder.
TEST_F(VaxelRender, PutsBackWhatIsInItsPlaceAlready) {
  Write("dial.dat", "X = 0,0,1\n");
  Write("a.svg", "old");
  const std::string command =
      "mkfifo pipe; '" + (Programs / "vaxel-render").string() +
      "' --language en --format svg -o a.svg -o b.svg -o c.svg -o pipe dial.dat 2>said & "
      "for i in $(seq 1000); do ls c.svg.*.tmp 2>&- && break; sleep 0.01; done; "
      "mkdir c.svg; cat pipe >/dev/null; wait $!";
  EXPECT_EQ(WEXITSTATUS(Shell(command)), 3);
  EXPECT_EQ(Read("a.svg"), "old");
  EXPECT_EQ(Read("said"), "vaxel-render: cannot write c.svg: it is a folder\n");
  EXPECT_EQ(FileCount(), 6U);  // the script, the old drawing, the folder, the pipe, what was said and the log
}

// Where there is memory enough a fault is what it is.
TEST_F(VaxelRender, TellsWhenTheFontLibraryHasNoMemory) {
  Write("dial.dat", "Texte = 0,0,,,漢\n");
  Write("a.svg", "old");
  fs::create_directory(folder_ / "bin");
  const fs::path program = folder_ / "bin/vaxel-render";
  fs::create_hard_link(Programs / "vaxel-render", program);
  fs::create_symlink(Programs / "failing-pango.so", folder_ / "bin/vaxel-pango.so");
  for (const std::string how : {"abort", "fall", "alone"}) {
    const bool isTold = how != "alone";
    const Outcome outcome = Run("--language en -o a.svg dial.dat", "VAXEL_TEST_FALL=" + how, program);
    EXPECT_EQ(outcome.Status == 3, isTold) << how << outcome.Printed;
    EXPECT_EQ(outcome.Printed == "vaxel-render: the font library could not go on: out of memory?\n", isTold);
    EXPECT_EQ(Read("a.svg"), "old");
    EXPECT_EQ(FileCount(), 3U);
  }
}

// The picture is a good one.
TEST_F(VaxelRender, TellsThatItCannotReadPicturesHere) {
  fs::copy_file(fs::path(VAXEL_SOURCE_DIR) / "tests/pictures/photo.jpg", folder_ / "photo.jpg");
  Write("dial.dat", "Image = photo.jpg\n");
  fs::create_directory(folder_ / "bin");
  const fs::path program = folder_ / "bin/vaxel-render";
  fs::create_hard_link(Programs / "vaxel-render", program);
  const Outcome outcome = Run("--language en -o a.svg dial.dat", "", program);
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_NE(outcome.Printed.find("The picture photo.jpg cannot be read here: "), std::string::npos);
  EXPECT_NE(outcome.Printed.find("vaxel-pixbuf.so"), std::string::npos) << outcome.Printed;
  EXPECT_EQ(Read("a.svg"), "");
}

TEST_F(VaxelRender, ReadsOnlyWhatItMay) {
  fs::create_directory(folder_ / "sub");
  Write("data.txt", "1\n");
  Write("sub/data.txt", "1\n");
  Write("sub/dial.dat", "Open = data.txt\n");
  Write("sub/above.dat", "Open = ../data.txt\n");
  Write("sub/server.dat", "Image = \\\\server\\share\\a.png\n");
  const auto reason = [&](const std::string& arguments) {
    const std::string printed = Run("--format list -o /dev/null " + arguments).Printed;
    return printed.empty() ? printed : printed.substr(printed.find("\n\n") + 2);
  };
  EXPECT_EQ(reason("sub/above.dat"), "");
  EXPECT_EQ(reason("--root sub sub/dial.dat"), "");
  EXPECT_EQ(reason("--root sub sub/above.dat"),
            "The file cannot be read: ../data.txt (outside of the folder that --root allows)\n");
  EXPECT_EQ(reason("--no-files sub/dial.dat"),
            "The file cannot be read: data.txt (--no-files allows no file to be read)\n");
  EXPECT_NE(reason("sub/server.dat").find("a server would learn who you are"), std::string::npos);
  EXPECT_EQ(reason("--allow-network sub/server.dat"), "File not found: \\\\server\\share\\a.png\n");
  const Outcome none = Run("--root none sub/dial.dat");
  EXPECT_EQ(none.Status, 2);
  EXPECT_EQ(none.Printed,
            "vaxel-render: --root: 'none' is not a folder\nvaxel-render --help lists the options\n");
}

}  // namespace
}  // namespace vaxel::test
