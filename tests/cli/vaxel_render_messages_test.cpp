// What vaxel-render says: its language, what a terminal gets to see, and what it refuses to overwrite.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

const char* const Line = "Trait = 0, 0, 10, 0\n";

TEST_F(VaxelRender, SpeaksTheUsersLanguage) {
  Write("dial.dat", "X = 1/0\n");
  const std::pair<const char*, const char*> cases[] = {
      {"LC_ALL=fr_FR.UTF-8 LC_MESSAGES=es LANG=en", "Erreur"},
      {"LC_ALL= LC_MESSAGES=es_MX@x LANG=fr_FR", "Error en la"},
      {"LC_ALL= LC_MESSAGES= LANG=fr", "Erreur"},
      {"LC_ALL=C LANG=fr_FR.UTF-8", "Error in"},
      {"LC_ALL=POSIX LANG=fr_FR.UTF-8", "Error in"},
      {"LC_ALL=C.UTF-8 LANG=fr_FR.UTF-8", "Error in"},
      {"LC_ALL=de_DE.UTF-8 LANG=fr_FR.UTF-8", "Error in"},
      {"LC_ALL=french", "Error in"},
      {"LC_ALL= LC_MESSAGES= LANG=", "Error in"},
      {"env -u LC_ALL -u LC_MESSAGES -u LANG", "Error in"}};
  for (const auto& [environment, beginning] : cases) {
    const Outcome outcome = Run("dial.dat", environment);
    EXPECT_TRUE(outcome.Printed.starts_with(std::string("dial.dat:1: ") + beginning))
        << environment << ": " << outcome.Printed;
  }
  for (const char* asked : {"--language fr dial.dat", "dial.dat --language=fr"}) {
    EXPECT_TRUE(Run(asked, "LC_ALL=es_ES").Printed.starts_with("dial.dat:1: Erreur")) << asked;
  }
  // What is wrong with the options too, wherever the language stands among them.
  EXPECT_TRUE(Run("--zoom 0 --language es dial.dat").Printed.starts_with("vaxel-render: --zoom: '0' no es"));
  EXPECT_TRUE(Run("--language de dial.dat", "LC_ALL=fr").Printed.starts_with("vaxel-render: --language : "));
  EXPECT_EQ(Run("missing", "LC_ALL=fr").Printed,
            "vaxel-render: impossible de lire missing : ce fichier ou dossier n'existe pas\n");
  EXPECT_EQ(Run(".", "LC_ALL=es").Printed, "vaxel-render: no se puede leer .: es una carpeta\n");
}

TEST_F(VaxelRender, ExplainsItselfInEveryLanguage) {
  const std::pair<const char*, const char*> cases[] = {
      {"fr", "Emploi : vaxel-render "}, {"en", "Usage: vaxel-render "}, {"es", "Uso: vaxel-render "}};
  for (const auto& [language, usage] : cases) {
    const Outcome help = Run("--help --language " + std::string(language));
    EXPECT_EQ(help.Status, 0);
    EXPECT_NE(help.Printed.find(usage), std::string::npos) << help.Printed;
    EXPECT_NE(help.Printed.find("--max-seconds N"), std::string::npos) << help.Printed;
    std::istringstream lines(help.Printed);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; }), 80)
          << line;
    }
  }
  EXPECT_TRUE(Run("-h", "LC_ALL=fr_CA").Printed.starts_with("Dessine "));
}

TEST_F(VaxelRender, ShowsATerminalNothingToObey) {
  const std::string red = "\x1B[31m", turned = "\xE2\x80\xAE", c1 = "\xC2\x9B", stray = "\x9B";
  const std::string name = "a" + red + "\n" + turned + c1 + stray + ".dat";
  const std::string shown = "a\\x1b[31m\\x0a\\u202e\\x9b\\x9b.dat";
  Write(name, "X = 1/0\n");
  EXPECT_EQ(Run("'" + name + "'").Printed,
            shown + ":1: Error in the line: X = 1/0 of the file: " + shown + "\n\nDivision by zero\n");
  EXPECT_EQ(Run("'" + red + "'").Printed,
            "vaxel-render: cannot read \\x1b[31m: there is no such file or folder\n");
  EXPECT_EQ(Run("--zoom '" + turned + "' x").Printed,
            "vaxel-render: --zoom: '\\u202e' is not a number from above 0 to 1000\n"
            "vaxel-render --help lists the options\n");
  Write("lines.dat", "X = " + red + turned + "1\n");
  EXPECT_NE(Run("lines.dat").Printed.find("Error in the line: X = \\x1b[31m\\u202e1 of"), std::string::npos);
  // In what a script itself shows too, and the list; an SVG holds the text as it is drawn.
  Write("dial.dat", "Texte = 0,0,,,%A\nListeVar = " + turned + "\n");
  const Outcome drawn = Run("-o a.svg -o - --format list -D 'A=" + red + turned + "' dial.dat");
  EXPECT_EQ(drawn.Status, 0) << drawn.Printed;
  EXPECT_NE(drawn.Printed.find(": [31m\\u202e\n"), std::string::npos) << drawn.Printed;
  EXPECT_EQ(drawn.Printed.find(turned), std::string::npos) << drawn.Printed;
  EXPECT_NE(Read("a.svg").find(turned), std::string::npos);
}

// A script that reads files of all kinds, and one of them under each name that leads to it.
TEST_F(VaxelRender, OverwritesNothingThatTheScriptReads) {
  const std::string script = "Open = data.txt\nFichier = sub/part\nImage = pal.png, 0, 0, V§%W\n";
  fs::create_directory(folder_ / "sub");
  Write("dial.dat", script);
  Write("data.txt", "1\n");
  Write("sub/part.dat", Line);
  fs::copy(fs::path(VAXEL_SOURCE_DIR) / "tests/pictures/clear.png", folder_ / "pal.png");
  fs::create_symlink("pal.png", folder_ / "link.png");
  fs::create_hard_link(folder_ / "data.txt", folder_ / "hard.txt");
  const std::string picture = Read("pal.png");
  const std::pair<std::string, std::string> cases[] = {
      {"pal.png", "pal.png, which the script reads"},
      {"./sub/../pal.png", "pal.png, which the script reads"},
      {"link.png", "pal.png, which the script reads"},
      {"data.txt", "data.txt, which the script reads"},
      {"hard.txt", "data.txt, which the script reads"},
      {"sub/part.dat", "sub/part.dat, which the script reads"},
      {"./dial.dat", "dial.dat, the script"}};
  for (const auto& [output, input] : cases) {
    const Outcome outcome = Run("--format svg -o first.svg -o " + output + " dial.dat");
    EXPECT_EQ(outcome.Status, 2) << output;
    EXPECT_EQ(outcome.Printed, "vaxel-render: -o " + output + " would overwrite " + input + "\n");
    EXPECT_FALSE(fs::exists(folder_ / "first.svg")) << output;
  }
  EXPECT_EQ(Read("pal.png") + Read("data.txt") + Read("sub/part.dat") + Read("dial.dat"),
            picture + "1\n" + Line + script);
  // Beside them everything may be written.
  EXPECT_EQ(Run("-o pal-2.png -o data.svg dial.dat").Status, 0);
}

TEST_F(VaxelRender, OverwritesNoInputWithALaterPageOrThroughAStream) {
  Write("dial-2.svg", "1\n");
  Write("pages.dat", "Open = dial-2.svg\nX = 0,0,1\nNPage\nX = 0,0,1\n");
  const Outcome page = Run("--target printer -o dial.svg pages.dat");
  EXPECT_EQ(page.Status, 2);
  EXPECT_EQ(page.Printed, "vaxel-render: -o dial.svg would overwrite dial-2.svg, which the script reads\n");
  EXPECT_FALSE(fs::exists(folder_ / "dial.svg"));
  EXPECT_EQ(Run("-o dial.svg pages.dat").Status, 0);  // one page on the screen
  Write("dial.txt", Line);
  const Outcome stream = Run("-o dial.txt - <dial.txt");
  EXPECT_EQ(stream.Status, 2);
  EXPECT_EQ(stream.Printed, "vaxel-render: -o dial.txt would overwrite standard input, the script\n");
  EXPECT_EQ(Shell("! '" + (Programs / "vaxel-render").string() + "' pages.dat >>dial-2.svg"), 0);
  EXPECT_EQ(Read("dial.txt") + Read("dial-2.svg"), std::string(Line) + "1\n");
}

// A run for the screen and one for paper find the same faults in the lines, but each has its own sheet.
TEST_F(VaxelRender, GivesNotices) {
  Write("dial.dat", "Couleur = Rot\nFichier = part\nTrait = 0, 0, 120, 0\n");
  Write("part.dat", "\nX = 0, 0, 1, Azul\n");
  const std::string ofLines =
      "dial.dat:1: notice: unknown colour: Rot\npart.dat:2: notice: unknown colour: Azul\n";
  const Outcome both = Run("-o a.svg -o b.list --target screen dial.dat");
  EXPECT_EQ(both.Status, 0);
  const std::string beyondScreen =
      "dial.dat:3: notice: the drawing reaches beyond the sheet: 20.1 mm to the right\n";
  EXPECT_EQ(both.Printed, ofLines + beyondScreen);
  EXPECT_EQ(Run("-o a.pdf -o b.svg dial.dat").Printed,
            ofLines + "dial.dat:3: notice: the drawing reaches beyond the sheet: 15 mm to the right\n" +
                beyondScreen);
  const Outcome french = Run("-o a.svg dial.dat", "LC_ALL=fr");
  EXPECT_TRUE(french.Printed.starts_with("dial.dat:1: remarque: couleur inconnue : Rot\n")) << french.Printed;
}

TEST_F(VaxelRender, TakesNoticesForErrors) {
  Write("dial.dat", "Couleur = Rot\nX = 0, 0, 1, Azul\n");
  const Outcome outcome = Run("--strict -o a.svg dial.dat");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Printed,
            "dial.dat:1: error: unknown colour: Rot\ndial.dat:2: error: unknown colour: Azul\n");
  EXPECT_FALSE(fs::exists(folder_ / "a.svg"));
  Write("clean.dat", "X = 0, 0, 1, Rouge\n");
  const Outcome clean = Run("--strict -o a.svg clean.dat");
  EXPECT_EQ(clean.Status, 0) << clean.Printed;
  EXPECT_EQ(clean.Printed, "");
}

// Of each page, and only what is certain: a frame around the sheet has its stroke's middle on it.
TEST_F(VaxelRender, TellsWhatLiesBeyondTheSheet) {
  Write("dial.dat",
        "CentreI = 0, 0, N\nCadre = 0, 0, 210, 297\nNPage\nCercle = 200, 290, 15\n"
        "Trait = 5, 5, -3.04, 5\nNPage\nTexte = 180, 200, , , Much too long for here\n"
        "NPage\nTexte = 10, 298, , H, top\nCercle = 0, 150, 20, -80, 80\n");
  const Outcome outcome = Run("-o a.pdf dial.dat");
  EXPECT_EQ(outcome.Printed,
            "dial.dat:4: notice: the drawing reaches beyond the sheet of page 2: 3.1 mm to the left, "
            "5 mm to the right, 8 mm at the top\n"
            "dial.dat:7: notice: the drawing reaches beyond the sheet of page 3: 2.7 mm to the right\n");
}

TEST_F(VaxelRender, TellsOfACharacterThatNoFontHas) {
  Write("dial.dat",
        "Texte = 0, 0, , , a \xF4\x8F\xBF\xBD b\nPolice = DejaVu Sans\nTexte = 0, 5, , , \xC3\xA9\n"
        "TexteC = 0, 0, 20, 90, , , \xE2\x84\xA6 \xF4\x8F\xBF\xBC\n");
  const Outcome outcome = Run("-o a.svg dial.dat");
  EXPECT_NE(outcome.Printed.find("dial.dat:1: notice: no font has this character: \xF4\x8F\xBF\xBD\n"),
            std::string::npos)
      << outcome.Printed;
  EXPECT_NE(outcome.Printed.find("dial.dat:4: notice: no font has this character: \xF4\x8F\xBF\xBC\n"),
            std::string::npos)
      << outcome.Printed;
  EXPECT_EQ(outcome.Printed.find("dial.dat:3:"), std::string::npos) << outcome.Printed;
}

TEST_F(VaxelRender, EndsWithAMessageWhereAPictureIsCutOff) {
  Write("short.jpg", std::string("\xFF\xD8\xFF\xE1\0\2Exif\0\0", 12));
  Write("dial.dat", "\nImage = short.jpg, 0, 0\n");
  const Outcome outcome = Run("-o a.svg dial.dat");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Printed,
            "dial.dat:2: Error in the line: Image = short.jpg, 0, 0 of the file: dial.dat\n\n"
            "Not a BMP, GIF, JPEG or PNG picture: short.jpg\n");
}

}  // namespace
}  // namespace vaxel::test
