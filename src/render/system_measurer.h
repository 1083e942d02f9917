#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "drawing/font_face.h"

namespace vaxel {

// Measures with the fonts of this machine. What that needs is loaded when the first text is measured; where
// it cannot be, a stand-in measures.
class SystemMeasurer : public TextMeasurer {
 public:
  FaceMetrics Metrics(const FontFace& face) override { return Loaded().Metrics(face); }
  double Width(const FontFace& face, std::string_view text) override { return Loaded().Width(face, text); }
  std::string Replacement(const FontFace& face) override { return Loaded().Replacement(face); }
  std::string Lacking(const FontFace& face, std::string_view text) override {
    return Loaded().Lacking(face, text);
  }
  // In English, why the stand-in has measured; empty when it has not.
  const std::string& Failure() const { return failure_; }

 private:
  TextMeasurer& Loaded();

  std::unique_ptr<TextMeasurer> measurer_;
  std::string failure_;
};

}  // namespace vaxel
