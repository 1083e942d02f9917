// Where the fills of scripts end: the colours just inside and just outside their edges, in the PNG as
// written.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "geometry/point.h"
#include "tests/render/cairo_outputs.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr double Side = 120;  // of the sheet, with the origin in its middle
constexpr double Dpi = 508;   // 20 pixels a millimetre
constexpr double Beside = 0.15;

constexpr Colour Red = 0x0000FF, Green = 0x00FF00, Blue = 0xFF0000, Cyan = 0xFFFF00;

Picture DrawOnSheet(const std::string& script, const std::string& name) {
  RunSettings settings = ForPrinter();
  settings.Target.WidthMm = settings.Target.HeightMm = Side;
  const ScriptRun run = RunText(script, settings);
  EXPECT_EQ(run.Reason(), "") << script;
  return ThroughPng(run.List, name, Dpi);
}

Point Polar(double radius, double degrees, Point centre = {}) {
  const double angle = degrees * RadiansPerDegree;
  return centre + Point{std::cos(angle), std::sin(angle)} * radius;
}

// A place on the edge of a fill, in the script's coordinates, and the direction that leads out there,
// degrees.
struct Edge {
  Point At;
  double Outward;
};
using Edges = std::vector<Edge>;

// An arc about a centre, seen in two directions and midway between them.
void AddArc(Edges& edges, Point centre, double radius, double first, double last, bool isOutside) {
  for (double degrees : {first, (first + last) / 2, last}) {
    edges.push_back({Polar(radius, degrees, centre), isOutside ? degrees : degrees + 180});
  }
}

// A ray of the origin, seen at two distances and midway between them. The fill lies to the left of the ray
// with which it starts, and to the right of that with which it ends.
void AddRay(Edges& edges, double degrees, double first, double last, bool isEnd) {
  for (double distance : {first, (first + last) / 2, last}) {
    edges.push_back({Polar(distance, degrees), isEnd ? degrees + 90 : degrees - 90});
  }
}

Edges Slices(double radius, std::initializer_list<std::array<double, 2>> ranges) {
  Edges edges;
  for (const auto& [start, end] : ranges) {
    AddArc(edges, {}, radius, start + 0.5, end - 0.5, true);
    AddRay(edges, start, 1, radius - 1, false);
    AddRay(edges, end, 1, radius - 1, true);
  }
  return edges;
}

// A band between two circles about one centre, seen in two directions from there, and two rays of the origin,
// seen at two distances.
struct Band {
  Point Centre;
  double Inner, Outer, First, Last;
  double StartRay, EndRay, Near, Far;
};

Edges EdgesOf(const Band& band) {
  Edges edges;
  AddArc(edges, band.Centre, band.Inner, band.First, band.Last, false);
  AddArc(edges, band.Centre, band.Outer, band.First, band.Last, true);
  AddRay(edges, band.StartRay, band.Near, band.Far, false);
  AddRay(edges, band.EndRay, band.Near, band.Far, true);
  return edges;
}

struct Painted {
  std::string Script;
  Colour Inside;
  Edges Seen;
};

std::vector<Painted> Slices() {
  return {{"CercleP = 0,0,20,-45,45,rouge", Red, Slices(20, {{-45, 45}})},
          {"CercleP = 0,0,20,330,30,rouge", Red, Slices(20, {{-30, 30}})},
          {"CercleP = 0,0,20,30,330,rouge", Red, Slices(20, {{30, 330}})},
          {"Voyant = 0,0,40,2,vert", Green, Slices(20, {{0, 90}, {180, 270}})},
          {"Voyant = 0,0,40,3,vert", Green, Slices(20, {{90, 180}, {270, 360}})},
          {"Voyant = 0,0,40,4,vert", Green, Slices(20, {{45, 135}, {225, 315}})},
          {"Voyant = 0,0,40,5,vert", Green, Slices(20, {{-45, 45}, {135, 225}})}};
}

std::vector<Painted> Figures() {
  return {
      {"CadreAP = -10,10,10,-5,5,vert",
       Green,
       {{{0, 10}, 90},
        {{10, 2}, 0},
        {Polar(5, 45, {5, 5}), 45},
        {Polar(5, 135, {-5, 5}), 135},
        {Polar(5, 225, {-5, 0}), 225},
        {Polar(5, 315, {5, 0}), 315}}},
      {"CadreAP = -10,10,10,-5,5§D,vert", Green, {{{7.5, 7.5}, 45}, {{-10, 2}, 180}, {{-7.5, -2.5}, 225}}},
      // Through the tips (0, ±20) and (26, 0): a circle about (k, 0) with 20² + k² = (26 − k)², k = 276 / 52.
      // Through the tips and (14, 0): 20² + k² = (14 − k)², k = −204 / 28.
      {"DemiLuneP = 0,0,20,-90,90,12,rouge",
       Red,
       {{{26, 0}, 0},
        {Polar(20.6923, -60, {5.3077, 0}), -60},
        {Polar(20.6923, 80, {5.3077, 0}), 80},
        {{14, 0}, 180},
        {Polar(21.2857, -30, {-7.2857, 0}), 150},
        {Polar(21.2857, 60, {-7.2857, 0}), 240}}},
      // The head is 6 wide and 3 / tan 30° = 5.196 long: from (14.804, ±3) to (20, 0).
      {"FlecheP = 0,0,0,20,2,60,bleu",
       Blue,
       {{{0, 0}, 180}, {{7, 1}, 90}, {{14.804, 2.5}, 180}, {{17.402, 1.5}, 60}, {{17.402, -1.5}, -60}}},
      // The head's sides are 10 long, 15° from the shaft: from (20 − 9.6593, ±2.5882) to (20, 0).
      {"FlecheP = -20,0,0,40,,,bleu", Blue, {{{10.3407, 2}, 180}, {{15.1704, 1.2941}, 75}}}};
}

// The ends of a band lie on rays of the needle's pivot, the origin; its edges on circles about the arc's
// centre (0, −20), on which the marks end too. The one that meets the ray of 45° at ρ has the radius √(20² +
// ρ² + 2·20·ρ·sin 45°): 65.6827 for 50, 71.5536 for 56, 57.8959 for 42, 63.7311 for 48.
std::vector<Painted> Sectors() {
  const std::string offset = "Decal = 20,N\nArc = 45,135,50,N\n";
  Edges ring;
  AddArc(ring, {}, 15, -179, 181, false);
  AddArc(ring, {}, 18, -90, 180, true);
  return {// 25 lies at 67.5° from the left, 75 at 112.5°. That ray meets the circles where
          // t² + 40·sin 67.5°·t + 400 = r²: 46.76 and 52.67 from the pivot, 74.2° and 73.6° from the centre.
          {offset + "SectP = 25,75,0,6,rouge", Red,
           EdgesOf({{0, -20}, 65.6827, 71.5536, 74.6, 105.4, 67.5, 112.5, 47.1, 52.3})},
          {offset + "EpaisT = 0.2mm\nGrad = 2,6", Black, {{{0, 45.6827}, 270}, {{0, 51.5536}, 90}}},
          // To the other side. 20 lies at 63° from the left, 60 at 99°: rays of 117° and 81°, which meet the
          // circles at 39.36 and 45.26, 38.06 and 43.90, from the centre at 108.0° and 84.1°.
          {offset + "Inversion\nSectP = 20,60,2,6,bleu", Blue,
           EdgesOf({{0, -20}, 57.8959, 63.7311, 84.6, 107.5, 81, 117, 39.8, 43.5})},
          {"Arc = 0,360,15,N\nSectP = 0,100,0,3,bleu", Blue, ring},
          {"Droite = -40,40,10,N\nSectP = 25,75,0,5,cyan",
           Cyan,
           {{{0, 10}, 270}, {{0, 15}, 90}, {{-20, 12}, 180}, {{20, 12}, 0}}},
          {"DroiteV = -40,40,10,N\nSectP = 25,75,-3,5,cyan",
           Cyan,
           {{{7, 0}, 180}, {{12, 0}, 0}, {{10, -20}, 270}, {{10, 20}, 90}}}};
}

void ExpectPainted(const std::vector<Painted>& all, const std::string& name) {
  for (const auto& [script, inside, edges] : all) {
    const Picture picture = DrawOnSheet(script, name);
    ASSERT_NEAR(picture.HeightMm(), Side, 0.05) << script;
    for (const auto& [at, outward] : edges) {
      const auto seen = [&](double away) {
        const Point place = Polar(away, outward, at);
        return picture.ColourAt({Side / 2 + place.X, Side / 2 - place.Y});
      };
      const std::string where = script + " at " + std::to_string(at.X) + ", " + std::to_string(at.Y);
      EXPECT_EQ(seen(-Beside), inside) << where;
      EXPECT_EQ(seen(Beside), White) << where;
    }
  }
}

TEST(PaintedShapes, SlicesRunCounterClockwiseAlsoThrough0) {
  ExpectPainted(Slices(), "slices");
}

TEST(PaintedShapes, FiguresEndAtTheirEdges) {
  ExpectPainted(Figures(), "shapes");
}

TEST(PaintedShapes, SectorsEndOnRaysAndOnTheCirclesOfTheMarks) {
  ExpectPainted(Sectors(), "sectors");
}

}  // namespace
}  // namespace vaxel::test
