// The state of the view on the screen, which lasts from run to run.
#pragma once

#include "base/point.h"

namespace vaxel {

// Where the drawing stands on the screen, and what the pointer over it counts from.
struct ViewState {
  double OffX = 0, OffY = 0;  // of the default centre from the middle, mm of the screen, y upward
  double ScreenZoom = 1;
  double NextZoom = 1;      // with which the next zoom view opens
  Point GraphicCentre;      // of the last run, drawing units from the lower-left corner of the area
  double GraphicScale = 1;  // millimetres of the screen of one drawing unit, in the last run
  double GraphicWidthMm = 0, GraphicHeightMm = 0;  // of the graphic area

  // The pointer and the reference point from which its place is counted, in drawing units from the
  // lower-left corner.
  float MouseX = 0, MouseY = 0;
  float RefX = 0, RefY = 0;
  float RefInX = 0, RefInY = 0;  // the reference point as it was entered, from the graphic centre
};

}  // namespace vaxel
