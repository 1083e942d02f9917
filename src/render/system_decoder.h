// The decoder of pictures that this machine has.
#pragma once

#include <memory>

#include "base/result.h"
#include "drawing/picture.h"

namespace vaxel {

// Decodes with the libraries of this machine, which are loaded for the first picture.
class SystemDecoder : public PictureDecoder {
 public:
  Result<> Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override;
  Result<> Check(const Picture& picture) override;
  // It fails when no picture can be decoded, which the first one tells.
  const Result<>& Outcome() const { return outcome_; }

 private:
  bool HasDecoder();

  std::unique_ptr<PictureDecoder> decoder_;
  Result<> outcome_;
};

}  // namespace vaxel
