#include "drawing/picture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/units.h"

namespace vaxel {
namespace {

using namespace std::string_view_literals;

constexpr double MillimetresPerMetre = 1000;

// Numbers out of a file. What lies beyond its end reads as 0 and is remembered.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

  std::uint32_t Byte(std::size_t at) {
    if (at < bytes_.size()) return static_cast<unsigned char>(bytes_[at]);
    overrun_ = true;
    return 0;
  }
  std::uint32_t Little16(std::size_t at) { return Byte(at) | Byte(at + 1) << 8; }
  std::uint32_t Little32(std::size_t at) { return Little16(at) | Little16(at + 2) << 16; }
  std::uint32_t Big16(std::size_t at) { return Byte(at) << 8 | Byte(at + 1); }
  std::uint32_t Big32(std::size_t at) { return Big16(at) << 16 | Big16(at + 2); }
  bool HasOverrun() const { return overrun_; }

 private:
  std::string_view bytes_;
  bool overrun_ = false;
};

double DpiOfMetre(std::uint32_t pixelsPerMetre, double otherwise) {
  return pixelsPerMetre == 0 ? otherwise : pixelsPerMetre * MillimetresPerInch / MillimetresPerMetre;
}

// A PNG file is a signature and chunks: length, type, data, checksum. Without those that announce them the
// further frames of a moving picture are not looked at: what stays moves up to their places.
PictureFault ReadPng(Picture& picture) {
  constexpr std::size_t firstChunk = 8, overhead = 12;
  std::string& bytes = picture.Bytes;
  ByteReader reader(bytes);
  bool hasData = false;
  for (std::size_t at = firstChunk, kept = firstChunk;;) {
    const std::size_t length = reader.Big32(at);
    const std::size_t data = at + 8;
    if (reader.HasOverrun() || bytes.size() < at + overhead + length) {
      bytes.erase(kept, at - kept);
      return PictureFault::Incomplete;
    }
    const std::string type = bytes.substr(at + 4, 4);
    if ((at == firstChunk) != (type == "IHDR")) return PictureFault::NotAPicture;
    if (type == "IHDR") {
      picture.Width = reader.Big32(data);
      picture.Height = reader.Big32(data + 4);
    } else if (type == "pHYs" && length >= 9 && reader.Byte(data + 8) == 1) {
      picture.DpiX = DpiOfMetre(reader.Big32(data), picture.DpiX);
      picture.DpiY = DpiOfMetre(reader.Big32(data + 4), picture.DpiY);
    }
    hasData = hasData || type == "IDAT";
    const std::size_t next = data + length + 4;
    if (type != "acTL") {
      if (kept < at) std::copy(bytes.data() + at, bytes.data() + next, bytes.data() + kept);
      kept += next - at;
    }
    at = next;
    if (type != "IEND") continue;
    bytes.resize(kept);
    return hasData ? PictureFault::None : PictureFault::Incomplete;
  }
}

bool IsJpegFrame(std::uint32_t marker) {
  constexpr std::array<std::uint32_t, 3> others = {0xC4, 0xC8, 0xCC};
  return marker >= 0xC0 && marker <= 0xCF && std::find(others.begin(), others.end(), marker) == others.end();
}

// Whether the segment names a density.
bool ReadJpegDensity(ByteReader& reader, std::size_t data, Picture& picture) {
  constexpr std::uint32_t dotsPerInch = 1, dotsPerCentimetre = 2;
  const std::uint32_t unit = reader.Byte(data + 7);
  const double factor = unit == dotsPerInch ? 1 : unit == dotsPerCentimetre ? MillimetresPerInch / 10 : 0;
  const std::uint32_t x = reader.Big16(data + 8), y = reader.Big16(data + 10);
  if (factor == 0 || x == 0 || y == 0) return false;
  picture.DpiX = x * factor;
  picture.DpiY = y * factor;
  return true;
}

// The resolution among what a camera notes: a TIFF file inside, of which the first directory is read. Values
// of several bytes stand in the order that its head names.
class CameraNotes {
 public:
  CameraNotes(std::string_view tiff) : reader_(tiff), isLittle_(tiff.starts_with("II")) {}

  void ReadDensity(Picture& picture) {
    constexpr std::uint32_t xResolution = 0x11A, yResolution = 0x11B, resolutionUnit = 0x128;
    constexpr std::uint32_t perInch = 2, perCentimetre = 3;
    const std::size_t directory = Number32(4);
    double x = 0, y = 0;
    std::uint32_t unit = perInch;
    for (std::uint32_t i = 0, count = Number16(directory); i < count && !reader_.HasOverrun(); ++i) {
      const std::size_t entry = directory + 2 + std::size_t{12} * i;
      const std::uint32_t tag = Number16(entry);
      if (tag == xResolution) x = Ratio(Number32(entry + 8));
      if (tag == yResolution) y = Ratio(Number32(entry + 8));
      if (tag == resolutionUnit) unit = Number16(entry + 8);
    }
    const double factor = unit == perInch ? 1 : unit == perCentimetre ? MillimetresPerInch / 10 : 0;
    if (reader_.HasOverrun() || !(x * factor > 0 && y * factor > 0)) return;
    picture.DpiX = x * factor;
    picture.DpiY = y * factor;
  }

 private:
  std::uint32_t Number16(std::size_t at) { return isLittle_ ? reader_.Little16(at) : reader_.Big16(at); }
  std::uint32_t Number32(std::size_t at) { return isLittle_ ? reader_.Little32(at) : reader_.Big32(at); }
  double Ratio(std::size_t at) {
    const std::uint32_t divisor = Number32(at + 4);
    return divisor == 0 ? 0 : static_cast<double>(Number32(at)) / divisor;
  }

  ByteReader reader_;
  bool isLittle_;
};

// A JPEG file is a row of segments, marker, length and data; after the last of them come the picture's data,
// which end with a marker of their own.
PictureFault ReadJpeg(Picture& picture) {
  constexpr std::uint32_t startOfScan = 0xDA, application0 = 0xE0, application1 = 0xE1;
  constexpr std::string_view camera = "Exif\0\0"sv;
  const std::string_view bytes = picture.Bytes;
  ByteReader reader(bytes);
  bool hasDensity = false;
  for (std::size_t at = 2;;) {
    if (reader.Byte(at) != 0xFF)
      return reader.HasOverrun() ? PictureFault::Incomplete : PictureFault::NotAPicture;
    const std::uint32_t marker = reader.Byte(at + 1);
    if (marker == 0xFF) {  // a byte of padding
      ++at;
      continue;
    }
    const std::size_t length = reader.Big16(at + 2);
    const std::size_t data = at + 4;
    if (reader.HasOverrun() || bytes.size() < at + 2 + length) return PictureFault::Incomplete;
    if (length < 2) return PictureFault::NotAPicture;
    const std::string_view segment = bytes.substr(data, length - 2);
    if (marker == application0 && length >= 14 && segment.starts_with("JFIF\0"sv)) {
      hasDensity = ReadJpegDensity(reader, data, picture);
    } else if (marker == application1 && !hasDensity && segment.starts_with(camera)) {
      CameraNotes(segment.substr(camera.size())).ReadDensity(picture);
    } else if (IsJpegFrame(marker)) {
      picture.Height = reader.Big16(data + 1);
      picture.Width = reader.Big16(data + 3);
      picture.IsFourInks = reader.Byte(data + 5) == 4;
    } else if (marker == startOfScan) {
      const bool hasEnd = bytes.substr(at).rfind("\xFF\xD9"sv) != std::string_view::npos;
      return hasEnd ? PictureFault::None : PictureFault::Incomplete;
    }
    at += 2 + length;
  }
}

PictureFault ReadBmp(Picture& picture) {
  constexpr std::uint32_t coreHeader = 12, infoHeader = 40, largestHeader = 124;
  constexpr std::uint32_t runLength8 = 1, runLength4 = 2;
  ByteReader reader(picture.Bytes);
  const std::uint32_t pixels = reader.Little32(10);
  const std::uint32_t header = reader.Little32(14);
  std::uint32_t depth = 0, compression = 0, colours = 0;
  if (header == coreHeader) {
    picture.Width = reader.Little16(18);
    picture.Height = reader.Little16(20);
    depth = reader.Little16(24);
  } else if (header >= infoHeader && header <= largestHeader) {
    picture.Width = reader.Little32(18);
    picture.Height = reader.Little32(22);
    // Rows from the top are told by a negative height.
    if (picture.Height > INT32_MAX) picture.Height = 0U - picture.Height;
    depth = reader.Little16(28);
    compression = reader.Little32(30);
    picture.DpiX = DpiOfMetre(reader.Little32(38), picture.DpiX);
    picture.DpiY = DpiOfMetre(reader.Little32(42), picture.DpiY);
    colours = reader.Little32(46);
  } else {
    return reader.HasOverrun() ? PictureFault::Incomplete : PictureFault::NotAPicture;
  }
  if (reader.HasOverrun()) return PictureFault::Incomplete;
  const bool isPacked = compression == runLength8 || compression == runLength4;
  // Only a size within the limit is of interest, so nothing here can overflow.
  if (std::uint64_t{picture.Width} * picture.Height > Picture::MaxPixels) return PictureFault::TooLarge;
  const std::uint64_t row = (std::uint64_t{picture.Width} * depth + 31) / 32 * 4;
  const std::uint64_t needed = isPacked ? 1 : row * picture.Height;
  // Decoders make room for the table of colours before they look how long the file is.
  const std::uint64_t tableEnd = 14 + header + std::uint64_t{4} * colours;
  const bool isWhole = picture.Bytes.size() >= std::max(pixels + needed, tableEnd);
  return isWhole ? PictureFault::None : PictureFault::Incomplete;
}

// Passes over blocks of up to 255 bytes, each with its length before it, and the 0 that ends them.
std::size_t BehindBlocks(ByteReader& reader, std::size_t at) {
  while (const std::size_t length = reader.Byte(at)) at += 1 + length;
  return at + 1;
}

std::size_t ColourTableSize(std::uint32_t flags) {
  return (flags & 0x80) != 0 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

void PutLittle16(std::string& bytes, std::size_t at, std::uint32_t value) {
  bytes[at] = static_cast<char>(value & 0xFF);
  bytes[at + 1] = static_cast<char>(value >> 8);
}

// Keeps the first frame, in a screen that is large enough for it.
PictureFault ReadGif(Picture& picture) {
  constexpr std::uint32_t extension = 0x21, image = 0x2C;
  constexpr std::size_t screen = 6;
  std::string& bytes = picture.Bytes;
  ByteReader reader(bytes);
  std::size_t at = 13 + ColourTableSize(reader.Byte(10));
  while (reader.Byte(at) == extension && !reader.HasOverrun()) at = BehindBlocks(reader, at + 2);
  const bool isImage = reader.Byte(at) == image;
  if (reader.HasOverrun()) return PictureFault::Incomplete;
  if (!isImage) return PictureFault::NotAPicture;
  picture.FrameLeft = reader.Little16(at + 1);
  picture.FrameTop = reader.Little16(at + 3);
  picture.Width = std::max(reader.Little16(screen), picture.FrameLeft + reader.Little16(at + 5));
  picture.Height = std::max(reader.Little16(screen + 2), picture.FrameTop + reader.Little16(at + 7));
  const bool isEmpty = reader.Little16(at + 5) == 0 || reader.Little16(at + 7) == 0;
  const std::size_t end = BehindBlocks(reader, at + 10 + ColourTableSize(reader.Byte(at + 9)) + 1);
  if (reader.HasOverrun() || end > bytes.size()) return PictureFault::Incomplete;
  if (isEmpty) return PictureFault::NotAPicture;
  bytes.resize(end);
  bytes += ';';
  PutLittle16(bytes, screen, picture.Width);
  PutLittle16(bytes, screen + 2, picture.Height);
  return PictureFault::None;
}

struct FormatRow {
  PictureFormat Format;
  std::string_view Signature;
  const char* MediaType;
  PictureFault (*Read)(Picture& picture);
};

constexpr std::array<FormatRow, 5> Formats = {
    {{PictureFormat::Bmp, "BM"sv, "image/bmp", ReadBmp},
     {PictureFormat::Gif, "GIF87a"sv, "image/gif", ReadGif},
     {PictureFormat::Gif, "GIF89a"sv, "image/gif", ReadGif},
     {PictureFormat::Jpeg, "\xFF\xD8\xFF"sv, "image/jpeg", ReadJpeg},
     {PictureFormat::Png, "\x89PNG\r\n\x1A\n"sv, "image/png", ReadPng}}};

}  // namespace

PictureFault ReadPicture(std::string bytes, Picture& picture) {
  for (const FormatRow& row : Formats) {
    if (!bytes.starts_with(row.Signature)) continue;
    picture = {};
    picture.Format = row.Format;
    picture.Bytes = std::move(bytes);
    const PictureFault fault = row.Read(picture);
    picture.IsCutShort = fault == PictureFault::Incomplete;
    const std::uint64_t pixels = std::uint64_t{picture.Width} * picture.Height;
    // What is too large is refused for that, whatever else may be wrong with it.
    const bool isLong = std::max(picture.Width, picture.Height) > Picture::MaxSide;
    if (pixels > Picture::MaxPixels || (isLong && pixels > 0)) return PictureFault::TooLarge;
    if (fault != PictureFault::None) return fault;
    return pixels == 0 ? PictureFault::NotAPicture : PictureFault::None;
  }
  return PictureFault::NotAPicture;
}

const char* MediaType(PictureFormat format) {
  const auto* row = std::find_if(Formats.begin(), Formats.end(),
                                 [format](const FormatRow& known) { return known.Format == format; });
  return row->MediaType;
}

bool FitsPicture(const Picture& picture, std::uint32_t width, std::uint32_t height) {
  if (width == picture.Width && height == picture.Height) return true;
  return picture.Format == PictureFormat::Gif && picture.FrameLeft + width <= picture.Width &&
         picture.FrameTop + height <= picture.Height;
}

bool PlaceFrame(const Picture& picture, std::uint32_t width, std::uint32_t height,
                std::vector<std::uint32_t>& pixels) {
  if (!FitsPicture(picture, width, height)) return false;
  if (width == picture.Width && height == picture.Height) return true;
  std::vector<std::uint32_t> whole(std::size_t{picture.Width} * picture.Height);
  for (std::size_t y = 0; y < height; ++y) {
    const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(y * width);
    std::copy_n(row, width,
                whole.begin() +
                    static_cast<std::ptrdiff_t>((picture.FrameTop + y) * picture.Width + picture.FrameLeft));
  }
  pixels = std::move(whole);
  return true;
}

}  // namespace vaxel
