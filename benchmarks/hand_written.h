// What programs share that are written by hand for one dial each: they know no script and no options, and
// print the same bytes as vaxel-render. Nothing of Vaxel is in them.
#pragma once

#include <cmath>
#include <cstdio>

namespace hand_written {

constexpr double RadiansPerDegree = 0.017453293;
constexpr double CentreX = 100, CentreY = 100;  // of the page, which is 200 mm wide and high
constexpr double Sweep = 270;
constexpr double FirstAngle = -45;  // 0 is to the left, 90 up

struct Place {
  double X, Y;
};

// Millimetres with at most four decimals and no zeros at their end.
inline double Rounded(double value) {
  return std::round(value * 1e4) / 1e4;
}

inline Place OnDial(double angle, double radius) {
  const double radians = angle * RadiansPerDegree;
  return {CentreX - radius * std::cos(radians), CentreY - radius * std::sin(radians)};
}

inline void PrintHead() {
  std::printf(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200mm\" height=\"200mm\" viewBox=\"0 0 200 200\" "
      "fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" "
      "text-rendering=\"geometricPrecision\" "
      "style=\"font-kerning:none;font-variant-ligatures:none;font-feature-settings:'kern' 0,'liga' 0\">\n");
}

inline void PrintEnd() {
  std::printf("</svg>\n");
}

inline void PrintLine(Place from, Place to, const char* colour, double width, int line) {
  std::printf(
      "<line x1=\"%.9g\" y1=\"%.9g\" x2=\"%.9g\" y2=\"%.9g\" stroke=\"%s\" stroke-width=\"%.9g\" "
      "data-line=\"%d\"/>\n",
      Rounded(from.X), Rounded(from.Y), Rounded(to.X), Rounded(to.Y), colour, Rounded(width), line);
}

inline void PrintMarks(int count, double first, double sweep, double radius, double length, double width,
                       int line) {
  for (int i = 0; i <= count; ++i) {
    const double angle = first + i * sweep / count;
    PrintLine(OnDial(angle, radius), OnDial(angle, radius + length), "#000000", width, line);
  }
}

inline void PrintArc(double first, double sweep, double radius, int line) {
  const Place from = OnDial(first + sweep, radius);
  const Place middle = OnDial(first + sweep / 2, radius);
  const Place to = OnDial(first, radius);
  std::printf(
      "<path d=\"M%.9g %.9g A%.9g %.9g 0 0 0 %.9g %.9g A%.9g %.9g 0 0 0 %.9g %.9g\" stroke=\"#000000\" "
      "stroke-width=\"0.5\" data-line=\"%d\"/>\n",
      Rounded(from.X), Rounded(from.Y), radius, radius, Rounded(middle.X), Rounded(middle.Y), radius, radius,
      Rounded(to.X), Rounded(to.Y), line);
}

}  // namespace hand_written
