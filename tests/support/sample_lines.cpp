#include "tests/support/sample_lines.h"

namespace vaxel::test {

std::string SampleOf(const CommandRow& row, ParameterKind kind, SamplePlace place) {
  using Kind = ParameterKind;
  const std::string_view keyword = row.Keyword;
  switch (kind) {
    case Kind::Number:
    case Kind::Bound:
      // Beyond the first parameters, other numbers than the usual ones.
      if (keyword.starts_with("DemiLune")) return std::to_string(place.N == 5 ? 60 : 2 + place.N);
      if (keyword.starts_with("QA")) return place.Part > 0 ? "1.5" : place.N < 6 ? "2" : "4";
      if (keyword.starts_with("Fleche")) return place.N == 4 ? "26" : std::to_string(place.N - 3);
      if (keyword == "Exposant" && place.N > 2) return place.N == 3 ? "2" : "5";
      return std::to_string(2 + place.N + 20 * place.Part);
    case Kind::X:
    case Kind::Y:
      return std::to_string(7 + 5 * place.N);
    case Kind::ScaleValue:
      return std::to_string(20 + 10 * place.N);
    case Kind::Step:
      return "20";
    case Kind::ShapeOfMark:
      return "";  // of a stroke, which has a pen
    case Kind::Unit:
      return "V";
    case Kind::Notation:
      return "E";
    case Kind::Orientation:
      return "R30J";
    case Kind::Ink:
    case Kind::ColourOrNone:
    case Kind::LeadColour:
      return place.Part > 0 ? "Vert" : "Rouge";
    case Kind::Pen:
      return "4";
    case Kind::PenMm:
      return "0.5mm";
    case Kind::PenEnds:
      return "C";
    case Kind::Text:
      return "abc";
    case Kind::TextLetters:
    case Kind::ArcTextLetters:
      return "*2GX";
    case Kind::Multiplier:
      return "*2 GI";
    case Kind::FontSize:
      return "5 I";
    case Kind::FontChange:
      return "*3 S";
    case Kind::FontName:
      return "Courier New";
    case Kind::ScriptFile:
      return "part.dat";
    case Kind::DataFile:
      return keyword == "Echelle" ? "points.txt" : "values.txt";
    case Kind::PictureFile:
      return "clear.png";
    case Kind::PictureScale:
      return "2";
    case Kind::PictureBox:
      return "Z§10§12";
    case Kind::PicturePixels:
      return "V";
    case Kind::PicturePosition:
      return "C";
    case Kind::CornerForm:
      return "D";
    case Kind::DovetailEnds:
      return "T-";
    case Kind::LightType:
      return "2";
    case Kind::PageForm:
      return "Paysage";
    case Kind::LogLetter:
    case Kind::StraightMark:
      return "L";
    case Kind::TableWord:
      return "table";
    case Kind::ListWord:
      return "liste";
    case Kind::Variable:
      return "%X" + std::to_string(place.N + place.Part);
    case Kind::List:
      return place.Part > 0 ? "%Values" : "%Points";
    case Kind::Value:
      return "1+2";
    case Kind::Law:
      return "%V*100/10";
    case Kind::Prompt:
      return "How much";
    case Kind::Argument:
      return "%Size=5";
    case Kind::JumpLabel:
      return "Fin";
    case Kind::Condition:
      return "1 < 2";
    case Kind::Command:
      return "Inversion";
    case Kind::Separator:
      return place.N == 1 ? ";" : "#";
    case Kind::Format:
      return "0.0";
  }
  return {};
}

std::string SampleLine(const CommandRow& row, const ParameterForm& form, const ChangeSample& change) {
  std::string line(row.Keyword == "%" ? "%Made" : row.Keyword);
  if (row.Rules.Form == LineForm::Condition) {
    const ParameterKind second = form.At(2)->front().Kind;
    const std::string condition =
        row.Keyword == "IFNDEF" ? "%New" : SampleOf(row, ParameterKind::Condition, {1});
    return line + " " + condition + (second == ParameterKind::JumpLabel ? " GOTO " : " THEN ") +
           SampleOf(row, second, {2});
  }
  const bool isLaw = form.Parameters.size() > 2 && form.At(3)->front().Kind == ParameterKind::Law;
  if (!form.Parameters.empty()) line += isLaw ? " =<" : " = ";
  for (std::size_t n = 1; n <= form.Parameters.size(); ++n) {
    if (n > 1) line += ", ";
    const ParameterPartList& parts = *form.At(n);
    for (std::size_t part = 0; part < parts.size(); ++part) {
      const SamplePlace place{n, part};
      const std::string text = SampleOf(row, parts[part].Kind, place);
      if (part > 0) line += "§";
      line += change ? change(place, text) : text;
    }
  }
  return line;
}

std::string BeforeSample(const CommandRow& row) {
  if (row.Rules.OrderLimit != CommandRules::NoLimit) return {};
  std::string before = "%Points = 0, 0, 5, 50, 10, 100\n%Values = 10, 20\nCouleur = Bleu\nEpaisT = 3\n";
  if (row.Keyword == "LVar") before += "Open = values.txt\n";
  if (row.Keyword == "Suivant") before += "Pour = %X1, 1, 2\n";
  return before + "Arc = -10, 110, 40\nTrait = 0, 0, 11, 12\n";
}

std::string AfterSample(const CommandRow& row) {
  std::string after = "\nFin:\n";
  const bool hasScale = row.Rules.OrderLimit == CommandRules::NoLimit && row.Keyword != "NPage";
  if (!hasScale) after += "Arc = -10, 110, 40\n";
  if (row.Keyword == "Pour") after += "Suivant\n";
  if (row.Keyword == "Separateur") return after + "Trait = 0R; 0R; 3; 4; 5#C#2";
  return after + "Grad = 4, 5\nTrait = 0R, 0R, 30, 31\nTexte = 0R, 1R,,, abc\nVal = 2, 0, 100, 5\n";
}

}  // namespace vaxel::test
