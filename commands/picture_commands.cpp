#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/handlers.h"
#include "commands/point_notation.h"
#include "interpreter/script_fault.h"
#include "text/number_text.h"
#include "text/text.h"

namespace vaxel {
namespace {

constexpr std::size_t MaxFileSize = 100'000'000;
constexpr std::size_t MaxPixelsOfAll = 128'000'000;
constexpr double MillimetresPerInch = 25.4;

std::string ReadBytes(RunContext& run, const std::string& fileName, const std::string& shown) {
  FileContent content = run.Host.ReadFile(fileName, MaxFileSize);
  switch (content.Status) {
    case FileStatus::Unreadable:
      throw ScriptFault(FaultReason::FileUnreadable, shown + " (" + content.Reason + ")");
    case FileStatus::TooLarge:
      throw ScriptFault(FaultReason::FileTooLarge, shown);
    case FileStatus::Read:
      break;
  }
  return std::move(content.Bytes);
}

FaultReason ReasonOf(PictureFault fault) {
  switch (fault) {
    case PictureFault::NotAPicture:
      return FaultReason::NotAPicture;
    case PictureFault::Incomplete:
      return FaultReason::PictureIncomplete;
    case PictureFault::TooLarge:
      return FaultReason::PictureTooLarge;
    case PictureFault::None:
      break;
  }
  return FaultReason::None;
}

std::size_t PixelsOf(const Picture& picture) {
  return std::size_t{picture.Width} * picture.Height;
}

// Data that cannot be decoded are the line's fault, not that of an output; what the decoding gives is
// dropped, for many outputs do without.
std::shared_ptr<const Picture> ReadPictureFile(RunContext& run, const std::string& fileName,
                                               std::string_view name) {
  const std::string shown(Shorten(name, 200));
  const auto picture = std::make_shared<Picture>();
  const PictureFault fault = ReadPicture(ReadBytes(run, fileName, shown), *picture);
  if (fault != PictureFault::None) throw ScriptFault(ReasonOf(fault), shown);
  picture->Name = name;
  std::size_t pixelsOfAll = PixelsOf(*picture);
  for (const auto& [file, other] : run.Pictures) pixelsOfAll += PixelsOf(*other);
  if (pixelsOfAll > MaxPixelsOfAll) throw ScriptFault(FaultReason::TooManyPictures);
  std::vector<std::uint32_t> pixels;
  PictureDecoder* const decoder = run.Surface.Target().Decoder;
  if (decoder && !decoder->Decode(*picture, pixels)) throw ScriptFault(FaultReason::PictureIncomplete, shown);
  return picture;
}

std::shared_ptr<const Picture> PictureNamed(RunContext& run, std::string_view name) {
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  const std::string fileName = run.Host.FindFile(run.Level().FileName, name);
  if (fileName.empty()) throw ScriptFault(FaultReason::FileMissing, std::string(Shorten(name, 200)));
  const auto known = run.Pictures.find(fileName);
  if (known != run.Pictures.end()) return known->second;
  return run.Pictures.emplace(fileName, ReadPictureFile(run, fileName, name)).first->second;
}

// The letter before the first separator of a size or of what asks for one; 0 when there is none.
char FormOf(std::string_view parameter) {
  parameter = TrimLeft(parameter);
  return parameter.empty() || IsDigit(parameter.front()) ? '\0'
                                                         : static_cast<char>(parameter.front() & ~0x20);
}

double AboveZero(double value) {
  if (!(value > 0)) throw ScriptFault(FaultReason::BadPictureSize, NumberText(value));
  return value;
}

// "coefficient", "X§Width", "Y§Height", "Z§Width§Height" or "A§Width§Height".
Point ReadSize(const Parameters& parameters, std::size_t n, Point natural) {
  const Separators& separators = parameters.Separators();
  const std::vector<std::string_view> parts = SplitAt(parameters.Text(n), separators.Second);
  const auto part = [&](std::size_t i) {
    const auto value = i < parts.size() ? NumberOf(parts[i], separators) : std::nullopt;
    if (!value) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
    return AboveZero(*value);
  };
  if (parts.size() == 1) return natural * AboveZero(parameters.NumberOr(n, 1));
  const std::string form = UpperCase(Trim(parts[0]));
  if (form == "X") return natural * (part(1) / natural.X);
  if (form == "Y") return natural * (part(1) / natural.Y);
  if (form == "Z") return {part(1), part(2)};
  if (form == "A") return natural * std::min(part(1) / natural.X, part(2) / natural.Y);
  throw ScriptFault(FaultReason::UnknownOption, Shorten(Trim(parameters.Text(n)), 40));
}

// Where the lower left corner lies, seen from the point.
Point ReadPosition(std::string_view letters, Point size) {
  Point corner;
  for (char c : UpperCase(letters)) {
    if (c == 'C' || c == 'X') corner.X = -size.X / 2;
    if (c == 'C' || c == 'Y') corner.Y = -size.Y / 2;
    if (c == 'D') corner.X = -size.X;
    if (c == 'H') corner.Y = -size.Y;
    if (c != ' ' && std::string_view("CXYDH").find(c) == std::string_view::npos) {
      throw ScriptFault(FaultReason::UnknownOption, Shorten(letters, 40));
    }
  }
  return corner;
}

void DrawPicture(RunContext& run, const Parameters& parameters) {
  const std::shared_ptr<const Picture> picture = PictureNamed(run, TextOf(parameters.Text(1)));
  DrawSurface& surface = run.Surface;
  const Point place =
      surface.Origin() + ReadPoint(parameters, 2, surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
  const Point natural = {picture->Width * MillimetresPerInch / picture->DpiX,
                         picture->Height * MillimetresPerInch / picture->DpiY};
  const Point size = ReadSize(parameters, 4, natural);
  surface.PaintPicture(picture, place + ReadPosition(parameters.Trimmed(5), size), size.X, size.Y);
  surface.MoveTo(place);
  run.OrderState = static_cast<std::int16_t>(run.OrderState | OrderDrawn);
}

// "V§%X§%Y": the picture's pixels go into variables, and nothing is drawn.
void StoreSize(RunContext& run, const Parameters& parameters) {
  const std::string name = run.Substitute(parameters.Text(1));
  const std::shared_ptr<const Picture> picture = PictureNamed(run, TextOf(name));
  const std::vector<std::string_view> names = SplitAt(parameters.Text(4), run.Separators.Second);
  for (std::size_t i = 1; i < std::min<std::size_t>(names.size(), 3); ++i) {
    if (Trim(names[i]).empty()) continue;
    run.SetVariable(Trim(names[i]), std::to_string(i == 1 ? picture->Width : picture->Height));
  }
}

}  // namespace

void RunImage(RunContext& run, const Parameters& parameters) {
  if (FormOf(parameters.Text(4)) == 'V') {
    StoreSize(run, parameters);
    return;
  }
  const std::string text = run.Substitute(parameters.Whole());
  Parameters replaced;
  replaced.Assign(text, run.Separators);
  DrawPicture(run, replaced);
}

}  // namespace vaxel
