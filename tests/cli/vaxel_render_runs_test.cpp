// Scripts that are programs, as the user of vaxel-render meets them: other files, questions, endless runs.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

// The texts in a display list, each in brackets; the blank that is written before the first text is none.
std::string TextsOf(std::string_view list) {
  constexpr std::string_view font = "Times New Roman: ";
  std::string texts;
  for (std::size_t at = 0; (at = list.find(font, at)) != std::string_view::npos;) {
    at += font.size();
    const std::string_view text = list.substr(at, list.find('\n', at) - at);
    if (text != " ") texts += "[" + std::string(text) + "]";
  }
  return texts;
}

std::function<bool(const std::string&)> Shown(std::string text) {
  return [text = std::move(text)](const std::string& printed) {
    return printed.find(text) != std::string::npos;
  };
}

const char* const CtrlC = "\x03";
const char* const CtrlD = "\x04";

TEST_F(VaxelRender, FindsIncludedFilesHoweverTheyAreSpelled) {
  fs::create_directories(folder_ / "Lib" / "Pièces");
  Write("Lib/Frame.dat", "Fichier = Pièces\\mark, , , %1\nFichier = ../top, , , %1");
  Write("Lib/Pièces/Mark.DAT", "Texte = 0,0,,,Mark %1 %Fil1");
  Write("top.dat", "Texte = 0,0,,,Top %1");
  Write(
      "dial.dat",
      "Fichier = lib\\frame, , , 1\nFichier = LIB/FRAME.DAT, , , 2\nFichier = Lib\\PIÈCES/mark.dat, , , 3\n");
  const std::string expected = "[Mark 1 Mark.DAT][Top 1][Mark 2 Mark.DAT][Top 2][Mark 3 Mark.DAT]";
  const Outcome beside = Run("--format list dial.dat");
  EXPECT_EQ(TextsOf(beside.Printed), expected) << beside.Printed;
  // They are beside the file that names them, wherever the program is run.
  fs::create_directory(folder_ / "other");
  EXPECT_EQ(TextsOf(Run("--format list -o - '" + (folder_ / "dial").string() + "'", "cd other &&").Printed),
            expected);
  // Of two that differ in case alone the one that is meant.
  Write("Lib/frame.dat", "Texte = 0,0,,,small");
  EXPECT_EQ(TextsOf(Run("--format list dial.dat").Printed).substr(0, 7), "[small]");
}

TEST_F(VaxelRender, NamesTheLineThatCannotInclude) {
  fs::create_directory(folder_ / "folder");
  Write("binary.dat", std::string("X = 0,0,1\0", 10));
  Write("piece.dat", "Texte = 0,0,,,%32");
  std::string parameters = "Fichier = piece, 0, 0";
  for (int i = 1; i <= 32; ++i) parameters += ", " + std::to_string(i);
  const std::string looked = "\nLooked for in the folder " + folder_.string();
  const std::pair<std::string, std::string> cases[] = {
      {"Fichier = folder", "File not found: folder" + looked},
      {"Fichier = folder/", "File not found: folder/" + looked + "/folder"},
      {"Fichier = /dev/zero", "File not found: /dev/zero"},
      {"Fichier = binary", "This file is not a text: binary"},
      {parameters + ", 33", "A script cannot have more than 32 variables"},
      {"Open = folder", "File not found: folder" + looked},
      {"Open = binary.dat", "This file is not a text: binary.dat"}};
  for (const auto& [line, reason] : cases) {
    Write("dial.dat", "' c\n" + line + "\n");
    const Outcome outcome = Run("-o a.svg dial.dat </dev/null");
    EXPECT_EQ(outcome.Status, 1) << line;
    EXPECT_EQ(outcome.Printed,
              "dial.dat:2: Error in the line: " + line + " of the file: dial.dat\n\n" + reason + "\n");
  }
  Write("dial.dat", parameters);
  EXPECT_EQ(TextsOf(Run("--format list dial.dat").Printed), "[32]");
}

TEST_F(VaxelRender, EndsOrLeavesOutWhatIsIncludedTooDeep) {
  Write("self.dat", "Fichier = self\nTexte = 0,0,,,%iRec\n");
  const Outcome ended = Run("-o a.svg self.dat");
  EXPECT_EQ(ended.Status, 1);
  EXPECT_EQ(ended.Printed.rfind("self.dat:1: The maximum number of nested file calls is 5", 0), 0U)
      << ended.Printed;
  EXPECT_NE(ended.Printed.find("call itself"), std::string::npos) << ended.Printed;
  EXPECT_FALSE(fs::exists(folder_ / "a.svg"));
  const Outcome leftOut = Run("--format list --on-depth cancel self.dat");
  EXPECT_EQ(leftOut.Status, 0);
  EXPECT_EQ(TextsOf(leftOut.Printed), "[5][4][3][2][1]");
  // Five files in a row are as deep as six, but none is to blame itself.
  for (int i = 1; i <= 6; ++i) {
    Write("f" + std::to_string(i) + ".dat", "Fichier = f" + std::to_string(i + 1));
  }
  const Outcome row = Run("f1.dat");
  EXPECT_EQ(row.Status, 1);
  EXPECT_EQ(row.Printed.rfind("f5.dat:1: ", 0), 0U) << row.Printed;
  EXPECT_EQ(row.Printed.find("call itself"), std::string::npos) << row.Printed;
}

TEST_F(VaxelRender, AnswersInOrderAndTheSameForEveryTarget) {
  Write("dial.dat",
        "Input = Rayon ?, %R\nInput ==Calcul,%C\nInput =< Texte, %T\n"
        "Trait = 0, 0, %R, 0\nTexte = 0,0,,,%C\nTexte = 0,-20,,,%T\n");
  const std::string answers = "--answer 4 --answer '%R*2' --answer 'a, §b' dial.dat";
  EXPECT_EQ(Run("-o a.svg -o a.pdf -o a.list " + answers).Printed, "");
  const std::string screen = Read("a.list");
  EXPECT_NE(screen.find("100.000,100.000 104.000,100.000"), std::string::npos) << screen;
  EXPECT_EQ(Shell("pdftotext a.pdf text && grep -x 8 text"), 0);
  EXPECT_NE(Read("a.svg").find(">8</text>"), std::string::npos);
  const Outcome few = Run("-o b.svg --answer 4 dial.dat </dev/null");
  EXPECT_EQ(few.Status, 1);
  EXPECT_NE(few.Printed.find("dial.dat:2: "), std::string::npos) << few.Printed;
  EXPECT_NE(few.Printed.find("A question without an answer: Calcul\n"), std::string::npos) << few.Printed;
  // A script on standard input must not take its own lines for answers.
  EXPECT_EQ(Run("- < dial.dat").Status, 1);
}

// Nobody is there to be asked again.
TEST_F(VaxelRender, TakesOfAnAnswerWhatItBeginsWith) {
  Write("dial.dat", "Input == Rayon, %R\nTrait = 0, 0, %R, 0\n");
  const Outcome cut = Run("-o a.list --answer '12 mm' dial.dat");
  EXPECT_EQ(cut.Status, 0);
  EXPECT_EQ(cut.Printed,
            "dial.dat:1: notice: the answer is not an expression, only its beginning counts, 12: 12 mm\n");
  EXPECT_NE(Read("a.list").find("112.000,100.000"), std::string::npos);
  const Outcome empty = Run("-o a.list --answer '' dial.dat");
  EXPECT_EQ(empty.Status, 1);
  EXPECT_NE(empty.Printed.find("The answer is empty"), std::string::npos) << empty.Printed;
  // For a text an empty answer is one.
  Write("text.dat", "Input = Nom, %N\nIFT %N = THEN Trait = 0, 0, 3, 0\n");
  EXPECT_EQ(Run("-o t.list --answer '' text.dat").Printed, "");
  EXPECT_NE(Read("t.list").find("103.000,100.000"), std::string::npos);
}

TEST_F(VaxelRender, AsksOnATerminal) {
  Write("dial.dat", "%B = 7\nInput = Rayon ?, %R\nInput = Autre, %B\nTexte = 0,0,,,%R-%B\nInput = Nom, %N\n");
  const Outcome given = RunOnTerminal(
      "-o a.list -o a.pdf dial.dat",
      {{Shown("Rayon ?\r\n"), "3\n"}, {Shown("Autre [7]\r\n"), "\n"}, {Shown("Nom\r\n"), "é x\n"}});
  EXPECT_EQ(given.Status, 0) << given.Printed;
  EXPECT_EQ(TextsOf(Read("a.list")), "[3-7]");
  EXPECT_TRUE(Read("a.pdf").starts_with("%PDF-"));
  EXPECT_EQ(given.Printed.find("Rayon", given.Printed.find("Rayon") + 1), std::string::npos) << given.Printed;
  // The end of the input is Cancel: the run ends there, with what is drawn so far.
  const Outcome cancelled =
      RunOnTerminal("-o b.list -o b.pdf --answer 3 --answer 4 dial.dat", {{Shown("Nom\r\n"), CtrlD}});
  EXPECT_EQ(cancelled.Status, 0) << cancelled.Printed;
  EXPECT_EQ(cancelled.Printed.find("Nom"), cancelled.Printed.rfind("Nom")) << cancelled.Printed;
  EXPECT_EQ(TextsOf(Read("b.list")), "[3-4]");
  const Outcome interrupted = RunOnTerminal("-o c.list dial.dat", {{Shown("Rayon ?\r\n"), CtrlC}});
  EXPECT_EQ(interrupted.Status, 130) << interrupted.Printed;
  EXPECT_FALSE(fs::exists(folder_ / "c.list"));
}

TEST_F(VaxelRender, CtrlCLeavesNothingHalfWritten) {
  Write("a.svg", "old");
  // What is printed tells that the program is on its way.
  Write("dial.dat", "EpaisT = 2\nEpaisT\nDebut:\nX = 0,0,1\nNPage\nGoto Debut\n");
  const Outcome looping = RunOnTerminal("-o a.svg dial.dat", {{Shown("dial.dat:2: "), CtrlC}});
  EXPECT_EQ(looping.Status, 130) << looping.Printed;
  // While a file is being written.
  Write("dial.dat", "Trait = 0, 0, 10000, 0, §§0.01\n");
  const auto isWriting = [&](const std::string&) { return FileCount() > 2; };
  const Outcome writing = RunOnTerminal("-o a.svg dial.dat", {{isWriting, CtrlC}});
  EXPECT_EQ(writing.Status, 130) << writing.Printed;
  EXPECT_EQ(FileCount(), 2U);
  EXPECT_EQ(Read("a.svg"), "old");
}

TEST_F(VaxelRender, EndsEndlessRunsInTime) {
  std::string many;
  for (int i = 0; i < 1000; ++i) many += "Fichier = piece\n";
  Write("piece.dat", many);
  Write("again.dat", "%A = 1\nA:\nIF %A = 1 GOTO A\n");
  const std::pair<std::string, const char*> cases[] = {
      // Lines between the jumps are work, too: the time may be up in them.
      {"A:\nX = 0,0,0\nGoto A\n", "dial.dat:"},
      {"%I == 0\nA: ' why\n%I == %I+1\nIF %I > 0 GOTO A\n", "dial.dat:"},
      {"\n%I = 1\nIFT %I = 1 THEN Goto 2\n", "dial.dat:3: "},
      {"%Ligne = 3\n' c\nGoto = %Ligne\n", "dial.dat:3: "},
      {"%Saut = Goto 2\n%Saut\n", "dial.dat:2: "},
      {"Fichier = again\n", "again.dat:3: "},
      // Without a jump.
      {many, "piece.dat:"}};
  for (const auto& [script, line] : cases) {
    Write("dial.dat", script);
    Write("a.svg", "old");
    const Outcome outcome =
        Run("--on-depth cancel --max-seconds 0.2 -o a.svg dial.dat 2>&1 | tail -n 20; "
            "exit ${PIPESTATUS:-1}");
    EXPECT_NE(outcome.Printed.find(line), std::string::npos) << script << outcome.Printed;
    EXPECT_NE(outcome.Printed.find("\nThe time allowed is up\n"), std::string::npos) << outcome.Printed;
    EXPECT_EQ(Read("a.svg"), "old");
  }
}

TEST_F(VaxelRender, LoopsKeepWithinBounds) {
  constexpr long kilobytes = 1'000'000;
  Write("dial.dat", "A:\nNPage\nGoto A\n");
  const Outcome pages = Run("-o a.pdf --max-seconds 60 dial.dat");
  EXPECT_EQ(pages.Status, 1);
  EXPECT_NE(pages.Printed.find("\nThe drawings take more than 450 MB of memory"), std::string::npos)
      << pages.Printed;
  // What is kept of lines that are run again is many times their text.
  std::string line = "Cercle = 0,0,1,,,", lines = "%I = 0\nA:\n";
  for (int i = 0; i < 10'000; ++i) line += "1,";
  for (int i = 0; i < 700; ++i) lines += line + "\n";
  Write("dial.dat", lines + "%I == %I+1\nIF %I < 2 GOTO A\n");
  EXPECT_EQ(Run("-o a.list dial.dat").Status, 0);
  rusage usage{};
  ASSERT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  EXPECT_LT(usage.ru_maxrss, kilobytes);
}

TEST_F(VaxelRender, ReadsDataFilesOfEveryKind) {
  Write("dial.dat",
        "Open = data.txt\nLire:\nIF %EOF = 1 THEN Stop\nLVar = %Ligne\nTexte = 0,0,,,(%Ligne)\nGoto Lire\n");
  // The old sign of the ohm, which Windows-1252 lacks, is in UTF-16 alone.
  const std::string wide(
      "\xFF\xFE"
      "1\0;\0\xA9\x03\r\0\n\0'\0 \0c\0\n\0\xDF\0",
      22);
  const std::pair<std::string, const char*> cases[] = {
      {"' c\r\n1;2\r\n  3  \r\n\r\n'\r\n4", "[(1;2)][(3)][()][(4)]"},
      {"\xE9\x80\r\n\xB5", "[(é€)][(µ)]"},
      {wide, "[(1;Ω)][(ß)]"},
      {"\xEF\xBB\xBFé\n", "[(é)]"},
      {"1\r2\r", "[(1)][(2)]"},
      {"a, b' d\n\n", "[(a, b' d)][()]"},
      {"", ""},
      {"' c\n' d", ""}};
  for (const auto& [data, texts] : cases) {
    Write("data.txt", data);
    const Outcome outcome = Run("--format list --max-seconds 5 dial.dat");
    EXPECT_EQ(outcome.Status, 0) << outcome.Printed;
    EXPECT_EQ(TextsOf(outcome.Printed), texts);
  }
}

TEST_F(VaxelRender, TakesDataFilesOfAnySize) {
  constexpr std::uintmax_t megabyte = 1'000'000;
  const auto drawsLength = [&](const std::string& outcome) {
    return outcome.find(" 100.000,100.000 107.000,100.000\n") != std::string::npos;
  };
  Write("dial.dat", "Open = data.txt\nLVar = %A\nLVar = %B\nTrait = 0, 0, %B, 0\n");
  Write("data.txt", std::string(10 * megabyte, 'x') + "\n7\n");
  const Outcome longLine = Run("--format list dial.dat");
  EXPECT_TRUE(drawsLength(longLine.Printed)) << longLine.Printed.substr(0, 1000);
  Write("data.txt", std::string(17 * megabyte, 'x') + "\n7\n");
  const Outcome tooLong = Run("dial.dat");
  EXPECT_EQ(tooLong.Status, 1);
  EXPECT_EQ(tooLong.Printed,
            "dial.dat:2: Error in the line: LVar = %A of the file: dial.dat\n\n"
            "Text of more than 16 million characters\n");
  fs::resize_file(folder_ / "data.txt", 1000 * megabyte);  // takes no room on the disk
  EXPECT_NE(
      Run("dial.dat")
          .Printed.find("File of more than 100 MB, with those that are read at the same time: data.txt\n"),
      std::string::npos);
  Write("dial.dat", "Fichier = data.txt\n");
  EXPECT_NE(
      Run("dial.dat")
          .Printed.find("File of more than 100 MB, with those that are read at the same time: data.txt\n"),
      std::string::npos);
  // The largest of all programs that this one has run and waited for.
  rusage usage{};
  ASSERT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  EXPECT_LT(usage.ru_maxrss * 1024, 1000 * megabyte);
}

}  // namespace
}  // namespace vaxel::test
