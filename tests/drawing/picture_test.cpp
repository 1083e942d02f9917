// The heads of picture files, made here byte by byte.
#include "drawing/picture.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "resources/text_id.h"

namespace vaxel {
namespace {

using namespace std::string_literals;

std::string Big32(std::uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
          static_cast<char>(value)};
}

std::string Little32(std::uint32_t value) {
  const std::string big = Big32(value);
  return {big.rbegin(), big.rend()};
}

std::string Chunk(const std::string& type, const std::string& data) {
  return Big32(static_cast<std::uint32_t>(data.size())) + type + data + "\0\0\0\0"s;
}

std::string Png(const std::string& between, std::uint32_t width = 3, std::uint32_t height = 2) {
  return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", Big32(width) + Big32(height) + "\x08\x02\0\0\0"s) + between +
         Chunk("IDAT", "data") + Chunk("IEND", "");
}

std::string Segment(char marker, const std::string& data) {
  const auto length = static_cast<char>(data.size() + 2);
  return "\xFF"s + marker + '\0' + length + data;
}

// The resolution as ratios, in either order of bytes.
std::string Camera(bool isLittle, std::uint32_t unit, std::uint32_t x, std::uint32_t ofX, std::uint32_t y,
                   std::uint32_t ofY) {
  const auto four = isLittle ? Little32 : Big32;
  const auto two = [&](std::uint32_t value) {
    return isLittle ? Little32(value).substr(0, 2) : Big32(value).substr(2);
  };
  constexpr std::uint32_t ratios = 8 + 2 + 3 * 12 + 4;
  return "Exif\0\0"s + (isLittle ? "II" : "MM") + two(42) + four(8) + two(3) + two(0x11A) + two(5) + four(1) +
         four(ratios) + two(0x11B) + two(5) + four(1) + four(ratios + 8) + two(0x128) + two(3) + four(1) +
         two(unit) + two(0) + four(0) + four(x) + four(ofX) + four(y) + four(ofY);
}

std::string Jpeg(const std::string& density, const std::string& camera = {}) {
  return "\xFF\xD8"s + Segment('\xE0', "JFIF\0\1\2"s + density + "\0\0"s) +
         (camera.empty() ? "" : Segment('\xE1', camera)) + Segment('\xC2', "\x08\0\x02\0\x03\x03"s) +
         Segment('\xDA', "\1") + "data\xFF\xD9";
}

// 24 bits a pixel, so two rows of 9 bytes and 3 to fill them up.
std::string Bmp(std::uint32_t height, std::uint32_t pixelsPerMetre, std::uint32_t colours = 0) {
  return "BM" + Little32(78) + Little32(0) + Little32(54) + Little32(40) + Little32(3) + Little32(height) +
         "\1\0\x18\0"s + Little32(0) + Little32(24) + Little32(pixelsPerMetre) + Little32(pixelsPerMetre) +
         Little32(colours) + Little32(0) + std::string(24, '\x7F');
}

// The older head, which tells no density.
std::string OldBmp() {
  return "BM" + Little32(50) + Little32(0) + Little32(26) + Little32(12) + "\3\0\2\0\1\0\x18\0"s +
         std::string(24, '\x7F');
}

const std::string GifFrame = ",\1\0\2\0\3\0\2\0\0\2\2\x44\1\0"s;  // at 1, 2, of 3 x 2

std::string Gif(const std::string& frames) {
  return "GIF89a\x0A\0\x0A\0\x80\0\0\0\0\0\xFF\xFF\xFF"s + "!\xFF\x0BNETSCAPE2.0\3\1\0\0\0"s + frames + ";";
}

Picture Read(const std::string& file) {
  Picture picture;
  EXPECT_EQ(ReadPicture(file, picture), PictureFault::None);
  return picture;
}

TEST(Picture, SizesAndDensitiesOfAllFormats) {
  struct Case {
    std::string File;
    PictureFormat Format;
    double DpiX, DpiY;
  };
  const std::vector<Case> cases = {
      {Png(""), PictureFormat::Png, 96, 96},
      // 11811 and 5906 pixels a metre, 25.4 mm an inch; an aspect without a unit is none.
      {Png(Chunk("pHYs", Big32(11811) + Big32(5906) + "\1")), PictureFormat::Png, 299.9994, 150.0124},
      {Png(Chunk("pHYs", Big32(2) + Big32(1) + "\0"s)), PictureFormat::Png, 96, 96},
      {Jpeg("\1\1\x2C\0\x96"s), PictureFormat::Jpeg, 300, 150},
      {Jpeg("\2\0\x64\0\x64"s), PictureFormat::Jpeg, 254, 254},
      {Jpeg("\0\0\1\0\1"s), PictureFormat::Jpeg, 96, 96},
      // What a camera notes counts where the file itself names none: 72/1 and 600/2 an inch; 100 a
      // centimetre.
      {Jpeg("\0\0\1\0\1"s, Camera(false, 2, 72, 1, 600, 2)), PictureFormat::Jpeg, 72, 300},
      {Jpeg("\0\0\1\0\1"s, Camera(true, 3, 100, 1, 100, 1)), PictureFormat::Jpeg, 254, 254},
      {Jpeg("\1\1\x2C\0\x96"s, Camera(true, 2, 72, 1, 72, 1)), PictureFormat::Jpeg, 300, 150},
      {Jpeg("\0\0\1\0\1"s, Camera(true, 2, 72, 0, 72, 1)), PictureFormat::Jpeg, 96, 96},
      {Bmp(2, 0), PictureFormat::Bmp, 96, 96},
      {Bmp(2, 5000), PictureFormat::Bmp, 127, 127},
      {Bmp(0xFFFFFFFE, 5000), PictureFormat::Bmp, 127, 127},  // from the top
      {OldBmp(), PictureFormat::Bmp, 96, 96},
      // Before a segment's mark there may be any number of bytes of padding.
      {"\xFF\xD8\xFF\xFF" + Jpeg("\1\1\x2C\0\x96"s).substr(2), PictureFormat::Jpeg, 300, 150},
      {Gif(GifFrame), PictureFormat::Gif, 96, 96},
  };
  for (const Case& known : cases) {
    const Picture picture = Read(known.File);
    EXPECT_EQ(picture.Format, known.Format);
    EXPECT_EQ(picture.Width, known.Format == PictureFormat::Gif ? 10U : 3U);
    EXPECT_EQ(picture.Height, known.Format == PictureFormat::Gif ? 10U : 2U);
    EXPECT_NEAR(picture.DpiX, known.DpiX, 1e-4);
    EXPECT_NEAR(picture.DpiY, known.DpiY, 1e-4);
  }
}

// Wherever a file is cut off, that is noticed, and nothing is read behind its end.
TEST(Picture, FilesThatEndTooEarly) {
  constexpr std::size_t signature = 8;  // as long as the longest
  for (const std::string& file : {Png(Chunk("pHYs", std::string(9, '\1'))), Jpeg("\1\1\x2C\0\x96"s),
                                  Bmp(2, 0), OldBmp(), Gif(GifFrame)}) {
    for (std::size_t length = signature; length < file.size(); ++length) {
      Picture picture;
      const PictureFault fault = ReadPicture(file.substr(0, length), picture);
      if (length + 1 == file.size() && file.ends_with(';')) continue;  // a GIF's last byte says nothing
      EXPECT_EQ(fault, PictureFault::Incomplete) << MediaType(picture.Format) << " of " << length;
    }
  }
}

TEST(Picture, WhatIsNoneOrTooLarge) {
  const std::vector<std::pair<std::string, PictureFault>> cases = {
      {"", PictureFault::NotAPicture},
      {"CentreE = 0, 0", PictureFault::NotAPicture},
      {"BMW is no picture, however long this text may be, and goes on and on", PictureFault::NotAPicture},
      {Png("", 0, 5), PictureFault::NotAPicture},
      {Png("", 100'000, 100'000), PictureFault::TooLarge},
      {Png("", 0xFFFFFFFF, 0xFFFFFFFF), PictureFault::TooLarge},
      {Png("", 8000, 8000), PictureFault::None},
      {Png("", 8000, 8001), PictureFault::TooLarge},
      {Png("", 32767, 2), PictureFault::None},
      {Png("", 2, 32768), PictureFault::TooLarge},
      {Bmp(0x7FFFFFFF, 0), PictureFault::TooLarge},
      {Bmp(3, 0), PictureFault::Incomplete},
      // The table of colours reaches to the file's end, and beyond it: a decoder would take 4 GB for it.
      {Bmp(2, 0, 6), PictureFault::None},
      {Bmp(2, 0, 7), PictureFault::Incomplete},
      {Bmp(2, 0, 0xFF0000FF), PictureFault::Incomplete},
      {"\x89PNG\r\n\x1A\n" + Chunk("IDAT", "x"), PictureFault::NotAPicture},
      // What looks like a camera's notes, but lies behind the end of its segment.
      {"\xFF\xD8\xFF\xE1\0\2Exif\0\0"s, PictureFault::NotAPicture},
      {"\xFF\xD8\xFF\xE1\0\5Exif\0\0"s, PictureFault::NotAPicture},
  };
  for (const auto& [file, fault] : cases) {
    Picture picture;
    EXPECT_EQ(ReadPicture(file, picture), fault) << file.substr(0, 40);
  }
}

// Outputs that hold the file, and browsers that play it, must show what is drawn elsewhere.
TEST(Picture, OfMovingPicturesTheFirstFrameStays) {
  const std::string second = ",\0\0\0\0\1\0\1\0\0\2\2\x44\1\0"s;
  EXPECT_EQ(Read(Gif(GifFrame + second)).Bytes, Gif(GifFrame));
  // A frame that its screen is too small for makes it larger.
  std::string small = Gif(GifFrame);
  small[6] = small[8] = 1;
  const Picture picture = Read(small);
  EXPECT_EQ(picture.Width, 4U);
  EXPECT_EQ(picture.Height, 4U);
  EXPECT_EQ(picture.Bytes[6], 4);
  const std::string announcement = Chunk("acTL", Big32(2) + Big32(0));
  EXPECT_EQ(Read(Png(announcement)).Bytes, Png(""));
  const std::string note = Chunk("tEXt", "a\0b");
  EXPECT_EQ(Read(Png(announcement + note + announcement + note)).Bytes, Png(note + note));
  EXPECT_EQ(Read(Png("") + "behind the end").Bytes, Png(""));
}

// A decoder that knows the frame alone gives 2 x 1 pixels, which lie at 1, 2 of 4 x 4.
TEST(Picture, PutsAFrameIntoItsScreen) {
  Picture picture;
  picture.Format = PictureFormat::Gif;
  picture.Width = picture.Height = 4;
  picture.FrameLeft = 1;
  picture.FrameTop = 2;
  std::vector<std::uint32_t> pixels = {7, 8};
  ASSERT_TRUE(PlaceFrame(picture, 2, 1, pixels));
  std::vector<std::uint32_t> expected(16);
  expected[9] = 7;
  expected[10] = 8;
  EXPECT_EQ(pixels, expected);
  EXPECT_TRUE(PlaceFrame(picture, 4, 4, pixels));
  EXPECT_EQ(pixels, expected);
  std::vector<std::uint32_t> tooWide(4), tooHigh(3);
  EXPECT_FALSE(PlaceFrame(picture, 4, 1, tooWide));
  EXPECT_FALSE(PlaceFrame(picture, 1, 3, tooHigh));
  picture.Format = PictureFormat::Png;
  std::vector<std::uint32_t> small = {7, 8};
  EXPECT_FALSE(PlaceFrame(picture, 2, 1, small));
}

// What there is of it keeps its size, for a decoder to look at.
TEST(Picture, OfAFileThatIsCutShortTheHeadStays) {
  const std::string file = Png(Chunk("acTL", Big32(2) + Big32(0)));
  Picture picture;
  EXPECT_EQ(ReadPicture(file.substr(0, file.size() - 14), picture), PictureFault::Incomplete);
  EXPECT_TRUE(picture.IsCutShort);
  EXPECT_EQ(picture.Width, 3U);
  EXPECT_EQ(picture.Bytes, Png("").substr(0, Png("").size() - 14));
  EXPECT_EQ(ReadPicture(file, picture), PictureFault::None);
  EXPECT_FALSE(picture.IsCutShort);
}

// A decoder that has no cheaper way decodes.
TEST(PictureDecoder, ChecksByDecoding) {
  class OneByOne : public PictureDecoder {
    Result<> Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override {
      pixels.resize(1);
      if (!PlaceFrame(picture, 1, 1, pixels)) return Failure{.Text = TextId::PictureDamaged};
      return {};
    }
  } decoder;
  Picture picture;
  picture.Width = picture.Height = 1;
  EXPECT_TRUE(static_cast<PictureDecoder&>(decoder).Check(picture));
  picture.Width = 2;
  EXPECT_EQ(static_cast<PictureDecoder&>(decoder).Check(picture).Why().Text, TextId::PictureDamaged);
}

}  // namespace
}  // namespace vaxel
