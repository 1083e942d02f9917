#include "render/gdi/export.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "render/gdi/pictures.h"
#include "tests/win32/drawn_bitmap.h"

namespace vaxel {
namespace {

class Memory : public ByteSink {
 public:
  void Write(std::string_view bytes) override { Bytes += bytes; }
  std::string Bytes{};
};

// A page that is no whole number of anything, with ink at known places.
DisplayList Sheet() {
  DisplayList list;
  list.BeginPage(83.37, 61.23);
  list.Add({0.3, Black, 1, LineShape{{10, 12.34}, {50.5, 12.34}}});
  list.Add({0, Black, 1, RectangleShape{{70.11, 50.07}, {80.02, 60.04}, {true, Black}}});
  list.Add({1.5, Black, 1, LineShape{{5, 55}, {5, 55}}});
  list.AddText("I", {"Arial"}, {{20, 40}, 0, 10, 2.78, 0, 0}, {0, Black, 1, {}});
  return list;
}

TEST(GdiExport, WritesMetafilesOfTrueSize) {
  const DisplayList list = Sheet();
  Memory memory;
  ASSERT_TRUE(WriteEmf(list, 0, {.Title = "Cadran Ω"}, memory));
  const HENHMETAFILE file = SetEnhMetaFileBits(static_cast<UINT>(memory.Bytes.size()),
                                               reinterpret_cast<const BYTE*>(memory.Bytes.data()));
  ASSERT_NE(file, nullptr);
  ENHMETAHEADER head{};
  GetEnhMetaFileHeader(file, sizeof head, &head);
  EXPECT_EQ(head.rclFrame.left, 0);
  EXPECT_EQ(head.rclFrame.top, 0);
  EXPECT_EQ(head.rclFrame.right, 8337);
  EXPECT_EQ(head.rclFrame.bottom, 6123);
  // In pixels of the screen: what is drawn reaches from 4.25 to 80.02 mm.
  const double pixelMm = static_cast<double>(head.szlMillimeters.cx) / head.szlDevice.cx;
  EXPECT_NEAR(head.rclBounds.left * pixelMm, 4.25, 1);
  EXPECT_NEAR(head.rclBounds.right * pixelMm, 80.02, 1);
  wchar_t description[32] = {};
  ASSERT_EQ(GetEnhMetaFileDescriptionW(file, 32, description), 16U);
  EXPECT_EQ(std::wstring(description), L"Vaxel");
  EXPECT_EQ(std::wstring(description + 6), L"Cadran Ω");

  // Played at 20 pixels a millimetre.
  GdiBitmap bitmap(1667, 1225);
  std::fill_n(bitmap.Pixels(), bitmap.PixelCount(), 0xFFFFFFFF);
  const BitmapDc context(bitmap);
  const RECT box = {0, 0, 1667, 1225};
  EXPECT_TRUE(PlayEnhMetaFile(context.Handle(), file, &box));
  GdiFlush();
  DeleteEnhMetaFile(file);
  EXPECT_EQ(test::Difference(test::InkEdges(bitmap), {85, 243.8, 1600.4, 1200.8}, 1.5), "");
  EXPECT_EQ(test::PixelAt(bitmap, 600, 246), 0U);
  EXPECT_EQ(test::PixelAt(bitmap, 1500, 1100), 0U);
  // The letter's stem.
  EXPECT_EQ(test::PixelAt(bitmap, 428, 720), 0U);
  EXPECT_EQ(test::PixelAt(bitmap, 440, 820), 0xFFFFFFU);
}

TEST(GdiExport, WritesPngThatKnowsItsSize) {
  const DisplayList list = Sheet();
  constexpr double dpi = 300;
  Memory memory;
  ASSERT_TRUE(WriteGdiPng(list, 0, dpi, {}, memory));
  // Pixels a metre, and its unit.
  const std::size_t density = memory.Bytes.find("pHYs");
  ASSERT_NE(density, std::string::npos);
  EXPECT_EQ(memory.Bytes.substr(density + 4, 9), std::string("\0\0\x2E\x23\0\0\x2E\x23\1", 9));

  Picture picture;
  ASSERT_EQ(ReadPicture(memory.Bytes, picture), PictureFault::None);
  EXPECT_EQ(picture.Width, 985U);
  EXPECT_EQ(picture.Height, 724U);
  std::vector<std::uint32_t> pixels;
  ASSERT_TRUE((*MakeImagingDecoder())->Decode(picture, pixels));
  const auto at = [&](double x, double y) {
    return pixels[static_cast<std::size_t>(y * dpi / 25.4) * picture.Width +
                  static_cast<std::size_t>(x * dpi / 25.4)];
  };
  EXPECT_EQ(at(30, 12.34), 0xFF000000U);
  EXPECT_EQ(at(75, 55), 0xFF000000U);
  EXPECT_EQ(at(30, 13), 0xFFFFFFFFU);
}

// A stroke of 1 mm that a window of 4 pixels a millimetre outlines, and one of 0.01 mm, which becomes a
// pixel.
TEST(GdiExport, WritesPngWithStrokesAsWideAsTheySay) {
  DisplayList list;
  list.BeginPage(25.4, 25.4);
  const std::array corners = {Point{5, 10.5}, Point{5, 9.5}, Point{20, 9.5}, Point{20, 10.5}};
  list.AddPolygon(corners, {true, Black}, {0.25, Black, 1, {}}, PolygonUse::Stroke);
  list.Add({0.01, Black, 1, LineShape{{5, 20}, {20, 20}}});
  constexpr double dpi = 600;
  Memory memory;
  ASSERT_TRUE(WriteGdiPng(list, 0, dpi, {}, memory));
  Picture picture;
  ASSERT_EQ(ReadPicture(memory.Bytes, picture), PictureFault::None);
  std::vector<std::uint32_t> pixels;
  ASSERT_TRUE((*MakeImagingDecoder())->Decode(picture, pixels));
  const auto width = [&](double from, double to) {
    double ink = 0;
    for (auto y = static_cast<std::size_t>(from * dpi / 25.4); y < static_cast<std::size_t>(to * dpi / 25.4);
         ++y) {
      ink += 1 - (pixels[y * picture.Width + picture.Width / 2] & 0xFF) / 255.0;
    }
    return ink * 25.4 / dpi;
  };
  EXPECT_NEAR(width(8, 12), 1, 0.01);
  EXPECT_NEAR(width(18, 22), 25.4 / dpi, 0.01);
}

TEST(GdiExport, RefusesPicturesThatNobodyCanHold) {
  DisplayList list;
  list.BeginPage(2000, 2000);
  Memory memory;
  EXPECT_FALSE(WriteGdiPng(list, 0, 600, {}, memory));
  EXPECT_FALSE(WriteGdiPng(list, 0, 0, {}, memory));
  EXPECT_EQ(memory.Bytes, "");
}

}  // namespace
}  // namespace vaxel
