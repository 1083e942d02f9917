// From a finished drawing to the sheets that go on paper: calibrated, with crop marks, several times on a
// sheet, with a line to check the size by, mirrored.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "drawing/display_list.h"
#include "drawing/font_face.h"

namespace vaxel {

// By how much a drawing must be larger so that a printer, which draws all a little too small or too large,
// gives it its true size: nominal over measured length.
struct Calibration {
  double X = 1, Y = 1;

  friend bool operator==(const Calibration&, const Calibration&) = default;
};

// A printer that needs more or less is broken, or the length was not measured well.
inline constexpr double LeastCalibration = 0.9;
inline constexpr double MostCalibration = 1.1;
// False of what is not a number, too.
bool IsPlausible(const Calibration& calibration);
// The factor that makes a length come out as it should; there is none when it is not plausible. Millimetres.
std::optional<double> CalibrationFactor(double nominalMm, double measuredMm);

// As many copies as one sheet takes.
inline constexpr std::size_t AsManyAsFit = 0;
inline constexpr std::size_t MaxCopies = 1000;
inline constexpr double MaxGapMm = 1000;
// The line of a sheet by which its size is checked.
inline constexpr double FullRulerMm = 100;

// Each says what is added to a print; as it stands it adds nothing.
struct SheetOptions {
  Calibration Factors{};  // plausible ones
  // The width of the pages for which the factors are meant: of any other page they change places, as a
  // printer turns it. 0: they are meant for all pages.
  double UprightWidthMm = 0;
  bool CropMarks = false;  // at the corners of the box around what is drawn, outside of it
  bool Ruler = false;      // a line of 100 mm at the edge, shorter where there is no room for it
  std::string Label{};     // written beside that line: the script's name and the date
  bool Mirrored = false;   // left and right changed about the middle of the page
  // Of each page of the script, up to MaxCopies, in rows on as many sheets as it takes, each sheet's rows
  // together in its middle. One copy stays where the script has drawn it; so does each of several that are
  // too large for their sheet, which each get one of their own.
  std::size_t Copies = 1;
  double GapMm = 5;  // between the boxes around what is drawn, strokes with their widths; 0 to MaxGapMm

  friend bool operator==(const SheetOptions&, const SheetOptions&) = default;
  Calibration FactorsFor(const Page& page) const;
  // Whether sheets composed with these are the drawing as it is.
  bool AddsNothing() const;
};

// Says whether the composing of sheets goes on.
using SheetWatch = std::function<bool()>;

// The sheets of a drawing. A page of it is the area that can be printed on; each sheet has that of its page.
//
// The factors act on places and shapes about the lower-left corner of the page, not on the size of texts or
// the width of strokes: a text keeps its middle where that belongs. What the sheet itself adds is calibrated
// too, and lies within the page: crop marks are cut at its edge. Of a drawing that is larger than the page
// nothing is cut; FindSheetOverflows tells of it.
//
// What the sheet adds has the source line 0. Throws DrawingFault where the sheets would exceed the limits of
// a display list. Without a measurer a label is measured by the standard faces alone.
//
// goOn is asked after every few operations; when it is false what is missing of the sheets stays away.
DisplayList ComposeSheets(const DisplayList& drawing, const SheetOptions& options,
                          TextMeasurer* measurer = nullptr, const SheetWatch& goOn = {});

// How many copies ComposeSheets puts on one sheet of a page (from 0): with AsManyAsFit that many, else at
// most options.Copies. It is 1 where only one has room or the page is empty.
std::size_t CopiesOnSheet(const DisplayList& drawing, std::size_t page, const SheetOptions& options);

// How long the line of options.Ruler is on a page of this size, mm: 100, or, where it has no room, the
// longest whole centimetres that have; 0 where none has.
double RulerLength(double pageWidthMm, double pageHeightMm, const SheetOptions& options);

// The sheet by which a printer is calibrated: a ruler across and one up, a square with its circle and its
// diagonals.
struct CalibrationSheet {
  DisplayList Drawing;  // one page
  // The lengths of the two rulers, which are what the user measures. Both are whole centimetres, and 0 where
  // an area is so small (below about 42 mm) that nothing can be measured on it; the page is then empty.
  double NominalX = 0, NominalY = 0;
};

// Made for an area that can be printed on, in millimetres. The notes are written into it, a line each, as far
// as there is room. Like any drawing it is composed with the factors that are in force, and has room for all
// plausible ones: so a second sheet proves them.
CalibrationSheet MakeCalibrationSheet(double widthMm, double heightMm, const std::vector<std::string>& notes,
                                      TextMeasurer* measurer = nullptr);

}  // namespace vaxel
