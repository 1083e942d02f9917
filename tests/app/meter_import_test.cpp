// Meter files, good and bad: what becomes of them, and that the scripts draw.
#include "app/meter_import.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "app/meter_fields.h"
#include "resources/text_id.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

Result<MeterScript> Import(std::string bytes) {
  const StringTable strings;
  return ImportMeter(std::move(bytes), "C:\\dials\\volt.mtr", strings, strings.BaseOfCode("en"));
}

std::string ScriptOf(std::string bytes) {
  Result<MeterScript> script = Import(std::move(bytes));
  return script ? script->Text : "refused: " + script.Why().Words;
}

TEST(MeterImport, MakesATidyScript) {
  EXPECT_EQ(ScriptOf("[Scale]\r\n"
                     "Start Angle = 45 deg\r\n"
                     "EndAngle: 135\r\n"
                     "radius 60,0 mm\r\n"
                     "needle = thin\r\n"
                     "\r\n"
                     "Major divisions = 10\r\n"
                     "minor divisions = 2\r\n"
                     "min = 0\r\n"
                     "max = 250 V\r\n"
                     "title = Ligne d'essai\r\n"
                     "unit = %\r\n"
                     "width = 12 cm\r\n"
                     "height = 80\r\n"
                     "colour = #FF8000\r\n"),
            "' Dial imported from volt.mtr\n"
            "' Lines marked \"?\" were not understood.\n"
            "CentreE = 0, -44.1, N\n"
            "CentreI = 105, 104.4, N\n"
            "\n"
            "' [Scale]\n"
            "%AngleDebut = 45\n"
            "%AngleFin = 135\n"
            "%Rayon = 60\n"
            "' ? needle = thin\n"
            "\n"
            "%Divisions = 10\n"
            "%SousDivisions = 2\n"
            "%Debut = 0\n"
            "%Fin = 250\n"
            "%Titre = Ligne d’essai\n"
            "%Unite =< =%\n"
            "%Largeur = 120\n"
            "%Hauteur = 80\n"
            "%CouleurTrait = RVB 255 128 0\n"
            "\n"
            "' The dial\n"
            "Couleur = %CouleurTrait\n"
            "Police = Arial\n"
            "TailleP = 11\n"
            "EpaisT = 0.48mm\n"
            "Arc = %AngleDebut, %AngleFin, %Rayon\n"
            "Grad = %Divisions*%SousDivisions, 0.06*%Rayon, , , 0.2mm§C\n"
            "Grad = %Divisions, 0.1*%Rayon, , , 0.35mm§C\n"
            "Val = %Divisions, %Debut, %Fin, 0.17*%Rayon\n"
            "\n"
            "' The texts\n"
            "Texte = 0, 0.525*%Rayon, , *1.3 C, %Titre\n"
            "Texte = 0, 0.375*%Rayon, , *1 C, %Unite\n"
            "\n"
            "' The outline to cut along\n"
            "EpaisT = 0.2mm\n"
            "Cadre = -%Largeur/2, -%Hauteur/2+44.1, %Largeur/2, %Hauteur/2+44.1\n");
}

TEST(MeterImport, ReadsNamesAndValuesAsTheyAreWritten) {
  using enum MeterField;
  struct Case {
    const char* Line;
    MeterField Field;
    double Number;
    const char* Text;
  };
  const Case cases[] = {{"ANGLE_DEBUT=-45,5°", StartAngle, -45.5, ""},
                        {"angle de début : 30 degrés", StartAngle, 30, ""},
                        {"Last.Angle\t+225", EndAngle, 225, ""},
                        {"rayon de l'arc 2 in", Radius, 50.8, ""},
                        {"grandes divisions: 6", Divisions, 6, ""},
                        {"Sous-divisions = 4", Subdivisions, 4, ""},
                        {"Première valeur = -1,5E3 kg/m²", FirstValue, -1500, ""},
                        {"Full Scale 20", LastValue, 20, ""},
                        {"titre = \"a: b = c\"", Title, 0, "a: b = c"},
                        {"étiquette   classe 1,5", Label, 0, "classe 1,5"},
                        {"Unité: µA", Unit, 0, "µA"},
                        {"couleur = 255;0;0", ScaleColour, 0, "Rouge"},
                        {"Text Color: rgb(1, 2, 3)", TextColour, 0, "RVB 1 2 3"},
                        {"fond: jaune", FaceColour, 0, "Jaune"},
                        {"background 0xFFFFFF", FaceColour, 0, "Blanc"}};
  for (const Case& c : cases) {
    const auto dial = ReadMeterDial(std::string(c.Line) + "\ndial width = 9\ndial height = 9");
    ASSERT_TRUE(dial) << c.Line;
    const MeterValue* const value = dial->Find(c.Field);
    ASSERT_TRUE(value) << c.Line;
    EXPECT_DOUBLE_EQ(value->Number, c.Number) << c.Line;
    EXPECT_EQ(value->Text, c.Text) << c.Line;
  }
}

TEST(MeterImport, KeepsWhatItDoesNotUnderstand) {
  const std::array lines = {"radius = big",    "radius = -3",
                            "radius = 50 px",  "divisions = 2.5",
                            "divisions = 0",   "start angle = 1e9",
                            "min = 1 000",     "min = 1,000.5",
                            "title =",         "width = 0 mm",
                            "colour = mauve?", "law = cubic",
                            "max = V",         "start angle = 1 rad",
                            "title = go on _", "un titre",
                            "rayon",           "= 5",
                            "max == 5",        "height = nan",
                            "fond: 1E400",     "background = 99999 0 0"};
  std::string file = "max = 10\nsubdivisions = 2\n", comments;
  for (const char* line : lines) file += std::string(line) + "\n";
  file += "max = 20\n";
  const Result<MeterScript> script = Import(file);
  ASSERT_TRUE(script);
  std::size_t at = script->Text.find("%Fin = 10\n%SousDivisions = 2\n");
  EXPECT_EQ(script->LinesLeftOut, lines.size() + 1);
  for (const char* line : lines) {
    const std::size_t found = script->Text.find("\n' ? " + std::string(line), at);
    EXPECT_NE(found, std::string::npos) << line;
    at = found;
  }
  EXPECT_NE(script->Text.find("\n' ? max = 20\n", at), std::string::npos) << "told a second time";
  const ScriptRun run = RunText(script->Text);
  EXPECT_EQ(run.End, RunEnd::Completed);
  EXPECT_TRUE(run.Notices.empty());
}

TEST(MeterImport, RefusesWhatIsNoDial) {
  const std::string sixteen("m\0i\0n\0 \0", 8);
  for (const std::string& bytes :
       {std::string(), std::string("\n\n\n"), sixteen, std::string("min = 1\nmax = 2\n\x01\x02"),
        std::string("\x7F"
                    "ELF"),
        std::string("CentreE = 0, 0, N\nArc = 45, 135, 50\nGrad = 10, 5\n"), std::string("{\"min\": 0}"),
        std::string("title = x\nunit = V\n"), std::string("To whom it may concern\nthe maximum is 5\n"),
        std::string(100'000, 'x')}) {
    const Result<MeterScript> script = Import(bytes);
    ASSERT_FALSE(script) << bytes.substr(0, 40);
    EXPECT_EQ(script.Why().Text, TextId::NotAMeterFile);
    EXPECT_EQ(script.Why().Words, "C:\\dials\\volt.mtr");
  }
}

TEST(MeterImport, ReadsTheEncodingsOfScripts) {
  const std::string utf8 = "titre = Débit\nmin = 0\nmax = 5\n";
  std::string sixteen = "\xFF\xFE", western;
  for (const char c : std::string("titre = D\xE9"
                                  "bit\nmin = 0\nmax = 5\n")) {
    western += c;
    (sixteen += c) += '\0';
  }
  const std::string script = ScriptOf(utf8);
  EXPECT_NE(script.find("%Titre = Débit\n"), std::string::npos) << script;
  EXPECT_EQ(ScriptOf(western), script);
  EXPECT_EQ(ScriptOf(sixteen), script);
  EXPECT_EQ(ScriptOf("\xEF\xBB\xBF" + utf8), script);
}

// Each of these is drawn without an error or a notice, and all texts of the file are on the dial.
TEST(MeterImport, MakesScriptsThatDraw) {
  const std::pair<const char*, const char*> cases[] = {
      {"min 1\nmax 1000\nlaw = log\ndivisions = 7\n", "1000"},
      {"min 20\nmax 80\nlaw = log\n", "20"},
      {"min 0\nmax 80\nlaw = log\n", "80"},
      {"min = 0\nmax = 5\nlaw: square\nbackground = ivoire\nwidth = 60\n", "5"},
      {"min = 0\nmax = 5\nloi: racine\nheight = 60\n", "5"},
      {"start angle -45\nend angle 225\nmin -1\nmax 1\n", "-1"},
      {"start angle 225\nend angle -45\nmin 10\nmax 0\n", "10"},
      {"start angle 90\nend angle 450\nmin 0\nmax 12\ndivisions 12\n", "12"},
      {"start angle 45\nend angle 45\nmin 3\nmax 3\n", "100"},
      {"divisions 1000\nsubdivisions 1000\nmax 123456.7\n", "123456.7"},
      {"radius 0.01 mm\nmax 5\n", "5"},
      {"radius 5000 mm\nmax 5\n", "5"},
      {"max 10\nmin 5\ntitle = =5 % %Rayon, a§b\nlabel = <x\nunit = 'V'\n", "=5 % %Rayon, a§b"},
      {"max 10\nmin 5\ntitle = 100 %%\n", "100 %%"},
      {"max 10\nmin 5\nlabel = <x\n", "<x"}};
  for (const auto& [file, drawn] : cases) {
    const std::string script = ScriptOf(file);
    for (const RunSettings& settings : {RunSettings{}, ForPrinter()}) {
      const ScriptRun run = RunText(script, settings);
      EXPECT_EQ(run.End, RunEnd::Completed) << script << run.Reason();
      EXPECT_TRUE(run.Notices.empty() || std::string_view(file).find("5000") != std::string_view::npos)
          << script << run.Notices[0];
      EXPECT_NE(ListText(run.List).find(": " + std::string(drawn) + "\n"), std::string::npos) << script;
    }
  }
}

}  // namespace
}  // namespace vaxel::test
