#include "render/svg_renderer.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <numbers>
#include <string>
#include <utility>

#include "render/decimal_text.h"

namespace vaxel {
namespace {

class StringSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override { text += bytes; }
  std::string text;
};

std::string SvgOf(const DisplayList& list) {
  StringSink sink;
  SvgRenderer renderer(sink);
  PlayPage(list, 0, renderer);
  return sink.text;
}

TEST(SvgRenderer, WritesOneElementAnOperation) {
  DisplayList list;
  list.BeginPage(200, 99.5);
  const auto add = [&](std::uint32_t line, Shape figure) {
    list.Add({0.25, MakeColour(255, 0, 0), line, figure});
  };
  const Fill blue{true, MakeColour(0, 0, 255)};
  constexpr double turn = 2 * std::numbers::pi;
  add(1, LineShape{{1, 2}, {3.00004, -4.56789}});
  add(2, RectangleShape{{5, 8}, {1, 2}, blue});
  list.AddPolygon(std::array{Point{1, 1}, Point{2, 1}, Point{1, 2}}, blue, {0.25, 0, 3, {}});
  add(4, CircleShape{{10, 10}, 5, 5});
  add(5, CircleShape{{10, 10}, 5, 2, 0, 0, blue});
  add(6, CircleShape{{10, 10}, 5, 5, 0, turn / 2, {}, CircleForm::Arc});
  add(7, CircleShape{{10, 10}, 5, 5, 0, turn / 4, blue, CircleForm::Pie});
  add(8, LineShape{{7, 7}, {7, 7}});
  add(8, CircleShape{{10, 10}, 5, 5, 0, turn / 2, {}, CircleForm::Arc, true});
  // What outlines a stroke belongs to devices of pixels.
  list.AddPolygon(std::array{Point{1, 2}, Point{1, 1}, Point{9, 1}, Point{9, 2}}, blue, {0.25, 0, 8, {}},
                  PolygonUse::Stroke);
  const Operation red{0, MakeColour(255, 0, 0), 9, {}};
  list.AddText("1 < 2 & 2 > \"µ\"", {"Arial", true, true}, {{4, 5}, -turn / 12, 3.5, 10.25}, red);
  list.AddText("x ", {"D'Or \\", false, false}, {{4, 5}, 0, 3.5, 0}, red);
  EXPECT_EQ(
      SvgOf(list),
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200mm\" height=\"99.5mm\" viewBox=\"0 0 200 99.5\" "
      "fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" "
      "text-rendering=\"geometricPrecision\" "
      "style=\"font-kerning:none;font-variant-ligatures:none;font-feature-settings:'kern' 0,'liga' 0\">\n"
      "<line x1=\"1\" y1=\"2\" x2=\"3\" y2=\"-4.5679\" stroke=\"#ff0000\" stroke-width=\"0.25\" "
      "data-line=\"1\"/>\n"
      "<rect x=\"1\" y=\"2\" width=\"4\" height=\"6\" fill=\"#0000ff\" stroke=\"#ff0000\" "
      "stroke-width=\"0.25\" "
      "data-line=\"2\"/>\n"
      "<polygon points=\"1,1 2,1 1,2\" fill=\"#0000ff\" stroke=\"#000000\" stroke-width=\"0.25\" "
      "data-line=\"3\"/>\n"
      "<circle cx=\"10\" cy=\"10\" r=\"5\" stroke=\"#ff0000\" stroke-width=\"0.25\" data-line=\"4\"/>\n"
      "<ellipse cx=\"10\" cy=\"10\" rx=\"5\" ry=\"2\" fill=\"#0000ff\" stroke=\"#ff0000\" "
      "stroke-width=\"0.25\" "
      "data-line=\"5\"/>\n"
      "<path d=\"M15 10 A5 5 0 0 0 10 5 A5 5 0 0 0 5 10\" stroke=\"#ff0000\" stroke-width=\"0.25\" "
      "data-line=\"6\"/>\n"
      "<path d=\"M10 10 L15 10 A5 5 0 0 0 13.5355 6.4645 A5 5 0 0 0 10 5 Z\" fill=\"#0000ff\" "
      "stroke=\"#ff0000\" "
      "stroke-width=\"0.25\" data-line=\"7\"/>\n"
      "<line x1=\"7\" y1=\"7\" x2=\"7\" y2=\"7\" stroke=\"#ff0000\" stroke-width=\"0.25\" data-line=\"8\"/>\n"
      "<path d=\"M15 10 A5 5 0 0 0 10 5 A5 5 0 0 0 5 10\" stroke-linecap=\"butt\" stroke-linejoin=\"bevel\" "
      "stroke=\"#ff0000\" stroke-width=\"0.25\" data-line=\"8\"/>\n"
      "<polygon points=\"1,2 1,1 9,1 9,2\" fill=\"#0000ff\" data-line=\"8\"/>\n"
      "<text x=\"4\" y=\"5\" transform=\"rotate(30 4 5)\" font-family=\"'Arial','Liberation Sans',Arimo,"
      "sans-serif\" font-weight=\"bold\" font-style=\"italic\" font-size=\"3.5\" textLength=\"10.25\" "
      "lengthAdjust=\"spacingAndGlyphs\" fill=\"#ff0000\" data-line=\"9\">1 &lt; 2 &amp; "
      "2 &gt; &quot;µ&quot;</text>\n"
      "<text x=\"4\" y=\"5\" font-family=\"'D\\'Or \\\\',sans-serif\" "
      "font-size=\"3.5\" xml:space=\"preserve\" fill=\"#ff0000\" data-line=\"9\">x </text>\n"
      "</svg>\n");
}

// What stands in the page, between its start and its end.
std::string ElementsOf(const DisplayList& list) {
  const std::string svg = SvgOf(list);
  const std::size_t start = svg.find('\n') + 1;
  return svg.substr(start, svg.rfind("</svg>") - start);
}

TEST(SvgRenderer, WritesContoursInBothDirections) {
  DisplayList list;
  list.BeginPage(100, 100);
  constexpr double half = std::numbers::pi;
  list.AddContour(std::array{ContourArc{{10, 10}, 5, 0, half}, ContourArc{{10, 12}, 0, 0, 0}},
                  Fill(MakeColour(0, 0, 255)), {0.25, 0, 3, {}});
  list.AddContour(std::array{ContourArc{{10, 10}, 5, 0, -half}}, {}, {0.25, 0, 4, {}});
  EXPECT_EQ(ElementsOf(list),
            "<path d=\"M15 10 A5 5 0 0 0 10 5 A5 5 0 0 0 5 10 L10 12 Z\" fill=\"#0000ff\" stroke=\"#000000\" "
            "stroke-width=\"0.25\" data-line=\"3\"/>\n"
            "<path d=\"M15 10 A5 5 0 0 1 10 15 A5 5 0 0 1 5 10 Z\" stroke=\"#000000\" stroke-width=\"0.25\" "
            "data-line=\"4\"/>\n");
}

// Browsers draw no box and no circle without a width, but its stroke is to be seen.
TEST(SvgRenderer, DrawsFlatFiguresAsLines) {
  DisplayList list;
  list.BeginPage(100, 100);
  list.Add({0.25, 0, 1, RectangleShape{{5, 8}, {1, 8}}});
  list.Add({0.25, 0, 2, RectangleShape{{5, 8}, {5, 1}}});
  list.Add({0.25, 0, 3, CircleShape{{10, 20}, 4, 0}});
  list.Add({0.25, 0, 4, CircleShape{{10, 20}, 0.00004, 4, 0, 3, {}, CircleForm::Arc}});
  EXPECT_EQ(
      ElementsOf(list),
      "<line x1=\"5\" y1=\"8\" x2=\"1\" y2=\"8\" stroke=\"#000000\" stroke-width=\"0.25\" data-line=\"1\"/>\n"
      "<line x1=\"5\" y1=\"8\" x2=\"5\" y2=\"1\" stroke=\"#000000\" stroke-width=\"0.25\" data-line=\"2\"/>\n"
      "<line x1=\"6\" y1=\"20\" x2=\"14\" y2=\"20\" stroke=\"#000000\" stroke-width=\"0.25\" "
      "data-line=\"3\"/>\n"
      "<line x1=\"10\" y1=\"16\" x2=\"10\" y2=\"24\" stroke=\"#000000\" stroke-width=\"0.25\" "
      "data-line=\"4\"/>\n");
}

TEST(SvgRenderer, CarriesPicturesAndMirrorsPages) {
  for (const auto& [bytes, encoded] :
       {std::pair{"abc", "YWJj"}, {"abcd", "YWJjZA=="}, {"\xFF?\xFE", "/z/+"}, {"\xFB\xEF", "++8="}}) {
    DisplayList list;
    list.BeginPage(100, 50);
    list.MirrorPage();
    const auto picture = std::make_shared<Picture>();
    picture->Bytes = bytes;
    list.AddPicture(picture, {{1, 2}, 30, 40.5}, {0, 0, 7, {}});
    const std::string svg = ElementsOf(list);
    EXPECT_TRUE(
        svg.starts_with("<g transform=\"matrix(-1 0 0 1 100 0)\">\n"
                        "<image x=\"1\" y=\"2\" width=\"30\" height=\"40.5\""))
        << svg;
    EXPECT_TRUE(svg.ends_with("data-line=\"7\" xlink:href=\"data:image/png;base64," + std::string(encoded) +
                              "\"/>\n</g>\n"))
        << svg;
  }
}

TEST(DecimalText, RoundsAndDropsWhatSaysNothing) {
  std::string text;
  for (double value : {1.0005, -0.0004, -0.0006, 1e9}) AppendFixed(text += ' ', value, 3);
  EXPECT_EQ(text, " 1.001 0.000 -0.001 1000000000.000");
  text.clear();
  for (double value : {1.5, -100.0, 0.00001, 999.99999}) AppendShort(text += ' ', value, 4);
  EXPECT_EQ(text, " 1.5 -100 0 1000");
}

}  // namespace
}  // namespace vaxel
