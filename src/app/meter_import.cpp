#include "app/meter_import.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "app/meter_fields.h"
#include "app/script_file.h"
#include "base/number_text.h"
#include "base/point.h"
#include "base/text_encoding.h"
#include "base/units.h"
#include "drawing/operation_box.h"

namespace vaxel {
namespace {

using enum MeterField;

// The variable that holds each field, without its "%"; the law has none.
constexpr std::array<std::string_view, static_cast<std::size_t>(MeterField::Count)> Variables = {
    "AngleDebut", "AngleFin", "Rayon", "Divisions", "SousDivisions", "Debut",        "Fin",          "",
    "Titre",      "Libelle",  "Unite", "Largeur",   "Hauteur",       "CouleurTrait", "CouleurTexte", "Fond"};

std::string VariableOf(MeterField field) {
  return "%" + std::string(Variables[static_cast<std::size_t>(field)]);
}

// What a dial is drawn with when its file does not say it.
constexpr double StandardStart = 45, StandardEnd = 135, StandardRadius = 50;
constexpr double StandardDivisions = 10, StandardSubdivisions = 5;
constexpr double StandardFirst = 0, StandardLast = 100;

// In parts of the radius: how long marks are, how far out the figures stand (long ones a little further) and
// how far their room reaches; where the texts stand, one below the other.
constexpr double ShortMark = 0.06, LongMark = 0.1;
constexpr double FigureDistance = 0.17, LongFigureDistance = 0.2, OuterReach = 1.26;
constexpr double TextDistance = 0.45, TextLine = 0.15;
// The font of the figures, in points: so much, and so much for each millimetre of the radius.
constexpr double LeastPoints = 3, PointsPerRadius = 0.13;
constexpr double TitleFactor = 1.3;

std::string Rounded(double value) {
  return NumberText(std::round(value * 1000) / 1000);
}

// " + 3" behind something, "" for 0.
std::string Plus(double value) {
  const std::string text = Rounded(std::abs(value));
  return text == "0" ? "" : (value < 0 ? "-" : "+") + text;
}

// Writes the script of one dial.
class MeterWriter {
 public:
  MeterWriter(MeterDial dial, const StringTable& strings, int base)
      : dial_(std::move(dial)), strings_(strings), base_(base) {
    Settle();
    start_ = dial_.NumberOr(StartAngle, StandardStart);
    end_ = dial_.NumberOr(EndAngle, StandardEnd);
    box_ = UnitBox();
    radius_ = dial_.NumberOr(Radius, FittingRadius());
  }

  MeterScript Write(std::string_view fileName) {
    Comment(strings_.Text(base_, TextId::MeterScriptHead, NameWithoutFolder(fileName)));
    const bool hasUnknown = std::any_of(dial_.Lines.begin(), dial_.Lines.end(), [](const MeterLine& line) {
      return line.Kind == MeterLineKind::Unknown;
    });
    if (hasUnknown) Comment(strings_.Text(base_, TextId::MeterScriptMarks));
    const Point centre = Centre();
    Line("CentreE = " + Rounded(-centre.X) + ", " + Rounded(-centre.Y) + ", N");
    Line("CentreI = " + Rounded(105 - centre.X) + ", " + Rounded(148.5 - centre.Y) + ", N");
    Line("");
    for (const MeterLine& line : dial_.Lines) WriteRead(line);
    WriteMissing();
    WriteDial();
    WriteTexts();
    WriteOutline();
    return std::move(script_);
  }

 private:
  // What is understood line by line but makes no dial together.
  void Settle() {
    const auto areEqual = [this](MeterField one, MeterField other, double first, double second) {
      return dial_.NumberOr(one, first) == dial_.NumberOr(other, second);
    };
    if (areEqual(StartAngle, EndAngle, StandardStart, StandardEnd)) {
      dial_.Reject(StartAngle);
      dial_.Reject(EndAngle);
    }
    if (areEqual(FirstValue, LastValue, StandardFirst, StandardLast)) {
      dial_.Reject(FirstValue);
      dial_.Reject(LastValue);
    }
    // More marks than a scale may have.
    constexpr double mostMarks = 32'000;
    if (dial_.NumberOr(Divisions, StandardDivisions) * dial_.NumberOr(Subdivisions, StandardSubdivisions) >
        mostMarks) {
      dial_.Reject(Subdivisions);
    }
    const double first = dial_.NumberOr(FirstValue, StandardFirst);
    if (IsLogarithmic() && (first <= 0 || dial_.NumberOr(LastValue, StandardLast) <= first))
      dial_.Reject(Law);
    if (!IsLogarithmic()) return;
    // Its decades are divided as such scales are.
    dial_.Reject(Divisions);
    dial_.Reject(Subdivisions);
  }

  MeterLaw LawOfDial() const {
    const MeterValue* const law = dial_.Find(Law);
    return law ? law->Law : MeterLaw::Linear;
  }
  bool IsLogarithmic() const { return LawOfDial() == MeterLaw::Logarithmic; }

  // The way on the drawing that a scale angle leads: 0° to the left, 90° up.
  static Point Direction(double angle) {
    const double radians = angle * std::numbers::pi / 180;
    return {-std::cos(radians), std::sin(radians)};
  }
  Point Middle() const { return Direction((start_ + end_) / 2); }

  // What a dial of radius 1 takes, y upward: figures, arc and, further in, the texts.
  Box UnitBox() const {
    constexpr int steps = 90;
    Box box;
    for (int i = 0; i <= steps; ++i) {
      const double angle = start_ + (end_ - start_) * i / steps;
      box.Add(Direction(angle));
      box.Add(Direction(angle) * OuterReach);
    }
    box.Add(Middle() * (TextDistance - 1.6 * TextLine));
    return box;
  }
  Point Centre() const {
    return {(box_.Left + box_.Right) / 2 * radius_, (box_.Top + box_.Bottom) / 2 * radius_};
  }

  // Of the face; a radius that the file does not tell leaves it a margin.
  static constexpr double FaceRatio = 1.1;
  double FittingRadius() const {
    constexpr double least = 5;
    const double width = dial_.NumberOr(Width, 0), height = dial_.NumberOr(Height, 0);
    double radius = width + height > 0 ? INFINITY : StandardRadius;
    if (width > 0) radius = std::min(radius, width / (box_.Width() * FaceRatio));
    if (height > 0) radius = std::min(radius, height / (box_.Height() * FaceRatio));
    return std::max(std::floor(radius * 2) / 2, least);
  }

  void Line(const std::string& text) { (script_.Text += text) += '\n'; }

  // A blank and "_" would have the comment go on in the next line.
  void Comment(std::string_view text) { Line("' " + std::string(text) + (text.ends_with('_') ? "'" : "")); }

  void WriteRead(const MeterLine& line) {
    if (line.Kind == MeterLineKind::Unknown) {
      ++script_.LinesLeftOut;
      Comment("? " + line.Text);
    } else if (line.Text.empty()) {
      Line("");
    } else if (line.Kind == MeterLineKind::Remark || line.Field == Law) {
      Comment(line.Text);
    } else {
      Line(AssignmentOf(line.Field, line.Value));
    }
  }

  static std::string AssignmentOf(MeterField field, const MeterValue& value) {
    const std::string name = VariableOf(field);
    if (value.Text.empty()) return name + " = " + NumberText(value.Number);
    // Such a text would mean something else.
    const bool isLiteral =
        value.Text.find('%') != std::string::npos || value.Text.front() == '=' || value.Text.front() == '<';
    return name + (isLiteral ? " =< =" : " = ") + value.Text;
  }

  void WriteMissing() {
    std::vector<std::pair<MeterField, double>> missing = {{StartAngle, StandardStart},
                                                          {EndAngle, StandardEnd},
                                                          {Radius, radius_},
                                                          {FirstValue, StandardFirst},
                                                          {LastValue, StandardLast}};
    if (!IsLogarithmic()) {
      missing.insert(missing.end(), {{Divisions, StandardDivisions}, {Subdivisions, StandardSubdivisions}});
    }
    if (HasFace()) {
      missing.insert(missing.end(), {{Width, std::ceil(box_.Width() * radius_ * FaceRatio)},
                                     {Height, std::ceil(box_.Height() * radius_ * FaceRatio)}});
    }
    std::erase_if(missing, [this](const auto& field) { return dial_.Find(field.first) != nullptr; });
    if (missing.empty()) return;
    Line("");
    Comment(strings_.Text(base_, TextId::MeterScriptMissing));
    for (const auto& [field, value] : missing) Line(AssignmentOf(field, {value}));
  }

  void Heading(TextId text) {
    Line("");
    Comment(strings_.Text(base_, text));
  }

  void WriteDial() {
    Heading(TextId::MeterScriptDial);
    if (dial_.Find(FaceColour)) Line("CadreP = " + Corners() + ", " + VariableOf(FaceColour));
    if (dial_.Find(ScaleColour)) Line("Couleur = " + VariableOf(ScaleColour));
    Line("Police = Arial");
    Line("TailleP = " + NumberText(FigurePoints()));
    Line("EpaisT = " + Rounded(std::clamp(0.008 * radius_, 0.1, 1.0)) + "mm");
    Line("Arc = %AngleDebut, %AngleFin, %Rayon");
    if (IsLogarithmic()) return WriteLogarithmic();
    WriteLaw();
    if (dial_.NumberOr(Subdivisions, StandardSubdivisions) > 1)
      Line("Grad = %Divisions*%SousDivisions, " + Rounded(ShortMark) + "*%Rayon, , , 0.2mm§C");
    Line("Grad = %Divisions, " + Rounded(LongMark) + "*%Rayon, , , 0.35mm§C");
    WriteFigures();
  }

  void WriteLaw() {
    if (LawOfDial() == MeterLaw::Linear) return;
    Line(LawOfDial() == MeterLaw::Square ? "Exposant = 0.5" : "Exposant = 2");
    Line("Echelle = %Debut, %Fin");
  }

  // Where figures crowd together, as few are left as there is room for.
  void WriteFigures() {
    if (LawOfDial() != MeterLaw::Linear) return Line("ValV = auto, " + FigurePlace());
    const double divisions = dial_.NumberOr(Divisions, StandardDivisions);
    const double step = FigureStep(divisions);
    const std::string number = "%Divisions" + (step > 1 ? "/" + NumberText(step) : "");
    // On a whole turn the last figure stands where the first would.
    const bool isWhole = std::abs(end_ - start_) >= 360;
    Line("Val = " + number + ", %Debut, %Fin, " + FigurePlace() + (isWhole ? ", 1, " + number : ""));
  }

  void WriteLogarithmic() {
    const double ratio = dial_.NumberOr(LastValue, StandardLast) / dial_.NumberOr(FirstValue, StandardFirst);
    const std::string decades = NumberText(std::max(1.0, std::floor(std::log10(ratio) + 1e-9)));
    Line("Exposant = L, " + decades + ", %Debut, %Fin/10^" + decades);
    Line("Grad = 1, " + Rounded(LongMark) + "*%Rayon, , , 0.2mm§C");
    WriteFigures();
  }

  std::string FigurePlace() const {
    constexpr std::size_t longFigure = 4;
    const double distance = LongestFigure() < longFigure ? FigureDistance : LongFigureDistance;
    return Rounded(distance) + "*%Rayon";
  }

  double FigurePoints() const {
    constexpr double most = 60;
    return std::min(std::round((LeastPoints + PointsPerRadius * radius_) * 2) / 2, most);
  }

  std::size_t LongestFigure() const {
    const double first = dial_.NumberOr(FirstValue, StandardFirst);
    const long divisions = std::lround(dial_.NumberOr(Divisions, StandardDivisions));
    const double step = (dial_.NumberOr(LastValue, StandardLast) - first) / static_cast<double>(divisions);
    std::size_t longest = 0;
    for (long i = 0; i <= divisions; ++i) {
      const double value = first + static_cast<double>(i) * step;
      longest = std::max(longest, FloatText(static_cast<float>(value)).size());
    }
    return longest;
  }

  // Every how many divisions there is room for a figure, which a whole number of times makes the scale.
  double FigureStep(double divisions) const {
    const std::size_t digits = LongestFigure();
    constexpr double digitWidth = 0.6;
    const double digitMm = FigurePoints() * MillimetresPerInch / 72 * digitWidth;
    const double room = std::abs(end_ - start_) * std::numbers::pi / 180 * radius_ * (1 + FigureDistance);
    for (double every = 1; every < divisions; ++every) {
      const bool divides = std::fmod(divisions, every) == 0;
      if (divides && room * every / divisions > static_cast<double>(digits + 1) * digitMm) return every;
    }
    return divisions;
  }

  void WriteTexts() {
    std::vector<MeterField> texts = {Title, Label, Unit};
    std::erase_if(texts, [this](MeterField field) { return !dial_.Find(field); });
    if (texts.empty()) return;
    Heading(TextId::MeterScriptTexts);
    const Point middle = Middle() * TextDistance;
    double y = middle.Y + TextLine * static_cast<double>(texts.size() - 1) / 2;
    const std::string ink = dial_.Find(TextColour) ? VariableOf(TextColour) : "";
    const auto place = [](double part) {
      return std::abs(part) < 0.0005 ? std::string("0") : Rounded(part) + "*%Rayon";
    };
    for (const MeterField field : texts) {
      Line("Texte = " + place(middle.X) + ", " + place(y) + ", " + ink + ", *" +
           Rounded(field == Title ? TitleFactor : 1) + " C, " + VariableOf(field));
      y -= TextLine;
    }
  }

  bool HasFace() const { return dial_.Find(Width) || dial_.Find(Height) || dial_.Find(FaceColour); }
  std::string Corners() const {
    const Point centre = Centre();
    const auto at = [](double middle, const std::string& half) {
      return middle == 0 ? half : half + Plus(middle);
    };
    return at(centre.X, "-%Largeur/2") + ", " + at(centre.Y, "-%Hauteur/2") + ", " +
           at(centre.X, "%Largeur/2") + ", " + at(centre.Y, "%Hauteur/2");
  }

  void WriteOutline() {
    if (!HasFace()) return;
    Heading(TextId::MeterScriptOutline);
    Line("EpaisT = 0.2mm");
    Line("Cadre = " + Corners());
  }

  MeterDial dial_;
  const StringTable& strings_;
  int base_;
  double start_ = 0, end_ = 0, radius_ = 0;
  Box box_;
  MeterScript script_;
};

}  // namespace

Result<MeterScript> ImportMeter(std::string bytes, std::string_view fileName, const StringTable& strings,
                                int languageBase) {
  const Failure noDial{TextId::NotAMeterFile, std::string(fileName)};
  std::optional<DecodedText> decoded = DecodeText(std::move(bytes));
  if (!decoded) return noDial;
  std::optional<MeterDial> dial = ReadMeterDial(NormaliseLineEnds(std::move(decoded->Text)));
  if (!dial) return noDial;
  return MeterWriter(*std::move(dial), strings, languageBase).Write(fileName);
}

}  // namespace vaxel
