// Pictures as files hold them: what a file says of itself is read here, its pixels are for a decoder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/result.h"

namespace vaxel {

enum class PictureFormat : std::uint8_t { Bmp, Gif, Jpeg, Png };

struct Picture {
  static constexpr std::size_t MaxPixels = 64'000'000;
  static constexpr std::size_t MaxPixelsOfAll = 100'000'000;  // of the pictures of a run
  static constexpr std::uint32_t MaxSide = 32767;             // pixels: the outputs hold no more

  PictureFormat Format = PictureFormat::Png;
  std::uint32_t Width = 0, Height = 0;        // pixels, at least 1
  double DpiX = 96, DpiY = 96;                // the file's own density, or 96
  std::uint32_t FrameLeft = 0, FrameTop = 0;  // of a GIF: where its frame lies
  bool IsFourInks = false;                    // of a JPEG: printing inks instead of red, green and blue
  bool IsCutShort = false;                    // the file ends before its data do
  std::string Name;                           // as the script gives it
  std::string Bytes;  // the file; of a moving picture what shows its first frame alone

  std::size_t PixelCount() const { return std::size_t{Width} * Height; }
  std::size_t DecodedBytes() const { return PixelCount() * sizeof(std::uint32_t); }
};

enum class PictureFault : std::uint8_t {
  None,
  NotAPicture,  // none of the formats, or its head makes no sense
  Incomplete,   // it ends before its data do; where it has a size, what there is of it may be decoded
  TooLarge      // more than MaxPixels, or than MaxSide across or down
};

// Reads the head of a BMP, GIF, JPEG or PNG file and walks through its parts, without decoding any; fills all
// but Name. On another fault than Incomplete the picture means nothing.
PictureFault ReadPicture(std::string bytes, Picture& picture);

// Serves decoders that know a GIF's frame alone: it puts pixels of that size at their place in the picture,
// with nothing around them. The result is false when they are neither the picture nor its frame.
bool PlaceFrame(const Picture& picture, std::uint32_t width, std::uint32_t height,
                std::vector<std::uint32_t>& pixels);

// "image/png" and the like.
const char* MediaType(PictureFormat format);

// Whether pixels of this size are the picture, or a GIF's frame within it.
bool FitsPicture(const Picture& picture, std::uint32_t width, std::uint32_t height);

// Decodes with the libraries of the platform.
class PictureDecoder {
 public:
  virtual ~PictureDecoder() = default;
  // The pixels come row by row from the upper-left corner, each as 0xAARRGGBB with its colour multiplied by
  // its alpha; of a picture that is cut short what is missing is transparent, as far as the platform tells
  // what is. It fails with PictureDamaged where the data cannot be decoded to the picture's size, or nothing
  // of what is cut short can be, with PictureNoMemory, or with why no picture at all can be decoded here.
  virtual Result<> Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) = 0;
  // Fails where Decode does, and may take less memory.
  virtual Result<> Check(const Picture& picture) {
    std::vector<std::uint32_t> pixels;
    return Decode(picture, pixels);
  }
};

}  // namespace vaxel
