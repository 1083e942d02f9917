#include "render/system_measurer.h"

#include "drawing/standard_faces.h"

#ifdef _WIN32
#include "render/gdi/text.h"
#else
#include "render/cairo_module.h"
#endif

namespace vaxel {

TextMeasurer& SystemMeasurer::Loaded() {
  if (measurer_) return *measurer_;
#ifdef _WIN32
  measurer_ = MakeGdiMeasurer();
#else
  auto loaded = LoadPango();
  if (loaded) {
    measurer_ = *std::move(loaded);
  } else {
    measurer_ = std::make_unique<StandInMeasurer>();
    outcome_ = loaded.Why();
  }
#endif
  return *measurer_;
}

}  // namespace vaxel
