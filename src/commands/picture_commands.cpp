#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "base/units.h"
#include "commands/file_notation.h"
#include "commands/handlers.h"
#include "commands/point_notation.h"
#include "interpreter/script_fault.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

FaultReason ReasonOf(PictureFault fault) {
  if (fault == PictureFault::TooLarge) return FaultReason::PictureTooLarge;
  return fault == PictureFault::Incomplete ? FaultReason::PictureIncomplete : FaultReason::NotAPicture;
}

// A damaged picture, too little memory and a machine that reads no pictures are three things.
[[noreturn]] void FailPicture(const RunContext& run, const Picture& picture, const Failure& why,
                              const std::string& shown) {
  if (picture.IsCutShort && why.Text == TextId::PictureDamaged)
    throw ScriptFault(FaultReason::PictureIncomplete, shown);
  if (why.Text == TextId::PictureDamaged || why.Text == TextId::PictureNoMemory)
    throw ScriptFault(why.Text, shown);
  throw ScriptFault(FaultReason::PictureUndecodable, shown, run.Strings.Text(run.LangBase, why));
}

// Data that cannot be decoded are the line's fault, not that of an output; what the decoding gives is
// dropped, for many outputs do without.
void TryToDecode(RunContext& run, const Picture& picture, const std::string& shown) {
  PictureDecoder* const decoder = run.Surface.Target().Decoder;
  if (!decoder && picture.IsCutShort) throw ScriptFault(FaultReason::PictureIncomplete, shown);
  if (!decoder) return;
  if (const Result<> decoded = decoder->Check(picture); !decoded)
    FailPicture(run, picture, decoded.Why(), shown);
  if (picture.IsCutShort) run.Notice(TextId::PictureCutShort, shown);
}

std::shared_ptr<const Picture> ReadPictureFile(RunContext& run, const std::string& fileName,
                                               std::string_view name) {
  const std::string shown(Shorten(name, 200));
  const auto picture = std::make_shared<Picture>();
  const PictureFault fault = ReadPicture(run.ReadFile(fileName, shown), *picture);
  const bool isOfUse = fault == PictureFault::Incomplete && picture->PixelCount() > 0;
  if (fault != PictureFault::None && !isOfUse) throw ScriptFault(ReasonOf(fault), shown);
  picture->Name = name;
  std::size_t pixelsOfAll = picture->PixelCount();
  for (const auto& [file, other] : run.Pictures) pixelsOfAll += other->PixelCount();
  if (pixelsOfAll > Picture::MaxPixelsOfAll) throw ScriptFault(FaultReason::TooManyPictures);
  if (!run.Surface.HasRoomFor(*picture)) throw ScriptFault(FaultReason::TooMuchDrawn);
  TryToDecode(run, *picture, shown);
  return picture;
}

std::shared_ptr<const Picture> PictureNamed(RunContext& run, std::string_view name) {
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  run.Work.Ask();
  const std::string fileName = run.Host.FindFile(run.Level().FileName, name);
  if (fileName.empty()) throw MissingFileFault(run, name);
  const auto known = run.Pictures.find(fileName);
  if (known != run.Pictures.end()) return known->second;
  return run.Pictures.emplace(fileName, ReadPictureFile(run, fileName, name)).first->second;
}

// The parts of parameter 4; references in those after the first are not yet replaced.
std::vector<std::string_view> SizeParts(const Parameters& parameters) {
  return SplitAt(parameters.Trimmed(4), parameters.Separators().Second);
}

bool AsksForSize(const Parameters& parameters) {
  return EqualIgnoringCase(Trim(SizeParts(parameters)[0]), "V");
}

double PositiveSize(double value) {
  if (!(value > 0)) throw ScriptFault(FaultReason::BadPictureSize, NumberText(value));
  return value;
}

// "coefficient", "X§Width", "Y§Height", "Z§Width§Height" or "A§Width§Height".
Point ReadSize(const RunContext& run, const Parameters& parameters, Point natural) {
  const std::vector<std::string_view> parts = SizeParts(parameters);
  const auto part = [&](std::size_t i) {
    const auto value = i < parts.size() ? NumberOf(run.Substitute(parts[i]), run.Separators) : std::nullopt;
    if (!value) throw ScriptFault(FaultReason::IncompleteParameter, Shorten(parameters.Trimmed(4), 40));
    return PositiveSize(*value);
  };
  const std::string form = UpperCase(Trim(parts[0]));
  if (form == "X") return natural * (part(1) / natural.X);
  if (form == "Y") return natural * (part(1) / natural.Y);
  if (form == "Z") return {part(1), part(2)};
  if (form == "A") return natural * std::min(part(1) / natural.X, part(2) / natural.Y);
  if (parts.size() == 1) return natural * PositiveSize(parameters.NumberOr(4, 1));
  throw ScriptFault(FaultReason::UnknownOption, Shorten(parameters.Trimmed(4), 40));
}

// The place of the lower left corner, seen from the point.
Point ReadPosition(std::string_view letters, Point size) {
  Point corner;
  for (char c : UpperCase(WithPlainBlanks(letters))) {
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
  const Point place = ReadPlace(run, parameters, 2);
  const Point natural = {picture->Width * MillimetresPerInch / picture->DpiX,
                         picture->Height * MillimetresPerInch / picture->DpiY};
  const Point size = ReadSize(run, parameters, natural);
  surface.PaintPicture(picture, place + ReadPosition(parameters.Trimmed(5), size), size);
  surface.MoveTo(place);
  run.AddOrder(OrderDrawn);
}

// "V§%X§%Y": the picture's pixels go into variables, and nothing is drawn.
void StoreSize(RunContext& run, const Parameters& parameters) {
  const std::shared_ptr<const Picture> picture = PictureNamed(run, TextOf(parameters.Text(1)));
  std::vector<std::string_view> names = SizeParts(parameters);
  names.resize(3);
  if (Trim(names[1]).empty() && Trim(names[2]).empty()) {
    throw ScriptFault(FaultReason::IncompleteParameter, Shorten(parameters.Trimmed(4), 40));
  }
  for (std::size_t i : {1U, 2U}) {
    if (Trim(names[i]).empty()) continue;
    run.SetVariable(Trim(names[i]), std::to_string(i == 1 ? picture->Width : picture->Height));
  }
}

}  // namespace

void RunImage(RunContext& run, const Parameters& parameters) {
  if (AsksForSize(parameters)) {
    StoreSize(run, parameters);
  } else {
    DrawPicture(run, parameters);
  }
}

}  // namespace vaxel
