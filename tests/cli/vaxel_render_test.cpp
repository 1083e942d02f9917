// The program as its user meets it: outputs, messages, exit status, and what it leaves behind.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>

#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

const char* const Line = "Trait = 0, 0, 10, 0\n";

TEST_F(VaxelRender, WritesEveryFormat) {
  Write("dial.dat", Line);
  const Outcome outcome = Run("-o a.svg -o a.pdf -o a.png -o a.list dial");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_EQ(outcome.Printed, "");
  EXPECT_EQ(FileCount(), 5U);
  EXPECT_TRUE(Read("a.svg").starts_with("<svg "));
  EXPECT_TRUE(Read("a.pdf").starts_with("%PDF-"));
  // 300 pixels an inch are 11811 a metre.
  EXPECT_NE(Read("a.png").find(std::string("pHYs\0\0\x2E\x23\0\0\x2E\x23\1", 13)), std::string::npos);
  EXPECT_EQ(Read("a.list"),
            "page 1  200.000 x 200.000\nline 1  #000000 0.265  100.000,100.000 110.000,100.000\n");
  EXPECT_EQ(Run("--format list dial.dat").Printed, Read("a.list"));
  EXPECT_EQ(Run("- < dial.dat").Printed, Read("a.svg"));
}

TEST_F(VaxelRender, TellsTheTargetItsSize) {
  Write("dial.dat", Line);
  const auto list = [&](const std::string& options) {
    const std::string text = Run("--format list " + options + " dial.dat").Printed;
    return text.substr(7);
  };
  EXPECT_EQ(list("--area 100x50.5"),
            " 100.000 x 50.500\nline 1  #000000 0.265  50.000,25.250 60.000,25.250\n");
  EXPECT_EQ(list("--target printer --page a3"),
            " 297.000 x 420.000\nline 1  #000000 0.042  148.500,210.000 158.500,210.000\n");
  EXPECT_EQ(list("--target printer --page Letter --zoom 2"),
            " 215.900 x 279.400\nline 1  #000000 0.042  107.950,139.700 127.950,139.700\n");
  EXPECT_EQ(list("--zmm 1.5 --zoom 2 --dpi 254"),
            " 200.000 x 200.000\nline 1  #000000 0.100  100.000,100.000 130.000,100.000\n");
  Write("var.dat", "Trait = 0, 0, %Long, 0\n");
  EXPECT_EQ(Run("--format list -D Long=10 -D %b=1 var.dat").Printed.substr(7), list(""));
}

// Files hold strokes finer than the screen's pixel, and without the outline that a screen gives them.
TEST_F(VaxelRender, DrawsFineStrokes) {
  Write("fine.dat", "EpaisT = 0.01mm\nTrait = 0, 0, 10, 0\nTrait = 0, 0, 10, 0, 0.2mm§C\n");
  EXPECT_EQ(Run("--format list fine.dat").Printed,
            "page 1  200.000 x 200.000\nline 2  #000000 0.042  100.000,100.000 110.000,100.000\n"
            "polygon 3  #000000 0.000 fill #000000  100.000,100.100 100.000,99.900 110.000,99.900 "
            "110.000,100.100\n");
}

TEST_F(VaxelRender, MakesOneFileAPage) {
  Write("pages.dat", "X = 0,0,1\nNPage\nX = 0,0,2\n");
  EXPECT_EQ(Run("--target printer -o p.svg -o p.pdf pages.dat").Status, 0);
  EXPECT_NE(Read("p.svg").find("x1=\"104\""), std::string::npos);
  EXPECT_NE(Read("p-2.svg").find("x1=\"103\""), std::string::npos);
  const Outcome standard = Run("--target printer pages.dat");
  EXPECT_EQ(standard.Status, 2);
  EXPECT_NE(standard.Printed.find("2 pages"), std::string::npos);
}

TEST_F(VaxelRender, MakesTheSamePdfTwice) {
  Write("dial.dat", Line);
  for (const char* name : {"a", "b"})
    Run("-o " + std::string(name) + ".pdf dial.dat", "SOURCE_DATE_EPOCH=1700000000");
  EXPECT_EQ(Read("a.pdf"), Read("b.pdf"));
  EXPECT_NE(Read("a.pdf").find("20231114221320"), std::string::npos);
}

TEST_F(VaxelRender, SaysWhatIsWrongWithItsUse) {
  Write("dial.dat", Line);
  const std::array<std::pair<const char*, const char*>, 19> cases = {
      {{"", "SCRIPT"},
       {"dial.dat other.dat", "unknown argument: other.dat"},
       {"--zoom", "--zoom lacks its value"},
       {"--zoom 1 --zoom 2 dial.dat", "--zoom may be given only once"},
       {"--zoom '' dial.dat", "'' is not a number from above 0 to 1000"},
       {"-o '' dial.dat", "no file's name"},
       {"--area 10 dial.dat", "'10' is not a size"},
       {"--area 0x5 dial.dat", "'0x5' is not a size"},
       {"--page B9 dial.dat", "'B9' is not a size"},
       {"--zoom 0 dial.dat", "'0' is not a number"},
       {"--zmm -1 dial.dat", "'-1' is not a number"},
       {"--dpi x dial.dat", "'x' is not a number"},
       {"--language de dial.dat", "'de' is none of fr|en|es"},
       {"--target paper dial.dat", "'paper' is none of"},
       {"-o dial.gif dial.dat", "does not tell its format"},
       {"-o a.svg -o a.svg dial.dat", "given twice"},
       {"-D 3 dial.dat", "'3' is not NAME=VALUE"},
       {"-D 'a b=3' dial.dat", "is not NAME=VALUE"},
       {"--frobnicate dial.dat", "--frobnicate"}}};
  for (const auto& [arguments, message] : cases) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 2) << arguments;
    EXPECT_NE(outcome.Printed.find(message), std::string::npos) << arguments << ": " << outcome.Printed;
    EXPECT_TRUE(outcome.Printed.starts_with("vaxel-render: ")) << outcome.Printed;
  }
  EXPECT_EQ(FileCount(), 1U);
  EXPECT_EQ(Run("--version").Printed.substr(0, 13), "vaxel-render ");
  EXPECT_EQ(Run("--help").Status, 0);
}

TEST_F(VaxelRender, SaysWhatCannotBeRead) {
  Write("program", std::string("\x7F"
                               "ELF\0\0",
                               6));
  const std::array<std::pair<const char*, const char*>, 3> cases = {
      {{"missing.dat", "vaxel-render: cannot read missing.dat: there is no such file or folder\n"},
       {".", "vaxel-render: cannot read .: it is a folder\n"},
       {"program", "vaxel-render: program is not a text: it holds NUL characters\n"}}};
  for (const auto& [file, message] : cases) {
    const Outcome outcome = Run("-o a.svg " + std::string(file));
    EXPECT_EQ(outcome.Status, 3) << file;
    EXPECT_EQ(outcome.Printed, message);
  }
  EXPECT_FALSE(fs::exists(folder_ / "a.svg"));
}

TEST_F(VaxelRender, ReportsAFailedScriptAndKeepsTheOldDrawing) {
  Write("dial.dat", "X = 0,0,1\n\nX = 1/0\n");
  Write("a.svg", "old");
  const Outcome outcome = Run("-o a.svg -o a.pdf dial.dat");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Printed,
            "dial.dat:3: Error in the line: X = 1/0 of the file: dial.dat\n\nDivision by zero\n");
  EXPECT_EQ(Read("a.svg"), "old");
  EXPECT_EQ(FileCount(), 2U);
  EXPECT_EQ(Run("--language en - < dial.dat").Printed,
            "<stdin>:3: Error in the line: X = 1/0 of the file: unsaved script\n\nDivision by zero\n");
  // What fails on paper alone leaves no drawing for the screen either.
  Write("paper.dat", "FormatI = A4\n");
  EXPECT_EQ(Run("-o b.svg -o b.pdf paper.dat").Status, 1);
  EXPECT_FALSE(fs::exists(folder_ / "b.svg"));
  Write("comment.dat", "EpaisT = 2\nEpaisT\n");
  EXPECT_EQ(Run("-o b.svg comment.dat").Printed, "comment.dat:2: '  2 pixels, 0.53mm\n");
}

TEST_F(VaxelRender, SaysWhatCannotBeWrittenAndLeavesNothingHalfWritten) {
  Write("dial.dat", Line);
  const std::array<std::pair<const char*, const char*>, 5> cases = {
      {{"-o /dev/full --format svg", "the disk is full"},
       {"-o /dev/full --format pdf", "the disk is full"},
       {"-o none/a.svg", "there is no such file or folder"},
       {"-o dial.dat/a.svg", "there is no such file or folder"},
       {"-o . --format svg", "it is a folder"}}};
  for (const auto& [output, message] : cases) {
    const Outcome outcome = Run(std::string(output) + " dial.dat");
    EXPECT_EQ(outcome.Status, 3) << output;
    EXPECT_NE(outcome.Printed.find(message), std::string::npos) << output << ": " << outcome.Printed;
  }
  EXPECT_EQ(FileCount(), 1U);
  // Where no file may grow beyond 2 kB, a drawing of more is refused and the old one stays.
  std::string many;
  for (int i = 0; i < 100; ++i) many += Line;
  Write("many.dat", many);
  Write("a.svg", "old");
  EXPECT_EQ(Run("-o a.svg many.dat", "ulimit -f 2; trap '' XFSZ;").Status, 3);
  EXPECT_EQ(Read("a.svg"), "old");
  EXPECT_EQ(FileCount(), 3U);
  EXPECT_EQ(Run("--dpi 20000 -o big.png dial.dat").Status, 3);
}

TEST_F(VaxelRender, SaysWhyAPictureCannotBeDrawn) {
  const auto picture = [](const char* name) {
    std::ifstream file(fs::path(VAXEL_SOURCE_DIR) / "tests/pictures" / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  const auto changed = [&](const char* name, std::size_t at, std::string_view bytes) {
    return picture(name).replace(at, bytes.size(), bytes);
  };
  const std::size_t pngData = picture("clear.png").find("IDAT") + 4;
  const char* const damaged = "The picture is incomplete or damaged";
  const char* const foreign = "Not a BMP, GIF, JPEG or PNG picture";
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"text.png", Line, foreign},
      // Cut in its packed pixels, before the first rows are whole.
      {"end.jpg", picture("photo.jpg").substr(0, picture("photo.jpg").size() - 50), damaged},
      // A byte in the middle of the packed pixels.
      {"bad.png", changed("clear.png", pngData + 10, "~"), "The picture is damaged"},
      {"none.jpg", changed("photo.jpg", picture("photo.jpg").find("\xFF\xC0") + 5, {"\0\0\0\0", 4}),
       foreign}};
  const auto expectRefused = [&](const std::string& name, const std::string& reason,
                                 const std::string& more = {}) {
    const std::string command = "Image = " + name + ", 0, 0";
    Write("dial.dat", Line + command + "\n");
    const Outcome outcome = Run("-o a.svg -o a.pdf -o a.png dial.dat");
    EXPECT_EQ(outcome.Status, 1) << name;
    EXPECT_EQ(outcome.Printed, "dial.dat:2: Error in the line: " + command + " of the file: dial.dat\n\n" +
                                   reason + ": " + name + "\n" + more);
    for (const char* output : {"a.svg", "a.pdf", "a.png"}) EXPECT_FALSE(fs::exists(folder_ / output)) << name;
  };
  for (const auto& [name, bytes, reason] : cases) {
    Write(name, bytes);
    expectRefused(name, reason);
  }
  const std::string looked = "Looked for in the folder " + folder_.string() + "\n";
  expectRefused("missing.png", "File not found", looked);
  fs::create_directory(folder_ / "folder.png");
  expectRefused("folder.png", "File not found", looked);
}

TEST_F(VaxelRender, DoesNotReadAPictureWithoutEnd) {
  constexpr std::uintmax_t megabyte = 1'000'000, size = 1000 * megabyte;
  Write("long.gif", "GIF89a");
  fs::resize_file(folder_ / "long.gif", size);  // takes no room on the disk
  Write("dial.dat", "Image = long.gif, 0, 0\n");
  const Outcome outcome = Run("-o a.svg dial.dat");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_NE(
      outcome.Printed.find("File of more than 100 MB, with those that are read at the same time: long.gif\n"),
      std::string::npos)
      << outcome.Printed;
  // The largest of all programs that this one has run and waited for.
  rusage usage{};
  ASSERT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  EXPECT_LT(usage.ru_maxrss * 1024, size);
}

TEST_F(VaxelRender, WritesThroughLinksAndKeepsPermissions) {
  Write("dial.dat", Line);
  fs::create_symlink("real.svg", folder_ / "link.svg");
  EXPECT_EQ(Run("-o link.svg dial.dat").Status, 0);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.svg"));
  EXPECT_TRUE(Read("real.svg").starts_with("<svg "));
  fs::permissions(folder_ / "real.svg", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(Run("-o link.svg dial.dat").Status, 0);
  EXPECT_EQ(fs::status(folder_ / "real.svg").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  Write("dial.txt", Line);
  EXPECT_EQ(Run("-o dial.txt dial.txt").Printed,
            "vaxel-render: -o dial.txt would overwrite dial.txt, the script\n");
  EXPECT_EQ(Read("dial.txt"), Line);
}

TEST_F(VaxelRender, TakesHugeAndBrokenScripts) {
  struct Case {
    std::string Script;
    int Status;
    const char* Message;
  };
  const std::string comments = "' " + std::string(998, 'x') + "\n";
  std::string large = Line;
  while (large.size() < 50'000'000) large += comments;
  const Case cases[] = {{"", 0, "the script is empty"},
                        {large + Line, 0, ""},
                        {"Trait = 0, 0, " + std::string(10'000'000, '1') + ", 0", 1, "Overflow"},
                        {"Trait = 0, 0, 1" + std::string(10'000'000, ' ') + ", 0", 0, ""},
                        {"X = 0, 0, " + std::string(100'000, '('), 1, "Parentheses nested"},
                        {"Couleur = Rouge \xE9\xFF\x80\n" + std::string(Line), 0, ""},
                        {"Arc = 0, 90, 50\nGrad = 1E9, 5", 1, "Overflow"},
                        {std::string(1'000'000, '%'), 1, "Unknown variable"},
                        {"\xFF\xFE", 0, "the script is empty"}};
  for (const Case& c : cases) {
    Write("dial.dat", c.Script);
    const Outcome outcome = Run("-o a.svg dial.dat");
    const std::string shown = c.Script.substr(0, 30);
    EXPECT_EQ(outcome.Status, c.Status) << shown;
    EXPECT_NE(outcome.Printed.find(c.Message), std::string::npos)
        << shown << ": " << outcome.Printed.substr(0, 500);
    EXPECT_LT(outcome.Printed.size(), 1000U) << shown;
  }
}

TEST_F(VaxelRender, SaysWhatIsWrongWithATextInFewWords) {
  const std::string megabyte = [] {
    std::string text;
    while (text.size() < 1'000'000) text += "Ab é";
    return text;
  }();
  const std::pair<std::string, const char*> cases[] = {
      {"TailleP = 1E9\nTexte = 0,0,,,x", "dial.dat:2: "},
      {"Texte = 0,0,,*1E308,x", "Overflow"},
      {"Texte = 0,0,,,\x1B[2J\xC2\x9B%Nix", "\\x1b[2J\\x9b%Nix"},
      {"Texte = 0,0,,," + megabyte, "Overflow"},
      {"Police = " + megabyte + "\nTexte = 0,0,,Q,x", ": Q\n"}};
  for (const auto& [script, message] : cases) {
    Write("dial.dat", script);
    const Outcome outcome = Run("-o a.svg -o a.pdf dial.dat");
    const std::string what = script.substr(0, 40) + ": " + outcome.Printed.substr(0, 1000);
    EXPECT_EQ(outcome.Status, 1) << what;
    EXPECT_NE(outcome.Printed.find(message), std::string::npos) << what;
    EXPECT_LT(outcome.Printed.size(), 1000U) << what;
    EXPECT_FALSE(fs::exists(folder_ / "a.svg")) << what;
  }
}

TEST_F(VaxelRender, MakesValidFilesOfBadTexts) {
  std::string bad =
      "Police = A\"r<i>&\\ al\n"
      "Texte = 0,0,,,a\x01\x0B\x1B[31mb\x7F\xC2\x85\xE2\x80\xA8\xEF\xBF\xBE\xF0\x9F\xBF\xBE\xEF\xB7\x90\tc\n"
      "Texte = 0,10,,,=<\"&]]>'--\n"
      "Texte = 0,20,,R1E300,x\n"
      "TexteC = 0,0,1E-300,0,,,x\n"
      "Texte = 0,30,,V,a\xCC\x81\xE2\x80\xAE"
      "b\n"
      "Texte = 0,40,,*1E-9,x\n"
      "Texte = 0,50,,*0.005,";
  while (bad.size() < 1'000'000) bad += "Ab é";
  // UTF-16 with a surrogate of the second kind, one of the first, a pair, and one of the first at the end.
  std::string wide = "\xFF\xFE";
  for (char16_t unit : std::u16string(u"Texte = 0,0,,,a\xDC00"
                                      u"b\xD800"
                                      u"c\xD83D\xDE00\xFFFE"
                                      u"d\xD83D")) {
    wide += static_cast<char>(unit & 0xFF);
    wide += static_cast<char>(unit >> 8);
  }
  const std::pair<std::string, const char*> cases[] = {{bad, ">a[31mb c</text>"},
                                                       {wide, ">a\uFFFDb\uFFFDc\U0001F600d\uFFFD</text>"}};
  for (const auto& [script, content] : cases) {
    Write("dial.dat", script);
    EXPECT_EQ(Run("-o a.svg -o a.pdf -o a.png dial.dat").Status, 0) << content;
    EXPECT_NE(Read("a.svg").find(content), std::string::npos) << content;
    for (const char* check : {"xmllint --noout --huge a.svg", "qpdf --check a.pdf",
                              "pdftocairo -r 20 -png -singlefile a.pdf b && test -s b.png"}) {
      EXPECT_EQ(Shell(check), 0) << check << ": " << content;
    }
  }
}

TEST_F(VaxelRender, TellsOnceOfAFontThatIsNotThere) {
  Write("dial.dat",
        "Texte = 0,0,,,a\nPolice = Nosuchfont\nTexte = 0,10,,,b\nPolice = Arial\nPolice = NOSUCHFONT\n"
        "Texte = 0,20,,G,c\n");
  const Outcome outcome = Run("-o a.svg -o a.pdf -o a.png dial.dat");
  EXPECT_EQ(outcome.Status, 0);
  const std::string message = "dial.dat:2: notice: the font Nosuchfont is missing, replaced by ";
  ASSERT_TRUE(outcome.Printed.starts_with(message)) << outcome.Printed;
  EXPECT_EQ(outcome.Printed.find('\n'), outcome.Printed.size() - 1) << outcome.Printed;
  // What is said to be used is what the PDF holds.
  std::string used = outcome.Printed.substr(message.size());
  std::erase_if(used, [](char c) { return c == ' ' || c == '\n'; });
  EXPECT_EQ(Shell("pdffonts a.pdf | grep -F '+" + used + "'"), 0) << used;

  std::string standard;
  for (const char* name : {"Arial", "Courier New", "times new roman"}) {
    standard += "Police = " + std::string(name) + "\nTexte = 0,0,,,a\nTexte = 0,0,,GI,10⁻³ ∞\n";
  }
  Write("dial.dat", standard);
  EXPECT_EQ(Run("-o a.svg -o a.pdf -o a.png dial.dat").Printed, "");
}

TEST_F(VaxelRender, GivesAScriptItsVariables) {
  fs::create_directory(folder_ / "sub");
  Write("sub/dial.dat", "ListeVar = ici\n%Name = %FILE %PATH %FIL1\nTexte = 0, 0, , , %Name %date %R\n");
  const std::string folder = fs::canonical(folder_ / "sub").string() + "/";
  const Outcome outcome = Run("-D R=2*3 --format list sub/dial.dat", "LC_ALL=C SOURCE_DATE_EPOCH=1700000000");
  EXPECT_EQ(outcome.Status, 0);
  // The box is answered with OK. 1,700,000,000 seconds after 1970 it was the 14th of November 2023.
  EXPECT_NE(outcome.Printed.find(
                "sub/dial.dat:1: Vaxel        ListeVar (n=1)    ici\n%iRec\t= 1\t%Date\t= 2023-11-14\n"),
            std::string::npos)
      << outcome.Printed;
  EXPECT_NE(outcome.Printed.find(": " + folder + "dial.dat " + folder + " dial.dat 2023-11-14 2*3\n"),
            std::string::npos)
      << outcome.Printed;
  EXPECT_EQ(Run("-D zoom=2 sub/dial.dat").Status, 2);
}

TEST_F(VaxelRender, LoadsPangoOnlyForWhatTheStandardFacesLack) {
  const fs::path copies = folder_ / "bin";
  fs::create_directory(copies);
  for (const char* name : {"vaxel-render", "vaxel-cairo.so"}) fs::copy(Programs / name, copies / name);
  const auto run = [&](const std::string& text) {
    Write("dial.dat", "Texte = 0,0,,," + text + "\n");
    return Run("-o a.svg -o a.pdf -o a.png dial.dat", "", copies / "vaxel-render");
  };
  const Outcome standard = run("12 µA ± 0.5 °C");
  EXPECT_EQ(standard.Status, 0) << standard.Printed;
  EXPECT_TRUE(Read("a.pdf").starts_with("%PDF-"));
  fs::remove(folder_ / "a.pdf");
  const Outcome other = run("漢字");
  EXPECT_EQ(other.Status, 3);
  EXPECT_NE(other.Printed.find("cannot write a.pdf: "), std::string::npos) << other.Printed;
  EXPECT_NE(other.Printed.find("vaxel-pango.so"), std::string::npos) << other.Printed;
  EXPECT_FALSE(fs::exists(folder_ / "a.pdf"));
}

}  // namespace
}  // namespace vaxel::test
