// How a preview shows its pages: which one, where and how large.
#pragma once

#include <cstddef>

#include "app/dialogs.h"
#include "app/graphic_view.h"
#include "app/rulers.h"

namespace vaxel {

class PreviewView {
 public:
  // The pages must have been shown first for all that follows. The page stays where there is such a page.
  void Show(PreviewPages pages);
  // A preview of whole sheets stays one.
  void Resize(const GraphicArea& area);

  const PreviewPages& Pages() const { return pages_; }
  std::size_t Page() const { return page_; }
  std::size_t LastPage() const { return pages_.Drawing->Pages().size() - 1; }
  void TurnTo(std::size_t page);

  void ShowWhole();
  // By so many steps, about a pixel or about the middle.
  void Zoom(double steps, Point pixel);
  void Zoom(double steps) { Zoom(steps, area_.MiddlePx()); }
  void Move(Point byPixels);

  PagePlace Place() const { return place_; }
  PaperBox PaperPx() const { return InPixels(Sheet().Paper); }
  PaperBox PrintablePx() const { return InPixels(Sheet().Printable); }
  bool HasMargins() const;  // else all of the paper can be printed on
  // In millimetres from the lower-left corner of what can be printed on, as a script counts on paper.
  vaxel::Rulers Rulers() const;

 private:
  const PaperOutline& Sheet() const { return pages_.Sheets[page_]; }
  PaperBox InPixels(const PaperBox& box) const {
    return {place_.ToPixels(box.Corner), place_.ToPixels(box.Opposite)};
  }
  double UnitPx() const { return MillimetresPerInch / 96 / area_.PixelMm; }

  PreviewPages pages_;
  std::size_t page_ = 0;
  GraphicArea area_;
  PagePlace place_;
  bool isWhole_ = true;
};

}  // namespace vaxel
