// The picture of dial.dat.
#include "benchmarks/hand_written.h"

namespace hand_written {
namespace {

constexpr double Radius = 60;

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

// Marks with square ends are filled boxes along the ray.
void PrintMainMarks(int count, double length, double width, int line) {
  for (int i = 0; i <= count; ++i) {
    const double angle = FirstAngle + i * Sweep / count;
    const Place from = OnDial(angle, Radius);
    const Place to = OnDial(angle, Radius + length);
    const double acrossX = width / 2 * std::sin(angle * RadiansPerDegree);
    const double acrossY = width / 2 * std::cos(angle * RadiansPerDegree);
    std::printf(
        "<polygon points=\"%.9g,%.9g %.9g,%.9g %.9g,%.9g %.9g,%.9g\" fill=\"#000000\" "
        "data-line=\"%d\"/>\n",
        Rounded(from.X + acrossX), Rounded(from.Y - acrossY), Rounded(from.X - acrossX),
        Rounded(from.Y + acrossY), Rounded(to.X - acrossX), Rounded(to.Y + acrossY), Rounded(to.X + acrossX),
        Rounded(to.Y - acrossY), line);
  }
}

void PrintDial() {
  PrintHead();
  PrintArc(FirstAngle, Sweep, Radius, 4);
  PrintMarks(120, FirstAngle, Sweep, Radius, 4, 0.3, 7);
  PrintMarks(24, FirstAngle, Sweep, Radius, 6, 0.45, 8);
  PrintMainMarks(12, 9, 0.7, 9);
  PrintPlus({100, 100}, 5, "#000000", 0.3, 12);
  PrintLine({50, 160}, {150, 160}, "#000000", 0.4, 13);
  PrintLine({50, 160}, {50, 164}, "#000000", 0.4, 14);
  PrintLine({150, 160}, {150, 164}, "#000000", 0.4, 15);
  PrintPlus({70, 130}, 2, "#ff0000", 0.3, 16);
  PrintBox(80, 125, 120, 140, "#000000", 20);
  PrintBox(20, 20, 180, 170, "#0000ff", 21);
  PrintEnd();
}

}  // namespace
}  // namespace hand_written

int main() {
  hand_written::PrintDial();
}
