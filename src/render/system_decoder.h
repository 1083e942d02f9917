#pragma once

#include <memory>
#include <string>

#include "drawing/picture.h"

namespace vaxel {

// Decodes with the libraries of this machine, which are loaded for the first picture.
class SystemDecoder : public PictureDecoder {
 public:
  bool Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override;
  // In English, why no picture can be decoded; empty as long as that is not known.
  const std::string& Failure() const { return failure_; }

 private:
  std::unique_ptr<PictureDecoder> decoder_;
  std::string failure_;
};

}  // namespace vaxel
