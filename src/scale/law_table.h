// Reads a table of measured points from a text: a value and its reading in each line, as spreadsheets and
// people write them.
//
// Where a line holds a ";" or a TAB that separates, and a "," is a decimal mark; else a "," separates, else
// blanks do. Columns beyond two are passed over. "'" and "#" begin comments, and a first line that does not
// begin with a number is a heading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "scale/value_law.h"

namespace vaxel {

enum class TableFault : std::uint8_t {
  None,
  NotAPair,       // not two numbers
  MixedReadings,  // some readings have a "°", others have none
  TooFew,         // not two points
  Unordered       // values or readings do not rise or fall strictly
};

struct LawTable {
  std::vector<LawPoint> Points;  // readings are as they are written, most often in per cent
  bool IsDirect = false;         // the readings have a "°"
  TableFault Fault = TableFault::None;
  std::size_t At = 0;  // of a fault the line, of a list of points the point, from 1
  // The first line of a text in which a number has a dash that only looks like its minus: its place from 1,
  // 0 where there is none, and what stands there, which is valid as long as the text.
  struct WrongMinus {
    std::size_t At = 0;
    std::string_view Line;
  };
  WrongMinus Dash;
};

LawTable ReadLawTable(std::string_view text);

// A point with the place where it stands, to be judged with the others.
struct PlacedLawPoint {
  LawPoint Point;
  bool IsDirect = false;
  std::size_t At = 0;
};
LawTable JudgePoints(const std::vector<PlacedLawPoint>& points);

}  // namespace vaxel
