// Which of a printer's papers a drawing goes on.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "drawing/display_list.h"

namespace vaxel {

// A sheet in portrait, in millimetres.
struct Paper {
  int Kind = 0;  // the printer's number for it
  double Width = 0, Height = 0;
};

// Sheets are told in whole tenths of a millimetre, and in whole pixels.
inline constexpr double PaperTolerance = 0.3;

// Whether the page goes on the paper upright, or turned.
bool FitsUpright(const Page& page, const Paper& paper);
bool Fits(const Page& page, const Paper& paper);

// The paper for all pages of the list: the one that has just their size, else the printer's own one where it
// is large enough, else the smallest that is. There is none when no paper is.
std::optional<Paper> ChoosePaper(std::span<const Paper> papers, const Paper& own, const DisplayList& list);

}  // namespace vaxel
