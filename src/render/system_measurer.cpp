#include "render/system_measurer.h"

#include "drawing/standard_faces.h"

#ifdef _WIN32
#include "render/gdi/text.h"
#else
#include "render/cairo_module.h"
#endif

namespace vaxel {
namespace {

std::unique_ptr<TextMeasurer> MakeMeasurer([[maybe_unused]] std::string& error) {
#ifdef _WIN32
  return MakeGdiMeasurer();
#else
  return LoadPango(error);
#endif
}

}  // namespace

TextMeasurer& SystemMeasurer::Loaded() {
  if (!measurer_) measurer_ = MakeMeasurer(failure_);
  if (!measurer_) measurer_ = std::make_unique<StandInMeasurer>();
  return *measurer_;
}

}  // namespace vaxel
