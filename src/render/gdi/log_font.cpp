#include "render/gdi/log_font.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr std::size_t MaxFaceName = 32;
constexpr int TrueTypeOnly = 7;
constexpr int Nudge = 2;  // tenths of a degree

std::string FirstCharacters(std::string_view text, std::size_t count) {
  std::string_view rest = text;
  while (!rest.empty() && count-- > 0) TakeCharacter(rest);
  return std::string(text.substr(0, text.size() - rest.size()));
}

}  // namespace

void CLogFont::LogFont(const std::optional<FontDescription>& font) {
  DeleteHandle();
  font_ = font;
  if (font_) CreateHandle();
}

void CLogFont::Rotation(float degrees) {
  if (degrees == rotation_) return;
  rotation_ = degrees;
  DeleteHandle();
  if (font_) CreateHandle();
}

void CLogFont::CreateHandle() {
  handle_ = fonts_.Create(Request());
}

void CLogFont::DeleteHandle() {
  if (handle_) fonts_.Delete(handle_);
  handle_ = nullptr;
}

DeviceFontRequest CLogFont::Request() const {
  const double rotation = double{rotation_};
  const bool turned = std::fmod(rotation, 360) != 0;
  DeviceFontRequest request;
  // Far beyond what any device can draw, and within what it can be asked for.
  constexpr double most = 1e6;
  request.Height = -static_cast<int>(std::clamp(font_->Size * fonts_.PixelsPerInch() / 72, 0.0, most));
  request.Orientation = static_cast<int>(std::clamp(std::nearbyint(rotation * 10), -most, most));
  request.Escapement = request.Orientation;
  const bool isRightAngle = request.Escapement % 900 == 0 && std::abs(request.Escapement) <= 2700;
  if (nudgesRightAngles_ && isRightAngle) request.Escapement += Nudge;
  request.Weight = font_->Weight;
  request.Italic = font_->Italic;
  request.Underline = font_->Underline;
  request.Strikethrough = font_->Strikethrough;
  request.CharacterSet = turned && font_->CharacterSet > 254 ? 0 : font_->CharacterSet;
  request.OutPrecision = turned ? TrueTypeOnly : 0;
  request.FaceName = FirstCharacters(font_->Name, MaxFaceName);
  return request;
}

}  // namespace vaxel
