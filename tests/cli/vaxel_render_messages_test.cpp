// What vaxel-render says: its language, and what a terminal gets to see.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

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
            "vaxel-render: impossible de lire missing : No such file or directory\n");
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
  EXPECT_EQ(Run("'" + red + "'").Printed, "vaxel-render: cannot read \\x1b[31m: No such file or directory\n");
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
