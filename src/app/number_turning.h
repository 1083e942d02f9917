// The number under the cursor, larger or smaller by a key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/app_context.h"
#include "app/script_editor.h"

namespace vaxel {

// A part of a line, in bytes.
struct NumberPlace {
  std::size_t Begin = 0, End = 0;
  bool operator==(const NumberPlace&) const = default;
};

// The number that the place of the line lies in, or directly before or behind. Its sign belongs to it, but
// not one that subtracts or adds. Digits of names, of colours after "#" and between braces are no numbers.
std::optional<NumberPlace> NumberAt(std::string_view line, std::size_t place);

// The number greater by so many tenths, written as it is: with its decimals, or one where it needs one, its
// leading zeros, its exponent. There is none where it would get too many digits.
std::optional<std::string> NumberTurned(std::string_view number, long long tenths);

// Turns the number under the editor's cursor. A series of turns is one step to undo.
class NumberTurner {
 public:
  // It must outlive this.
  explicit NumberTurner(AppContext& app) : app_(app) {}

  // Whether there was a number.
  bool Turn(int tenths);
  // To be called whenever the text has changed: what changes it otherwise ends a series.
  void TextChanged() { ++changes_; }

 private:
  struct Series {
    EditorRange Place;  // of the number, as it is now
    std::string First;  // what it was at first
    long long Tenths = 0;
    std::size_t Behind = 0;  // from the cursor to the number's end
    EditorRange Selection;
    std::uint64_t Changes = 0;
  };

  bool GoesOn() const;
  std::optional<Series> Begin();
  bool TakeBack(Series& series);

  AppContext& app_;
  std::optional<Series> series_;
  std::uint64_t changes_ = 0;
};

}  // namespace vaxel
