// Sorts names by how well they go on from what was typed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vaxel {

// A letter, a digit or a part of a character beyond ASCII.
bool IsWordCharacter(char c);

enum class NameMatch : std::uint8_t {
  Exact,   // but for case and accents
  Prefix,  // the name begins so
  Word     // a later word of the name begins so
};

// What is typed, to be compared with many names. Case and accents are ignored.
class TypedName {
 public:
  explicit TypedName(std::string_view typed);

  // None where the name does not fit.
  std::optional<NameMatch> Match(std::string_view name) const;

 private:
  std::string folded_;
};

// The first names of each match, by their places in a list that may be very long.
class NameMatches {
 public:
  // Nobody reads more.
  static constexpr std::size_t Most = 200;

  explicit NameMatches(std::string_view typed) : typed_(typed) {}

  void Try(std::string_view name, std::size_t index);
  // The places, the best first. It is empty where nothing is left to be typed: where all that fit are exact.
  std::vector<std::size_t> Best() const;

 private:
  TypedName typed_;
  std::array<std::vector<std::size_t>, 3> found_;
};

}  // namespace vaxel
