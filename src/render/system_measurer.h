// The measurer of texts that this machine has.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
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
  // It fails when the stand-in has measured.
  const Result<>& Outcome() const { return outcome_; }

 private:
  TextMeasurer& Loaded();

  std::unique_ptr<TextMeasurer> measurer_;
  Result<> outcome_;
};

}  // namespace vaxel
