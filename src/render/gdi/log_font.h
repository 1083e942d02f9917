// The rotated font: a font description and an angle made into a font of the device. It knows the device only
// through DeviceFonts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vaxel {

struct FontDescription {
  std::string Name = "Times New Roman";
  double Size = 10;  // points
  bool Bold = false;
  int Weight = 400;  // 400 normal, 700 bold
  bool Italic = false, Underline = false, Strikethrough = false;
  int CharacterSet = 1;  // the Windows number of the set; 1: the default one
};

// The logical font that a device is asked for; numbers are those of the Windows font structure.
struct DeviceFontRequest {
  int Height = 0;       // negative: of the characters, in pixels
  int Width = 0;        // 0: the font's own
  int Escapement = 0;   // of the baseline, tenths of a degree, counter-clockwise
  int Orientation = 0;  // of the characters, the same
  int Weight = 400;
  bool Italic = false, Underline = false, Strikethrough = false;
  int CharacterSet = 1;
  int OutPrecision = 0;
  int ClipPrecision = 0;
  int Quality = 2;  // proof
  int PitchAndFamily = 0;
  std::string FaceName;  // at most 32 characters
};

// Makes and deletes the fonts of a device.
class DeviceFonts {
 public:
  using Handle = void*;

  virtual ~DeviceFonts() = default;
  // Vertical, of the desktop's display.
  virtual int PixelsPerInch() = 0;
  // Null when the device has no more room.
  virtual Handle Create(const DeviceFontRequest& request) = 0;
  virtual void Delete(Handle font) = 0;
};

// The handle is either none or that of a font made from the present description and rotation; it is deleted
// before either changes, and with the object.
class CLogFont {
 public:
  // fonts must outlive the object. nudgesRightAngles: flag 1 of the setting Patchs, for devices that draw
  // text wrongly at exact right angles.
  explicit CLogFont(DeviceFonts& fonts, bool nudgesRightAngles = false)
      : fonts_(fonts), nudgesRightAngles_(nudgesRightAngles) {}
  ~CLogFont() { DeleteHandle(); }
  CLogFont(const CLogFont&) = delete;
  CLogFont& operator=(const CLogFont&) = delete;

  void LogFont(const std::optional<FontDescription>& font);
  const std::optional<FontDescription>& LogFont() const { return font_; }
  // Degrees, counter-clockwise.
  void Rotation(float degrees);
  float Rotation() const { return rotation_; }
  // Null for none; owned by the object.
  DeviceFonts::Handle Handle() const { return handle_; }

 private:
  void CreateHandle();
  void DeleteHandle();
  DeviceFontRequest Request() const;

  DeviceFonts& fonts_;
  bool nudgesRightAngles_;
  std::optional<FontDescription> font_;
  float rotation_ = 0;
  DeviceFonts::Handle handle_ = nullptr;
};

}  // namespace vaxel
