#include "render/system_measurer.h"

#include "drawing/standard_faces.h"

#ifdef _WIN32
#include "render/gdi_text.h"
#else
#include <string>

#include "render/cairo_module.h"
#endif

namespace vaxel {
namespace {

std::unique_ptr<TextMeasurer> MakeMeasurer() {
#ifdef _WIN32
  return MakeGdiMeasurer();
#else
  std::string error;
  return LoadPango(error);
#endif
}

}  // namespace

TextMeasurer& SystemMeasurer::Loaded() {
  if (!measurer_) measurer_ = MakeMeasurer();
  if (!measurer_) measurer_ = std::make_unique<StandInMeasurer>();
  return *measurer_;
}

}  // namespace vaxel
