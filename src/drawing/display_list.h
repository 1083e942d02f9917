// The drawing that one run has made: pages of operations, ready to be played by any renderer.
//
// All coordinates, radii and widths are device millimetres: millimetres of paper or of the screen as the
// device counts them, x to the right and y downward from the upper-left corner of the page. The run's zoom
// is already applied. Angles are radians, 0 to the right, counter-clockwise as the reader sees the page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/contour.h"
#include "base/point.h"
#include "drawing/chunked_vector.h"
#include "drawing/colour.h"
#include "drawing/font_face.h"
#include "drawing/picture.h"

namespace vaxel {

// What is inside a closed figure. Four bytes, with fields of one type, as not every compiler packs two: there
// is one in every operation.
struct Fill {
  constexpr Fill() : Ink(Black), Solid(0) {}
  explicit constexpr Fill(Colour ink) : Fill(true, ink) {}
  constexpr Fill(bool solid, Colour ink) : Ink(ink & 0xFFFFFF), Solid(solid ? 1 : 0) {}

  Colour Ink : 24;
  Colour Solid : 1;
};

// A straight segment with round ends.
struct LineShape {
  Point From, To;
};

// A box between two opposite corners; its joins are round.
struct RectangleShape {
  Point Corner, Opposite;
  Fill Inside{};
};

enum class PolygonUse : std::uint8_t {
  Figure,
  // A stroke with square ends, filled: its two corners at the start, then those at the end. Its outline,
  // which makes it wider, is that of a device of pixels; what can draw it as wide as it is leaves the outline
  // out.
  Stroke
};

// A closed polygon with round joins; its corners are DisplayList::Corners().
struct PolygonShape {
  std::uint32_t First = 0;
  std::uint32_t Count = 0;
  Fill Inside{};
  PolygonUse Use = PolygonUse::Figure;
};

// A closed contour of arcs and straight lines with round joins; its pieces are DisplayList::Pieces().
struct ContourShape {
  std::uint32_t First = 0;
  std::uint32_t Count = 0;
  Fill Inside{};
};

enum class CircleForm : std::uint8_t {
  Full,  // the angles mean nothing
  Arc,   // from StartAngle counter-clockwise to EndAngle; StartAngle < EndAngle < StartAngle + 2π
  Pie    // the same with the two radii
};

// A circle or an ellipse with level axes, or a part of it. An arc is never filled.
struct CircleShape {
  Point Centre;
  double RadiusX = 0, RadiusY = 0;
  double StartAngle = 0, EndAngle = 0;
  Fill Inside{};
  CircleForm Form = CircleForm::Full;
  bool Butt = false;  // an arc ends square, on the rays of its ends; else round
};

// Text on a straight baseline, without kerning and ligatures. A renderer whose font gives it another length
// stretches it to this one.
struct TextShape {
  Point Start;                // of the baseline
  double Angle = 0;           // of the baseline
  double Size = 0;            // of the font, greater than 0
  double Length = 0;          // of the baseline
  std::uint32_t Content = 0;  // see DisplayList::TextOf()
  std::uint32_t Face = 0;     // see DisplayList::FaceOf()
};

// A picture that fills a box.
struct PictureShape {
  Point Corner;  // upper left
  double Width = 0, Height = 0;
  std::uint32_t Content = 0;  // see DisplayList::PictureOf()
};

using Shape =
    std::variant<LineShape, RectangleShape, PolygonShape, ContourShape, CircleShape, TextShape, PictureShape>;

struct Operation {
  double Width = 0;    // of the stroke; 0: a filled figure is not stroked. Texts and pictures have none
  Colour Ink = Black;  // of the stroke, or of the text
  std::uint32_t SourceLine = 0;  // the line of the main script that drew it, from 1
  Shape Figure{};
};

// A drawing of a million operations must stay a matter of a hundred megabytes.
static_assert(sizeof(Operation) <= 80);

struct Page {
  double Width = 0, Height = 0;
  std::size_t First = 0, Count = 0;  // its operations
  Point Origin{};                    // the graphic centre of the main script, as it was at the end
  // Renderers show the page as in a mirror, left and right changed about its middle, texts and pictures too.
  // All coordinates are those before that.
  bool IsMirrored = false;
};

// Where in an included script an operation was drawn.
struct IncludedPlace {
  std::string File;        // as the run names it
  std::uint32_t Line = 0;  // from 1
};

// The largest magnitude, in device millimetres: beyond it DrawSurface throws a DrawingFault, so that every
// renderer gets numbers that its format can hold.
inline constexpr double MaxCoordinate = 100'000;

// The operations of a drawing. What would exceed a limit throws a DrawingFault.
class DisplayList {
 public:
  // The limit holds for pages as well, which may be empty.
  static constexpr std::size_t MaxOperations = 5'000'000;
  // The limit holds for all texts together, so that the limits bound the memory whatever is drawn.
  static constexpr std::size_t MaxTextBytes = 100'000'000;
  // The limit holds for all pictures together, each counted as often as it is drawn: an output may hold it as
  // often.
  static constexpr std::size_t MaxPictureBytes = 500'000'000;
  // Of memory: what Bytes() and DecodedBytes() count.
  static constexpr std::size_t MaxBytes = 450'000'000;

  DisplayList() = default;
  // room: so many bytes are taken at most, where other drawings have the rest of MaxBytes.
  explicit DisplayList(std::size_t room) : room_(room) {}

  const std::vector<Page>& Pages() const { return pages_; }
  std::size_t Size() const { return operations_.size(); }
  const Operation& At(std::size_t index) const { return operations_[index]; }
  // The memory that the drawing takes, about, and what the pixels of its pictures take while an output has
  // them decoded.
  std::size_t Bytes() const { return bytes_; }
  std::size_t DecodedBytes() const { return decodedBytes_; }
  std::size_t Room() const { return room_; }
  // Whether a picture that it does not have yet could be added.
  bool HasRoomFor(const Picture& picture) const {
    return bytes_ + decodedBytes_ + picture.Bytes.size() + picture.DecodedBytes() <= room_;
  }
  // Copies the corners of a polygon into buffer, which grows as needed, and returns them.
  std::span<const Point> Corners(const PolygonShape& polygon, std::vector<Point>& buffer) const;

  // The same for the pieces of a contour. Their angles are those that the reader sees.
  std::span<const ContourArc> Pieces(const ContourShape& contour, std::vector<ContourArc>& buffer) const;

  // The text is well-formed UTF-8 without control characters.
  const std::string& TextOf(const TextShape& text) const { return texts_[text.Content]; }
  const FontFace& FaceOf(const TextShape& text) const { return faces_[text.Face]; }

  // The object is the same for the same picture drawn again.
  const Picture& PictureOf(const PictureShape& shape) const { return *pictures_[shape.Content]; }
  const std::shared_ptr<const Picture>& SharedPictureOf(const PictureShape& shape) const {
    return pictures_[shape.Content];
  }

  // The line of an included script that drew an operation; there is none for the main script's own.
  std::optional<IncludedPlace> IncludedAt(std::size_t index) const;

  // Names the script whose lines draw from now on, and the line. An empty name is the main script's, whose
  // lines the operations know.
  void ComesFromFile(std::string_view name);
  void ComesFromLine(std::uint32_t line) { now_.Line = now_.File == 0 ? 0 : line; }
  // Begins a page; the operations that follow belong to it. Its origin is that of the page before.
  void BeginPage(double width, double height);
  // Gives the page being drawn another size.
  void ResizePage(double width, double height);
  // Gives a page another frame: its upper-left corner comes to lie where it had corner, and what is drawn
  // moves along.
  void FramePage(std::size_t page, Point corner, double width, double height);
  void PlaceOrigin(Point place) { pages_.back().Origin = place; }
  // Has the page being drawn shown as in a mirror.
  void MirrorPage() { pages_.back().IsMirrored = true; }
  // Whether it is so far from its limits that there is room for many pages like those that it has.
  bool HasRoomForPages() const;
  // Empties the page being drawn and forgets all earlier ones.
  void Clear();
  // The calls that add need a page.
  void Add(const Operation& operation);
  void AddPolygon(std::span<const Point> corners, const Fill& inside, Operation operation,
                  PolygonUse use = PolygonUse::Figure);
  void AddContour(std::span<const ContourArc> pieces, const Fill& inside, Operation operation);
  // These two fill in what the shape refers to.
  void AddText(std::string text, const FontFace& face, TextShape shape, Operation operation);
  void AddPicture(std::shared_ptr<const Picture> picture, PictureShape shape, Operation operation);

 private:
  void Take(std::size_t bytes, std::size_t decodedBytes = 0);
  template <class Kind, class Item>
  Kind Stored(std::span<const Item> items, ChunkedVector<Item>& storage, const Fill& inside);
  std::uint32_t IndexOf(const FontFace& face);
  void Move(Shape& figure, Point way);

  // A line of an included script; the file is counted from 1, and 0 is the main script.
  struct Origin {
    std::uint32_t File = 0, Line = 0;
    bool operator==(const Origin&) const = default;
  };
  struct OriginFrom {
    std::size_t First;  // the operation from which on it holds
    Origin Place;
  };

  std::vector<Page> pages_;
  ChunkedVector<Operation> operations_;
  std::vector<OriginFrom> origins_;
  std::vector<std::string> originFiles_;
  Origin now_;
  ChunkedVector<Point> corners_;
  ChunkedVector<ContourArc> pieces_;
  ChunkedVector<std::string> texts_;
  std::size_t textBytes_ = 0;
  std::vector<std::shared_ptr<const Picture>> pictures_;
  std::size_t pictureBytes_ = 0;
  std::size_t bytes_ = 0, decodedBytes_ = 0, room_ = MaxBytes;
  std::vector<FontFace> faces_;
  std::map<FontFace, std::uint32_t> faceIndex_;
  std::uint32_t lastFace_ = 0;
};

}  // namespace vaxel
