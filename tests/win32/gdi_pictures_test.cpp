// The pictures that the other platform's outputs are measured with, through the imaging component of Windows.
#include "render/gdi/pictures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vaxel {
namespace {

std::string Contents(const std::string& name) {
  std::ifstream file(std::string(VAXEL_SOURCE_DIR) + "/tests/pictures/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Nothing when it cannot be decoded.
std::vector<std::uint32_t> Decoded(const Picture& picture) {
  const auto decoder = MakeImagingDecoder();
  EXPECT_TRUE(decoder);
  std::vector<std::uint32_t> pixels;
  if (!decoder || !(*decoder)->Decode(picture, pixels)) pixels.clear();
  return pixels;
}

bool IsNear(std::uint32_t seen, std::uint32_t expected) {
  constexpr int rounding = 3;  // of a JPEG's colours
  for (int shift = 0; shift < 32; shift += 8) {
    const auto part = [shift](std::uint32_t pixel) { return static_cast<int>(pixel >> shift & 0xFF); };
    if (std::abs(part(seen) - part(expected)) > rounding) return false;
  }
  return true;
}

// Red, green, blue and yellow stand in the corners, row by row.
TEST(GdiPictures, DecodesEveryFormatTheRightWayUp) {
  for (const char* name : {"clear.png", "palette.png", "upward.bmp", "downward.bmp", "photo.jpg"}) {
    Picture picture;
    ASSERT_EQ(ReadPicture(Contents(name), picture), PictureFault::None) << name;
    const std::vector<std::uint32_t> pixels = Decoded(picture);
    ASSERT_EQ(pixels.size(), std::size_t{picture.Width} * picture.Height) << name;
    const std::size_t lastRow = pixels.size() - picture.Width;
    EXPECT_TRUE(IsNear(pixels.front(), 0xFFFF0000)) << name;
    EXPECT_TRUE(IsNear(pixels[picture.Width - 1], 0xFF00FF00)) << name;
    EXPECT_TRUE(IsNear(pixels[lastRow], 0xFF0000FF)) << name;
    EXPECT_TRUE(IsNear(pixels.back(), 0xFFFFFF00)) << name;
  }
}

// 24 by 12 pixels at 10, 5 of a screen of 40 by 20.
TEST(GdiPictures, PlacesAFrameInItsScreen) {
  Picture picture;
  ASSERT_EQ(ReadPicture(Contents("frames.gif"), picture), PictureFault::None);
  const std::vector<std::uint32_t> pixels = Decoded(picture);
  ASSERT_EQ(pixels.size(), 40U * 20U);
  EXPECT_EQ(pixels[5 * 40 + 10], 0xFFFF0000);
  EXPECT_EQ(pixels[16 * 40 + 33], 0xFFFFFF00);
  EXPECT_EQ(pixels[4 * 40 + 10], 0U);
}

// What is missing is filled up; which formats can be read in part is the component's matter, of a JPEG it
// can.
TEST(GdiPictures, ReadsAPictureThatIsCutShort) {
  const std::string file = Contents("photo.jpg");
  Picture picture;
  ASSERT_EQ(ReadPicture(file.substr(0, file.size() - 20), picture), PictureFault::Incomplete);
  const std::vector<std::uint32_t> pixels = Decoded(picture);
  ASSERT_EQ(pixels.size(), std::size_t{picture.Width} * picture.Height);
  EXPECT_TRUE(IsNear(pixels.front(), 0xFFFF0000));
  EXPECT_FALSE(IsNear(pixels.back(), 0xFFFFFF00));
  ASSERT_EQ(ReadPicture(file.substr(0, file.size() - 100), picture), PictureFault::Incomplete);
  EXPECT_TRUE(Decoded(picture).empty());
}

TEST(GdiPictures, RefusesDamagedData) {
  std::string file = Contents("palette.png");
  const std::size_t data = file.find("IDAT") + 4;
  for (std::size_t i = data; i < data + 8; ++i) file[i] = '\x55';
  Picture picture;
  ASSERT_EQ(ReadPicture(file, picture), PictureFault::None);
  EXPECT_TRUE(Decoded(picture).empty());
}

}  // namespace
}  // namespace vaxel
