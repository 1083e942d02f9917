// A script's text on paper: with the numbers of its lines, its file's name at the head and the number of the
// page at the foot.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "drawing/display_list.h"
#include "drawing/font_face.h"

namespace vaxel {

struct CodeLayout {
  double WidthMm = 0, HeightMm = 0;  // the area that can be printed on, above 0
  FontFace Face;
  double Points = 10;          // the size of the characters, above 0
  bool HasColour = true;       // the words are in the editor's colours, else all of them are black
  std::string FileName, Date;  // at the head
  std::function<std::string(std::size_t page, std::size_t pages)> Foot{};  // pages are counted from 1
  TextMeasurer* Measurer = nullptr;  // of fonts that are not standard ones; null: a stand-in
};

// The pages of a text whose lines end in LF, without any for an empty text. A line that is too long goes on
// below, behind a mark. Throws DrawingFault where the text is too long for a drawing.
DisplayList CodePages(std::string_view text, const CodeLayout& layout);

}  // namespace vaxel
