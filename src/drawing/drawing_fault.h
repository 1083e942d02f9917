// The one way in which drawing fails.
#pragma once

#include <cstdint>

namespace vaxel {

// It is thrown where the drawing cannot take what is drawn, and caught at the run's top. The drawing then
// holds what came before.
struct DrawingFault {
  enum class Reason : std::uint8_t {
    TooManyOperations,  // or pages, or corners: see DisplayList::MaxOperations
    TooMuchText,        // see DisplayList::MaxTextBytes
    TooManyPictures,    // see DisplayList::MaxPictureBytes
    TooMuchDrawn,       // see DisplayList::MaxBytes
    OutOfRange          // a coordinate, radius or width is not finite or beyond MaxCoordinate
  };
  Reason Why;
};

}  // namespace vaxel
