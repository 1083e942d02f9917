#pragma once

#include <objbase.h>
#include <wincodec.h>

#include "winbase/gdi_handles.h"

namespace vaxel {

// The imaging component of Windows, for the thread that asks for it; null when it is not there.
UniqueCom<IWICImagingFactory> MakeImagingFactory();

inline constexpr const char* NoImaging = "the imaging component of Windows is missing";

}  // namespace vaxel
