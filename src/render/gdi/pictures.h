// Pictures through the imaging component of Windows.
#pragma once

#include <memory>
#include <string>

#include "drawing/picture.h"

namespace vaxel {

// To be used on the thread that made it. Null, with the reason in error, when the component is not there.
std::unique_ptr<PictureDecoder> MakeImagingDecoder(std::string& error);

}  // namespace vaxel
