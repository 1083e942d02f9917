// Where the lines of a text that was drawn stand in the text that has come of it since.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vaxel {

// The lines of a text, by which they are found again; 8 bytes each.
std::vector<std::size_t> LineMarks(std::string_view text);

// The text that a drawing was made of.
struct DrawnText {
  std::vector<std::size_t> Lines;
  std::uint64_t Texts = 0;  // which one it was, of those that have come into the editor
};

// Lines count from 1.
class LineMap {
 public:
  // Of a text that is the drawn one.
  LineMap() = default;
  LineMap(const std::vector<std::size_t>& drawn, const std::vector<std::size_t>& now);

  // There is none for a line that was taken away, or was not there yet. One that was changed in its place is
  // still the same.
  std::optional<std::size_t> InText(std::size_t drawnLine) const;
  std::optional<std::size_t> InDrawing(std::size_t line) const;

 private:
  bool isSame_ = true;
  std::vector<std::size_t> inText_, inDrawing_;  // from 0; NoLine: none
};

}  // namespace vaxel
