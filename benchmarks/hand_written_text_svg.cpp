// The picture of text-dial.dat.
#include "benchmarks/hand_written.h"

namespace hand_written {
namespace {

constexpr double MillimetresPerPoint = 25.4 / 72;
constexpr const char *Black = "#000000", *Blue = "#0000ff", *Red = "#ff0000";

// Of the characters from the blank to "~", and of the degree sign, in 1/2048 of the size.
using Widths = short[96];
constexpr Widths TimesWidths = {
    512,  682,  836,  1024, 1024, 1706, 1593, 369,  682,  682,  1024, 1155, 512,  682,  512,  569,
    1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 569,  569,  1155, 1155, 1155, 909,
    1886, 1479, 1366, 1366, 1479, 1251, 1139, 1479, 1479, 682,  797,  1479, 1251, 1821, 1479, 1479,
    1139, 1479, 1366, 1139, 1251, 1479, 1479, 1933, 1479, 1479, 1251, 682,  569,  682,  961,  1024,
    682,  909,  1024, 909,  1024, 909,  682,  1024, 1024, 569,  569,  1024, 569,  1593, 1024, 1024,
    1024, 1024, 682,  797,  569,  1024, 1024, 1479, 1024, 1024, 909,  983,  410,  983,  1108, 819};
constexpr Widths TimesBoldWidths = {
    512,  682,  1137, 1024, 1024, 2048, 1706, 569,  682,  682,  1024, 1167, 512,  682,  512,  569,
    1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 682,  682,  1167, 1167, 1167, 1024,
    1905, 1479, 1366, 1479, 1479, 1366, 1251, 1593, 1593, 797,  1024, 1593, 1366, 1933, 1479, 1593,
    1251, 1593, 1479, 1139, 1366, 1479, 1479, 2048, 1479, 1479, 1366, 682,  569,  682,  1190, 1024,
    682,  1024, 1139, 909,  1139, 909,  682,  1024, 1139, 569,  682,  1139, 569,  1706, 1139, 1024,
    1139, 1139, 909,  797,  682,  1139, 1024, 1479, 1024, 1024, 909,  807,  451,  807,  1065, 819};
constexpr Widths TimesItalicWidths = {
    512,  682,  860,  1024, 1024, 1706, 1593, 438,  682,  682,  1024, 1382, 512,  682,  512,  569,
    1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 682,  682,  1382, 1382, 1382, 1024,
    1884, 1251, 1251, 1366, 1479, 1251, 1251, 1479, 1479, 682,  909,  1366, 1139, 1706, 1366, 1479,
    1251, 1479, 1251, 1024, 1139, 1479, 1251, 1706, 1251, 1139, 1139, 797,  569,  797,  864,  1024,
    682,  1024, 1024, 909,  1024, 909,  569,  1024, 1024, 569,  569,  909,  569,  1479, 1024, 1024,
    1024, 1024, 797,  797,  569,  1024, 909,  1366, 909,  909,  797,  819,  563,  819,  1108, 819};
constexpr Widths ArialWidths = {
    569,  569,  727,  1139, 1139, 1821, 1366, 391,  682,  682,  797,  1196, 569,  682,  569,  569,
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 569,  569,  1196, 1196, 1196, 1139,
    2079, 1366, 1366, 1479, 1479, 1366, 1251, 1593, 1479, 569,  1024, 1366, 1139, 1706, 1479, 1593,
    1366, 1593, 1479, 1366, 1251, 1479, 1366, 1933, 1366, 1366, 1251, 569,  569,  569,  961,  1139,
    682,  1139, 1139, 1024, 1139, 1139, 569,  1139, 1139, 455,  455,  1024, 455,  1706, 1139, 1139,
    1139, 1139, 682,  1024, 569,  1139, 1024, 1479, 1024, 1024, 1024, 684,  532,  684,  1196, 819};
constexpr Widths ArialBoldWidths = {
    569,  682,  971,  1139, 1139, 1821, 1479, 487,  682,  682,  797,  1196, 569,  682,  569,  569,
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 682,  682,  1196, 1196, 1196, 1251,
    1997, 1479, 1479, 1479, 1479, 1366, 1251, 1593, 1479, 569,  1139, 1479, 1251, 1706, 1479, 1593,
    1366, 1593, 1479, 1366, 1251, 1479, 1366, 1933, 1366, 1366, 1251, 682,  569,  682,  1196, 1139,
    682,  1139, 1251, 1139, 1251, 1139, 682,  1251, 1251, 569,  569,  1139, 569,  1821, 1251, 1251,
    1251, 1251, 797,  1139, 682,  1251, 1139, 1593, 1139, 1139, 1024, 797,  573,  797,  1196, 819};
constexpr Widths CourierWidths = {
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229,
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229,
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229,
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229,
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229,
    1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229, 1229};

// The style is what the element says of it; the rest is in 1/2048 of the size.
struct Face {
  const char *Families, *Style;
  const Widths& Of;
  double Ascent, Descent;
};

constexpr const char* TimesFamilies = "'Times New Roman','Liberation Serif',Tinos,serif";
constexpr const char* ArialFamilies = "'Arial','Liberation Sans',Arimo,sans-serif";
constexpr const char* CourierFamilies = "'Courier New','Liberation Mono',Cousine,monospace";

constexpr Face Times = {TimesFamilies, "", TimesWidths, 1825, 443};
constexpr Face TimesBold = {TimesFamilies, " font-weight=\"bold\"", TimesBoldWidths, 1825, 443};
constexpr Face TimesItalic = {TimesFamilies, " font-style=\"italic\"", TimesItalicWidths, 1825, 443};
constexpr Face Arial = {ArialFamilies, "", ArialWidths, 1854, 434};
constexpr Face ArialBold = {ArialFamilies, " font-weight=\"bold\"", ArialBoldWidths, 1854, 434};
constexpr Face CourierBold = {CourierFamilies, " font-weight=\"bold\"", CourierWidths, 1705, 615};

// A face in a size of so many points.
struct Font {
  Font(const Face& face, double points) : In(face), Size(points * MillimetresPerPoint) {}

  double Ascent() const { return In.Ascent / 2048 * Size; }
  double Height() const { return Ascent() + In.Descent / 2048 * Size; }
  double Length(const char* text) const {
    int sum = 0;
    for (; *text; ++text) {
      // The degree sign has two bytes.
      if (*text != '\xC2') sum += In.Of[*text == '\xB0' ? 95 : *text - ' '];
    }
    return sum / 2048.0 * Size;
  }

  const Face& In;
  double Size;
};

// From a place so far along a baseline and so far above it.
Place Moved(Place from, double rotation, double along, double up) {
  const double cosine = std::cos(rotation * RadiansPerDegree), sine = std::sin(rotation * RadiansPerDegree);
  return {from.X + along * cosine - up * sine, from.Y - along * sine - up * cosine};
}

void PrintText(const Font& font, Place start, double rotation, const char* text, const char* colour,
               int line) {
  const double x = Rounded(start.X), y = Rounded(start.Y);
  std::printf("<text x=\"%.9g\" y=\"%.9g\"", x, y);
  if (rotation != 0) std::printf(" transform=\"rotate(%.9g %.9g %.9g)\"", Rounded(-rotation), x, y);
  std::printf(
      " font-family=\"%s\"%s font-size=\"%.9g\" textLength=\"%.9g\" lengthAdjust=\"spacingAndGlyphs\"%s "
      "fill=\"%s\" data-line=\"%d\">",
      font.In.Families, font.In.Style, Rounded(font.Size), Rounded(font.Length(text)),
      *text == ' ' ? " xml:space=\"preserve\"" : "", colour, line);
  for (; *text; ++text) {
    if (*text == '<') {
      std::fputs("&lt;", stdout);
    } else if (*text == '>') {
      std::fputs("&gt;", stdout);
    } else if (*text == '&') {
      std::fputs("&amp;", stdout);
    } else if (*text == '"') {
      std::fputs("&quot;", stdout);
    } else {
      std::putchar(*text);
    }
  }
  std::fputs("</text>\n", stdout);
}

void PrintCentred(const Font& font, Place middle, double rotation, const char* text, const char* colour,
                  int line) {
  const double down = (2 * font.Ascent() - font.Height()) / 2;
  PrintText(font, Moved(middle, rotation, -font.Length(text) / 2, -down), rotation, text, colour, line);
}

enum class Direction { Level, Tangent, Ray };

double RotationAt(double angle, Direction direction) {
  const double ray = 180 - angle;
  // Along a ray to the left a text is read toward the pivot.
  const double readable = ray > 90 ? ray + 180 : ray;
  const double rotation = direction == Direction::Ray       ? readable
                          : direction == Direction::Tangent ? ray - 90
                                                            : 0;
  return std::remainder(rotation, 360);
}

struct Series {
  int Count;
  double First, Step;  // the values
  const char* Unit;
};

void PrintValues(const Font& font, const Series& series, double firstAngle, double sweep, double radius,
                 Direction direction, const char* colour, int line) {
  for (int i = 0; i <= series.Count; ++i) {
    const double angle = firstAngle + i * sweep / series.Count;
    char text[40];
    std::snprintf(text, sizeof text, "%.7g%s", series.First + i * series.Step, series.Unit);
    PrintCentred(font, OnDial(angle, radius), RotationAt(angle, direction), text, colour, line);
  }
}

// Character by character, the middle of the whole at an angle; 0 is to the right here. With a negative radius
// it runs along the inside.
void PrintAlongArc(const Font& font, double radius, double angle, const char* text, const char* colour,
                   int line) {
  const double degreesPerMillimetre = 1 / (radius * RadiansPerDegree);
  angle += font.Length(text) / 2 * degreesPerMillimetre;
  for (; *text; ++text) {
    const char character[2] = {*text, 0};
    const double length = font.Length(character);
    angle -= length / 2 * degreesPerMillimetre;
    const double rotation = std::remainder(radius > 0 ? angle - 90 : angle + 90, 360);
    const Place middle = Moved({CentreX, CentreY}, angle, std::fabs(radius), 0);
    PrintText(font, Moved(middle, rotation, -length / 2, 0), rotation, character, colour, line);
    angle -= length / 2 * degreesPerMillimetre;
  }
}

void PrintTitles() {
  const Font title(TimesBold, 14), subtitle(Times, 10), small(Times, 8);
  PrintCentred(title, {100, 78}, 0, "Temperature", Black, 36);

  const char* const bearing = "of the outer bearing";
  PrintCentred(subtitle, {100, 86}, 0, bearing, Black, 38);
  const double thickness = 100 / 2048.0 * subtitle.Size;
  const double half = (subtitle.Length(bearing) - thickness) / 2;
  const double y = 86 + subtitle.Ascent() - subtitle.Height() / 2 + 173 / 2048.0 * subtitle.Size;
  PrintLine({100 - half, y}, {100 + half, y}, Black, thickness, 38);

  const char *const type = "Type T-270 \"Bearing\"", *const precision = "Class 1.5 <horizontal>";
  PrintText(small, Moved({8, 100}, 90, -small.Length(type) / 2, 0), 90, type, Black, 39);
  PrintText(small, Moved({192, 100}, -90, -small.Length(precision) / 2, 0), -90, precision, Black, 40);

  const char* const left[] = {"Range", "Supply", "Output", "Weight"};
  const char* const right[] = {"-10 to 30 degrees", "24 V & 0.1 A", "4 to 20 mA", "180 g"};
  for (int i = 0; i < 4; ++i) {
    PrintText(small, {60, 120 + small.Ascent() + i * small.Height()}, 0, left[i], Black, 41 + i);
  }
  for (int i = 0; i < 4; ++i) {
    const double start = 140 - small.Length(right[i]);
    PrintText(small, {start, 120 + small.Ascent() + i * small.Height()}, 0, right[i], Black, 45 + i);
  }
}

void PrintDial() {
  const double radius = 70, innerRadius = 46;
  PrintHead();
  PrintArc(FirstAngle, Sweep, radius, 8);
  PrintMarks(120, FirstAngle, Sweep, radius, 3, 0.3, 9);
  PrintMarks(24, FirstAngle, Sweep, radius, 5, 0.5, 10);
  PrintValues({Arial, 9}, {24, 0, 5, ""}, FirstAngle, Sweep, radius + 10, Direction::Level, Black, 11);
  PrintValues({Times, 6}, {60, 0, 0.25, ""}, FirstAngle, Sweep, radius - 4, Direction::Tangent, Black, 14);
  PrintValues({TimesItalic, 6}, {27, -45, 10, "°"}, FirstAngle, Sweep, radius + 19, Direction::Ray, Blue, 16);

  PrintArc(0, 180, innerRadius, 21);
  PrintMarks(40, 0, 180, innerRadius, 2, 0.3, 22);
  PrintValues({CourierBold, 6}, {40, -10, 1, ""}, 0, 180, innerRadius + 5, Direction::Level, Black, 23);
  const struct {
    double Percent;
    const char *Name, *Colour;
  } zones[] = {{20, "cold", Blue}, {50, "normal", Black}, {80, "hot", Red}};
  for (const auto& zone : zones) {
    const double angle = 1.8 * zone.Percent;
    PrintCentred({Arial, 7}, OnDial(angle, innerRadius - 5), RotationAt(angle, Direction::Tangent), zone.Name,
                 zone.Colour, 26);
  }

  PrintAlongArc({ArialBold, 8}, 34, 90, "VAXEL PRECISION", Red, 30);
  PrintAlongArc({ArialBold, 8}, -64, 270, "Made to measure", Black, 31);
  PrintTitles();
  PrintEnd();
}

}  // namespace
}  // namespace hand_written

int main() {
  hand_written::PrintDial();
}
