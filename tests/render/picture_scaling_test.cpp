#include "render/picture_scaling.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace vaxel {
namespace {

constexpr std::uint32_t Solid = 0xFFFFFFFF, Half = 0x80808080, Clear = 0;

TEST(PictureScaling, ReducesToTheMean) {
  const std::vector<std::uint32_t> pixels = {Solid, Solid, Clear, Clear, Clear,  //
                                             Solid, Solid, Clear, Clear, Clear};
  EXPECT_EQ(ScalePicture({pixels.data(), 5, 2}, 1, 1, {0, 0, 1, 1}), std::vector<std::uint32_t>{0x66666666});
  // The second of two takes half of the third column and the rest.
  EXPECT_EQ(ScalePicture({pixels.data(), 5, 2}, 2, 1, {0, 0, 2, 1}),
            (std::vector<std::uint32_t>{0xCCCCCCCC, Clear}));
}

TEST(PictureScaling, EnlargesSmoothlyAndKeepsTheEdges) {
  const std::vector<std::uint32_t> pixels = {Clear, Solid};
  const auto scaled = ScalePicture({pixels.data(), 2, 1}, 8, 3, {0, 0, 8, 3});
  ASSERT_EQ(scaled.size(), 24U);
  EXPECT_EQ(scaled[1], Clear);
  EXPECT_EQ(scaled[6], Solid);
  EXPECT_EQ(scaled[3] >> 24, 96U);
  EXPECT_EQ(scaled[4] >> 24, 159U);
  EXPECT_EQ(scaled[11], scaled[3]);
}

// A picture that is drawn in bands must not show them.
TEST(PictureScaling, GivesTheSameInParts) {
  std::vector<std::uint32_t> pixels;
  for (std::uint32_t i = 0; i < 7 * 9; ++i) pixels.push_back(i * 0x01030507 & 0x7F7F7F7F);
  pixels[11] = Half;
  for (const int size : {3, 20}) {
    const auto whole = ScalePicture({pixels.data(), 7, 9}, size, size, {0, 0, size, size});
    const auto part = ScalePicture({pixels.data(), 7, 9}, size, size, {1, 1, size, size - 1});
    for (int y = 1; y < size - 1; ++y) {
      for (int x = 1; x < size; ++x) {
        EXPECT_EQ(part[static_cast<std::size_t>((y - 1) * (size - 1) + x - 1)],
                  whole[static_cast<std::size_t>(y * size + x)]);
      }
    }
  }
}

}  // namespace
}  // namespace vaxel
