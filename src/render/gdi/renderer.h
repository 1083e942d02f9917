// What draws pages by way of GDI: windows, printers and metafiles.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "render/device_transform.h"
#include "render/gdi/bitmap.h"
#include "render/gdi/fonts.h"
#include "render/picture_scaling.h"
#include "render/pixel_canvas.h"
#include "render/renderer.h"
#include "render/stroke_outline.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

// Decoded pictures, kept until the object ends.
class GdiPictures {
 public:
  // decoder must outlive the object; without one there can be no pictures.
  explicit GdiPictures(PictureDecoder* decoder) : decoder_(decoder) {}

  // Colours are multiplied by their alpha; as many pixels as the picture has. Null when it cannot be decoded.
  const std::vector<std::uint32_t>* PixelsOf(const Picture& picture);

 private:
  // Lists share their pictures, and a list that is cleared lets them go: another may then lie at the same
  // place.
  struct Decoded {
    const char* Bytes = nullptr;
    std::size_t Size = 0;
    std::vector<std::uint32_t> Pixels{};  // empty: it cannot be decoded
  };

  PictureDecoder* decoder_;
  std::map<const Picture*, Decoded> decoded_;
};

// What is made for a drawing and serves the next one too.
struct GdiStock {
  // nudgesRightAngles: flag 1 of the setting Patchs, see CLogFont.
  GdiStock(PictureDecoder* decoder, bool nudgesRightAngles) : Fonts(nudgesRightAngles), Pictures(decoder) {}

  GdiFonts Fonts;
  GdiPictures Pictures;
};

// Draws pages on any context of Windows. The paper is not drawn.
class GdiRenderer : public Renderer {
 public:
  // Draws with pens, in the context's own whole units: pixels, unless it maps others. For printers and
  // metafiles: pens keep their width whatever shows the drawing in the end. Such devices know no
  // transparency: a picture is given to them together with what lies below it, for which the list is needed
  // that is played. With pixels below 0 across the page is mirrored. All must outlive the renderer.
  GdiRenderer(HDC context, const DeviceTransform& transform, GdiStock& stock, const DisplayList& list);
  // Draws into a bitmap, where GDI sets the texts alone: its figures and pens may lie a whole pixel beside
  // their places, and wide pens are slow. With leastWidth, mm, it is for a file: there strokes are exactly as
  // wide as they say, but widened to leastWidth where they are thinner.
  GdiRenderer(const BitmapDc& target, const DeviceTransform& transform, GdiStock& stock,
              std::optional<double> leastWidth = {});

  // For the pages that follow.
  void Place(const DeviceTransform& transform);

  // The context is as it was before when the page has ended.
  void BeginPage(const Page& page, std::size_t number) override;
  void EndPage() override;
  void Line(const Operation& operation, const LineShape& line) override;
  void Rectangle(const Operation& operation, const RectangleShape& rectangle) override;
  void Polygon(const Operation& operation, const PolygonShape& polygon,
               std::span<const Point> corners) override;
  void Contour(const Operation& operation, const ContourShape& contour,
               std::span<const ContourArc> pieces) override;
  void Circle(const Operation& operation, const CircleShape& circle) override;
  void Text(const Operation& operation, const TextShape& shape, std::string_view text,
            const FontFace& face) override;
  void Image(const Operation& operation, const PictureShape& shape, const Picture& picture) override;

  // What failed first, when anything has.
  const Result<>& Outcome() const { return outcome_; }

 private:
  struct Box {
    double Left, Top, Right, Bottom;
  };
  static Box BoxOf(Point first, Point second);

  // Whether a figure within the box, which a stroke of the width surrounds, can be seen at all.
  bool IsVisible(const Box& box, double width) const;
  double HalfWidth(const Operation& operation) const;

  enum class PathEnds : std::uint8_t { None, Round, Square };  // none: the path is closed

  template <class Stroke>
  void Paint(const Operation& operation, const Fill& inside, PathEnds ends, Stroke stroke);
  void PaintPath(const Operation& operation, const Fill& inside, PathEnds ends);
  void PaintWithPen(const Operation& operation, const Fill& inside, std::span<const Point> path,
                    PathEnds ends);
  void PaintDot(const Operation& operation, Point at);
  // The first contour in stroke_.
  void FillStroke(Colour ink);
  // Those of a path in points_; false when they are all the same.
  bool RoundPoints(std::span<const Point> path);
  PixelCanvas& Canvas();

  void SelectInk(Colour ink);
  void SelectStroke(Colour ink, int width, PathEnds ends);
  // An opaque picture of this size: what lies below the picture, with the picture upon it.
  GdiBitmap WithGround(const Operation& operation, const PictureShape& shape, const PixelView& picture,
                       int width, int height);
  void StretchPicture(const Operation& operation, const PictureShape& shape, const PixelBox& box,
                      const PixelView& picture);
  bool PaintMirrored(const DeviceText& text, std::string_view content, const FontFace& face);
  void Expect(bool succeeded, TextId failure);

  HDC context_;
  DeviceTransform transform_;
  GdiStock& stock_;
  const DisplayList* list_ = nullptr;
  std::size_t page_ = 0;               // from 0
  std::optional<PixelCanvas> canvas_;  // none where pens draw
  bool hasPendingTexts_ = false;       // which GDI may not have put into the bitmap yet
  double pixelMm_ = 0;                 // the side of a pixel, the larger one where they differ
  std::optional<double> leastWidth_{};
  Contours shape_, stroke_;
  std::vector<POINT> points_;
  int saved_ = 0;
  UniqueGdi<HBRUSH> brush_;
  Colour brushInk_ = 0;
  UniqueGdi<HPEN> pen_;
  Colour penInk_ = 0;
  int penWidth_ = 0;
  bool isPenSquare_ = false;
  Result<> outcome_;
};

}  // namespace vaxel
