// The way into the imaging component of Windows.
#pragma once

#include <objbase.h>
#include <wincodec.h>

#include "winbase/gdi_handles.h"

namespace vaxel {

// The imaging component of Windows, for the thread that asks for it; null when it is not there.
UniqueCom<IWICImagingFactory> MakeImagingFactory();

}  // namespace vaxel
