// What a page of a PDF may hold: the library keeps it as a whole, and a page at these limits takes nearly the
// memory that there is for a run.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/cairo_module.h"
#include "resources/text_id.h"

namespace vaxel::test {
namespace {

class NoSink : public ByteSink {
 public:
  void Write(std::string_view) override {}
};

Result<> Written(const DisplayList& list) {
  const Result<const CairoFunctions*> cairo = LoadCairo();
  EXPECT_TRUE(cairo);
  NoSink sink;
  return (*cairo)->WritePdf(list, {"limits", 0}, nullptr, sink).Outcome;
}

// The number in the message is that of operations such as these which there may be.
void ExpectRefused(const DisplayList& list, const std::string& most) {
  const Result<> outcome = Written(list);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.Why().Text, TextId::PdfTooLarge);
  EXPECT_EQ(outcome.Why().Words, most);
}

Operation StrokeOf(const Shape& figure) {
  return {0.1, Black, 1, figure};
}

TEST(PdfLimits, CountStrokesAndFillings) {
  DisplayList filled;
  filled.BeginPage(100, 100);
  for (int i = 0; i < 375'001; ++i) filled.Add(StrokeOf(RectangleShape{{}, {1, 1}, Fill(Black)}));
  ExpectRefused(filled, "375000");
}

// 750000 · 1150 bytes: texts of 34 a letter, corners of 26, pieces of 60.
TEST(PdfLimits, CountLettersAndCorners) {
  DisplayList texts, polygons, contours;
  texts.BeginPage(100, 100);
  for (int i = 0; i < 8; ++i) texts.AddText(std::string(5'000'000, 'x'), {}, {}, {});
  ExpectRefused(texts, "5");
  polygons.BeginPage(100, 100);
  for (int i = 0; i < 15; ++i) polygons.AddPolygon(std::vector<Point>(1'000'000), {}, StrokeOf({}));
  for (int i = 0; i < 420'000; ++i) polygons.Add(StrokeOf(LineShape{{}, {1, 1}}));
  ExpectRefused(polygons, "414955");
  contours.BeginPage(100, 100);
  for (int i = 0; i < 5; ++i) contours.AddContour(std::vector<ContourArc>(1'000'000), {}, StrokeOf({}));
  for (int i = 0; i < 490'000; ++i) contours.Add(StrokeOf(LineShape{{}, {1, 1}}));
  ExpectRefused(contours, "489434");
}

}  // namespace
}  // namespace vaxel::test
