// What a page of a PDF may hold: the library keeps it as a whole, and a page at these limits takes nearly the
// memory that there is for a run.
#include <gtest/gtest.h>

#include <memory>
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

// 750000 · 1150 bytes; a box takes 80, its stroke and its filling 1070 each.
TEST(PdfLimits, CountStrokesAndFillings) {
  DisplayList filled;
  filled.BeginPage(100, 100);
  for (int i = 0; i < 388'514; ++i) filled.Add(StrokeOf(RectangleShape{{}, {1, 1}, Fill(Black)}));
  ExpectRefused(filled, "388513");
}

// 750000 · 1150 bytes, less those of the page: texts of 34 a letter, corners of 26, pieces of 60.
TEST(PdfLimits, CountLettersAndCorners) {
  DisplayList texts, polygons, contours;
  texts.BeginPage(100, 100);
  for (int i = 0; i < 8; ++i) texts.AddText(std::string(5'000'000, 'x'), {}, {}, {});
  ExpectRefused(texts, "5");
  polygons.BeginPage(100, 100);
  for (int i = 0; i < 15; ++i) polygons.AddPolygon(std::vector<Point>(1'000'000), {}, StrokeOf({}));
  for (int i = 0; i < 420'000; ++i) polygons.Add(StrokeOf(LineShape{{}, {1, 1}}));
  ExpectRefused(polygons, "414954");
  contours.BeginPage(100, 100);
  for (int i = 0; i < 5; ++i) contours.AddContour(std::vector<ContourArc>(1'000'000), {}, StrokeOf({}));
  for (int i = 0; i < 490'000; ++i) contours.Add(StrokeOf(LineShape{{}, {1, 1}}));
  ExpectRefused(contours, "489434");
}

// What other pages take is no room for this one; pictures count with their pixels, the largest twice.
TEST(PdfLimits, CountTheRestOfTheDrawing) {
  const auto picture = std::make_shared<vaxel::Picture>();
  picture->Width = 10'000;
  picture->Height = 5'000;
  DisplayList list;
  list.BeginPage(100, 100);
  for (int i = 0; i < 500'010; ++i) list.Add(StrokeOf(LineShape{{}, {1, 1}}));
  list.BeginPage(100, 100);
  for (int i = 0; i < 400'000; ++i) list.Add(StrokeOf(LineShape{{}, {1, 1}}));
  list.AddPicture(picture, {}, {});
  // 862.5 MB less 2 · 200 MB and 500,010 · 80 bytes leave room for 367,390 strokes of 1150 bytes.
  ExpectRefused(list, "367390");
}

}  // namespace
}  // namespace vaxel::test
