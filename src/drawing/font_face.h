// Fonts as a drawing knows them. What is measured in parts of the size is to be multiplied by it: a width of
// 0.5 is 5 points in a font of 10.
#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace vaxel {

struct FontFace {
  std::string Name;
  bool Bold = false, Italic = false;

  friend auto operator<=>(const FontFace&, const FontFace&) = default;
};

// The measures of a face, in parts of the size.
struct FaceMetrics {
  double Ascent = 0;              // of the character cell, above the baseline
  double Descent = 0;             // below it, positive
  double UnderlinePosition = 0;   // of the underline's middle, above the baseline: negative
  double UnderlineThickness = 0;  // greater than 0
};

// Measures text in the fonts of one target. It throws nothing.
class TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;

  virtual FaceMetrics Metrics(const FontFace& face) = 0;
  // The width of well-formed UTF-8 without control characters, in parts of the size.
  virtual double Width(const FontFace& face, std::string_view text) = 0;
  // The family that is used in place of one that is not there; the name is empty when that is there.
  virtual std::string Replacement(const FontFace& face) = 0;
  // The first character of the text that no font has, as far as that can be told; else it is empty.
  virtual std::string Lacking(const FontFace& /*face*/, std::string_view /*text*/) { return {}; }
};

}  // namespace vaxel
