// The picture of dial.dat as a program that knows this one dial alone would print it: no script, no options.
// Its output is the same, byte for byte, as vaxel-render's.
#include <cmath>
#include <cstdio>

namespace {

constexpr double RadiansPerDegree = 0.017453293;
constexpr double CentreX = 100, CentreY = 100;  // of the page, which is 200 mm wide and high
constexpr double Radius = 60;
constexpr double Sweep = 270;
constexpr double FirstAngle = -45;  // 0 is to the left, 90 up
constexpr double Pixel = 25.4 / 96;

struct Place {
  double X, Y;
};

// Millimetres with at most four decimals and no zeros at their end.
double Rounded(double value) {
  return std::round(value * 1e4) / 1e4;
}

Place OnDial(double angle, double radius) {
  const double radians = angle * RadiansPerDegree;
  return {CentreX - radius * std::cos(radians), CentreY - radius * std::sin(radians)};
}

void PrintLine(Place from, Place to, const char* colour, double width, int line) {
  std::printf(
      "<line x1=\"%.9g\" y1=\"%.9g\" x2=\"%.9g\" y2=\"%.9g\" stroke=\"%s\" stroke-width=\"%.9g\" "
      "data-line=\"%d\"/>\n",
      Rounded(from.X), Rounded(from.Y), Rounded(to.X), Rounded(to.Y), colour, width, line);
}

void PrintPlus(Place centre, double half, const char* colour, double width, int line) {
  PrintLine({centre.X - half, centre.Y}, {centre.X + half, centre.Y}, colour, width, line);
  PrintLine({centre.X, centre.Y + half}, {centre.X, centre.Y - half}, colour, width, line);
}

void PrintBox(double left, double top, double right, double bottom, const char* colour, int line) {
  std::printf(
      "<polygon points=\"%.9g,%.9g %.9g,%.9g %.9g,%.9g %.9g,%.9g\" stroke=\"%s\" stroke-width=\"0.3\" "
      "data-line=\"%d\"/>\n",
      left, bottom, right, bottom, right, top, left, top, colour, line);
}

void PrintMarks(int count, double length, double width, int line) {
  for (int i = 0; i <= count; ++i) {
    const double angle = FirstAngle + i * Sweep / count;
    PrintLine(OnDial(angle, Radius), OnDial(angle, Radius + length), "#000000", width, line);
  }
}

// Marks with square ends are filled boxes along the ray.
void PrintMainMarks(int count, double length, double width, int line) {
  for (int i = 0; i <= count; ++i) {
    const double angle = FirstAngle + i * Sweep / count;
    const Place from = OnDial(angle, Radius);
    const Place to = OnDial(angle, Radius + length);
    const double acrossX = width / 2 * std::sin(angle * RadiansPerDegree);
    const double acrossY = width / 2 * std::cos(angle * RadiansPerDegree);
    std::printf(
        "<polygon points=\"%.9g,%.9g %.9g,%.9g %.9g,%.9g %.9g,%.9g\" fill=\"#000000\" stroke=\"#000000\" "
        "stroke-width=\"%.9g\" data-line=\"%d\"/>\n",
        Rounded(from.X + acrossX), Rounded(from.Y - acrossY), Rounded(from.X - acrossX),
        Rounded(from.Y + acrossY), Rounded(to.X - acrossX), Rounded(to.Y + acrossY), Rounded(to.X + acrossX),
        Rounded(to.Y - acrossY), Rounded(Pixel), line);
  }
}

void PrintArc(int line) {
  const Place from = OnDial(FirstAngle + Sweep, Radius);
  const Place middle = OnDial(FirstAngle + Sweep / 2, Radius);
  const Place to = OnDial(FirstAngle, Radius);
  std::printf(
      "<path d=\"M%.9g %.9g A60 60 0 0 0 %.9g %.9g A60 60 0 0 0 %.9g %.9g\" stroke=\"#000000\" "
      "stroke-width=\"0.5\" data-line=\"%d\"/>\n",
      Rounded(from.X), Rounded(from.Y), Rounded(middle.X), Rounded(middle.Y), Rounded(to.X), Rounded(to.Y),
      line);
}

}  // namespace

int main() {
  std::printf(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200mm\" height=\"200mm\" viewBox=\"0 0 200 200\" "
      "fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n");
  PrintArc(4);
  PrintMarks(120, 4, 0.3, 7);
  PrintMarks(24, 6, 0.45, 8);
  PrintMainMarks(12, 9, 0.7, 9);
  PrintPlus({100, 100}, 5, "#000000", 0.3, 12);
  PrintLine({50, 160}, {150, 160}, "#000000", 0.4, 13);
  PrintLine({50, 160}, {50, 164}, "#000000", 0.4, 14);
  PrintLine({150, 160}, {150, 164}, "#000000", 0.4, 15);
  PrintPlus({70, 130}, 2, "#ff0000", 0.3, 16);
  PrintBox(80, 125, 120, 140, "#000000", 20);
  PrintBox(20, 20, 180, 170, "#0000ff", 21);
  std::printf("</svg>\n");
}
