// Pictures through the imaging component of Windows.
#pragma once

#include <memory>

#include "base/result.h"
#include "drawing/picture.h"

namespace vaxel {

// The decoder is to be used on the thread that made it. It fails when the component is not there.
Result<std::unique_ptr<PictureDecoder>> MakeImagingDecoder();

}  // namespace vaxel
