#include "drawing/sheet_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "drawing/page_bounds.h"
#include "drawing/sheet_copier.h"
#include "drawing/sheet_pen.h"

namespace vaxel {
namespace {

// Sizes are compared with what computing them may add.
constexpr double Rounding = 1e-6;

constexpr double HairWidth = 0.1;

// Crop marks reach from the box to so far beyond it.
constexpr double MarkGap = 1, MarkReach = 5;

// The strip of the line of 100 mm, from the edge of the page: printers that tell nothing of their margins
// leave some millimetres white.
constexpr double StripHeight = 15, LineHeight = 7, LabelHeight = 11.5;
constexpr double StripStart = 10, StripEnd = 14;

// A page before calibration: the sheet in the lengths that come out of the printer.
struct Nominal {
  Nominal(const Page& page, const Calibration& factors)
      : Width(page.Width / factors.X), Height(page.Height / factors.Y), FromPage{0, Height - page.Height} {}

  double Width, Height;
  Point FromPage;  // both have the same lower-left corner
};

Box Moved(Box box, Point way) {
  box.Left += way.X;
  box.Right += way.X;
  box.Top += way.Y;
  box.Bottom += way.Y;
  return box;
}

// The places of the copies on one sheet, row by row.
struct Arrangement {
  std::size_t Columns = 1, OnSheet = 1;
  Box First{};    // the box of the first copy; empty when nothing is drawn
  Point Shift{};  // of the first copy, from where the script has drawn it
  Point Step{};   // to the next column and row

  // From the first copy.
  Point WayTo(std::size_t copy) const {
    const std::size_t column = copy % Columns, row = copy / Columns;
    return {Step.X * static_cast<double>(column), Step.Y * static_cast<double>(row)};
  }
};

// How often a length goes into the room, with gaps between.
std::size_t TimesIn(double room, double length, double gap) {
  const double times = std::floor((room + gap) / std::max(length + gap, Rounding) + Rounding);
  return static_cast<std::size_t>(std::clamp(times, 0.0, static_cast<double>(MaxCopies)));
}

Arrangement ArrangementOf(const DisplayList& drawing, std::size_t page, const Nominal& sheet,
                          const SheetOptions& options) {
  Arrangement single;
  single.Shift = sheet.FromPage;
  const std::optional<Box> bounds = BoundsOf(drawing, page);
  if (!bounds) return single;
  single.First = Moved(*bounds, sheet.FromPage);
  if (options.Copies == 1) return single;
  const double margin = options.CropMarks ? MarkReach : 0;
  const double strip = options.Ruler ? std::max(margin, StripHeight) : margin;
  const double room = sheet.Width - 2 * margin, height = sheet.Height - margin - strip;
  const std::size_t across = TimesIn(room, bounds->Width(), options.GapMm);
  const std::size_t down = TimesIn(height, bounds->Height(), options.GapMm);
  const std::size_t wanted = options.Copies == AsManyAsFit ? MaxCopies : std::min(options.Copies, MaxCopies);
  if (across * down < 2) return single;
  Arrangement rows;
  rows.OnSheet = std::min(across * down, wanted);
  rows.Columns = std::min(across, rows.OnSheet);
  rows.Step = {bounds->Width() + options.GapMm, bounds->Height() + options.GapMm};
  const std::size_t lines = (rows.OnSheet + rows.Columns - 1) / rows.Columns;
  const double width = rows.Step.X * static_cast<double>(rows.Columns) - options.GapMm;
  const double depth = rows.Step.Y * static_cast<double>(lines) - options.GapMm;
  const Point corner = {margin + (room - width) / 2, margin + (height - depth) / 2};
  rows.Shift = corner - Point{bounds->Left, bounds->Top};
  rows.First = Moved(*bounds, rows.Shift);
  return rows;
}

// Which sides of a copy have another one beyond the gap.
struct Neighbours {
  bool Left, Right, Above, Below;
};

Neighbours NeighboursOf(const Arrangement& rows, std::size_t copy, std::size_t count) {
  const std::size_t column = copy % rows.Columns;
  return {column > 0, column + 1 < rows.Columns && copy + 1 < count, copy >= rows.Columns,
          copy + rows.Columns < count};
}

// The part of a mark that lies on the page, where it is long enough to cut by.
void DrawMark(SheetPen& pen, Point from, Point to, const Nominal& sheet) {
  const auto within = [&](Point point) {
    return Point{std::clamp(point.X, 0.0, sheet.Width), std::clamp(point.Y, 0.0, sheet.Height)};
  };
  const Point start = within(from), end = within(to);
  const bool isAside = from.X == to.X ? start.X != from.X : start.Y != from.Y;
  if (!isAside && std::hypot(end.X - start.X, end.Y - start.Y) >= MarkGap - Rounding)
    pen.Line(start, end, HairWidth);
}

// Between copies no mark reaches beyond the gap: they would lie on the neighbours.
void DrawCropMarks(SheetPen& pen, const Box& box, const Neighbours& beside, double gap,
                   const Nominal& sheet) {
  const auto reach = [gap](bool hasNeighbour) { return hasNeighbour ? std::min(MarkReach, gap) : MarkReach; };
  const auto mark = [&](Point corner, Point outward, double length) {
    if (length >= 2 * MarkGap) DrawMark(pen, corner + outward * MarkGap, corner + outward * length, sheet);
  };
  for (const double y : {box.Top, box.Bottom}) {
    mark({box.Left, y}, {-1, 0}, reach(beside.Left));
    mark({box.Right, y}, {1, 0}, reach(beside.Right));
  }
  for (const double x : {box.Left, box.Right}) {
    mark({x, box.Top}, {0, -1}, reach(beside.Above));
    mark({x, box.Bottom}, {0, 1}, reach(beside.Below));
  }
}

// A strip along an edge of the page, its baseline toward that edge or, at the top and on the left, away from
// it, so that all can be read without turning one's head twice.
struct Strip {
  Point Origin;      // the start of its lower side
  bool IsUp;         // it runs upward
  double Along = 0;  // its length

  Point At(double along, double up) const {
    return IsUp ? Origin + Point{-up, -along} : Origin + Point{along, -up};
  }
  double LineLength() const {
    return std::clamp(std::floor((Along - StripStart - StripEnd + Rounding) / 10) * 10, 0.0, FullRulerMm);
  }
  Box Area() const {
    Box box;
    box.Add(At(0, 0));
    box.Add(At(Along, StripHeight));
    return box;
  }
};

std::array<Strip, 4> StripsOf(const Nominal& sheet) {
  // Where the label is the nearer one to the edge, it must not lie in the printer's margin either.
  constexpr double far = StripHeight + 3;
  return {Strip{{0, sheet.Height}, false, sheet.Width}, Strip{{0, far}, false, sheet.Width},
          Strip{{far, sheet.Height}, true, sheet.Height},
          Strip{{sheet.Width, sheet.Height}, true, sheet.Height}};
}

// The strip with the longest line, of those one that nothing is drawn in where there is one, the lower edge
// first.
Strip ChooseStrip(const Nominal& sheet, const Box& drawn) {
  const std::array<Strip, 4> strips = StripsOf(sheet);
  const auto isFree = [&](const Box& area) {
    return drawn.IsEmpty() || drawn.Right < area.Left || drawn.Left > area.Right || drawn.Bottom < area.Top ||
           drawn.Top > area.Bottom;
  };
  const auto merit = [&](const Strip& strip) { return std::pair(strip.LineLength(), isFree(strip.Area())); };
  return *std::max_element(strips.begin(), strips.end(),
                           [&](const Strip& a, const Strip& b) { return merit(a) < merit(b); });
}

void DrawRuler(SheetPen& pen, const Strip& strip, const std::string& label) {
  const double length = strip.LineLength();
  if (length == 0) return;
  constexpr double lineWidth = 0.15, beside = 1.2;
  const auto at = [&](double along, double up) { return strip.At(StripStart + along, LineHeight + up); };
  pen.Line(at(0, 0), at(length, 0), lineWidth);
  for (double mark = 0; mark <= length; mark += 10) {
    const bool isEnd = mark == 0 || mark == length;
    pen.Line(at(mark, isEnd ? -1.5 : 0), at(mark, isEnd ? 3 : 1.5), lineWidth);
  }
  pen.Text(at(-beside, -1), SheetPen::At::End, "0", strip.IsUp);
  pen.Text(at(length + beside, -1), SheetPen::At::Start, std::to_string(std::lround(length)) + " mm",
           strip.IsUp);
  pen.Text(strip.At(StripStart, LabelHeight), SheetPen::At::Start, label, strip.IsUp,
           strip.Along - 2 * StripStart);
}

// Makes the sheets of one page after the other.
class Composer {
 public:
  Composer(const DisplayList& drawing, const SheetOptions& options, TextMeasurer* measurer,
           const SheetWatch& goOn)
      : drawing_(drawing),
        options_(options),
        measurer_(measurer),
        goOn_(goOn),
        sheets_(drawing.Room() - drawing.Bytes()) {}

  DisplayList Compose() {
    for (std::size_t page = 0; page < drawing_.Pages().size(); ++page) ComposePage(page);
    return std::move(sheets_);
  }

 private:
  void ComposePage(std::size_t page) {
    const Nominal sheet(drawing_.Pages()[page], options_.FactorsFor(drawing_.Pages()[page]));
    const Arrangement rows = ArrangementOf(drawing_, page, sheet, options_);
    std::size_t left = options_.Copies == AsManyAsFit ? rows.OnSheet : std::min(options_.Copies, MaxCopies);
    // A page without a drawing stays a page, and one is enough.
    if (rows.First.IsEmpty()) left = 1;
    while (left > 0) {
      const std::size_t count = std::min(left, rows.OnSheet);
      ComposeSheet(page, sheet, rows, count);
      left -= count;
    }
  }

  void ComposeSheet(std::size_t page, const Nominal& sheet, const Arrangement& rows, std::size_t count) {
    const Page& drawn = drawing_.Pages()[page];
    sheets_.BeginPage(drawn.Width, drawn.Height);
    if (options_.Mirrored) sheets_.MirrorPage();
    const Calibration factors = options_.FactorsFor(drawn);
    SheetCopier copier(drawing_, sheets_, factors);
    sheets_.PlaceOrigin(copier.Placed(drawn.Origin, rows.Shift));
    for (std::size_t copy = 0; copy < count; ++copy) copier.Copy(page, rows.Shift + rows.WayTo(copy), goOn_);
    const DisplayList added = Added(sheet, rows, count);
    SheetCopier(added, sheets_, factors).Copy(0, {});
  }

  // What the sheet brings of its own, before calibration.
  DisplayList Added(const Nominal& sheet, const Arrangement& rows, std::size_t count) const {
    DisplayList added;
    added.BeginPage(sheet.Width, sheet.Height);
    SheetPen pen(added, measurer_);
    Box all;
    for (std::size_t copy = 0; copy < count && !rows.First.IsEmpty(); ++copy) {
      const Box box = Moved(rows.First, rows.WayTo(copy));
      all.Unite(box);
      if (options_.CropMarks) DrawCropMarks(pen, box, NeighboursOf(rows, copy, count), options_.GapMm, sheet);
    }
    if (options_.CropMarks && !all.IsEmpty()) all.Grow(MarkReach);
    if (options_.Ruler) DrawRuler(pen, ChooseStrip(sheet, all), options_.Label);
    return added;
  }

  const DisplayList& drawing_;
  const SheetOptions& options_;
  TextMeasurer* measurer_;
  const SheetWatch& goOn_;
  DisplayList sheets_;
};

bool IsPlausibleFactor(double factor) {
  return factor >= LeastCalibration && factor <= MostCalibration;
}

}  // namespace

bool IsPlausible(const Calibration& calibration) {
  return IsPlausibleFactor(calibration.X) && IsPlausibleFactor(calibration.Y);
}

std::optional<double> CalibrationFactor(double nominalMm, double measuredMm) {
  const double factor = nominalMm / measuredMm;
  return IsPlausibleFactor(factor) ? std::optional(factor) : std::nullopt;
}

Calibration SheetOptions::FactorsFor(const Page& page) const {
  constexpr double same = 0.05;
  const bool isTurned = UprightWidthMm > 0 && std::abs(page.Width - UprightWidthMm) > same;
  return isTurned ? Calibration{Factors.Y, Factors.X} : Factors;
}

bool SheetOptions::AddsNothing() const {
  return Factors == Calibration{} && !CropMarks && !Ruler && !Mirrored && Copies == 1;
}

DisplayList ComposeSheets(const DisplayList& drawing, const SheetOptions& options, TextMeasurer* measurer,
                          const SheetWatch& goOn) {
  return Composer(drawing, options, measurer, goOn).Compose();
}

std::size_t CopiesOnSheet(const DisplayList& drawing, std::size_t page, const SheetOptions& options) {
  const Page& drawn = drawing.Pages()[page];
  return ArrangementOf(drawing, page, Nominal(drawn, options.FactorsFor(drawn)), options).OnSheet;
}

double RulerLength(double pageWidthMm, double pageHeightMm, const SheetOptions& options) {
  const Page page{pageWidthMm, pageHeightMm};
  return ChooseStrip(Nominal(page, options.FactorsFor(page)), {}).LineLength();
}

}  // namespace vaxel
