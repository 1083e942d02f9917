#include "render/gdi/imaging.h"

namespace vaxel {

UniqueCom<IWICImagingFactory> MakeImagingFactory() {
  // Whoever has set the thread up already has done it in a way that serves here too.
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  return Obtained<IWICImagingFactory>([](IWICImagingFactory** made) {
    return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                            reinterpret_cast<void**>(made));
  });
}

}  // namespace vaxel
