#include "interpreter/run_context.h"

#include "interpreter/colour_value.h"

namespace vaxel {

void RunContext::SetPen(const Pen& pen) {
  Level().CurrentPen = pen;
  Surface.DrawWidth = pen.Width;
}

Colour RunContext::ColourOr(std::string_view text) const {
  return ColourValue(text, Separators).value_or(Surface.ForeColor);
}

void RunContext::WriteComment(std::string_view comment) {
  Host.WriteComment(Level().FileName, Level().Line.Number, comment);
}

}  // namespace vaxel
