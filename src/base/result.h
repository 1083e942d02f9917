// How functions outside scripts fail: they give back a Result, a value or the Failure that stands in its
// place.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace vaxel {

// The texts of the string table, which names them in resources/text_id.h.
enum class TextId : std::int16_t;

// What is most often wrong with a file or its disk. The system's own words for these come in a language that
// need not be the program's.
enum class FileFault : std::uint8_t {
  None,
  IsFolder,
  IsReadOnly,
  IsTooLarge,
  IsMissing,
  IsForbidden,
  IsInUse,
  DiskIsFull,
  DiskIsReadOnly,
  NameIsTooLong,
  NameIsImpossible,
  DeviceFails
};

// Why something has failed, as the user is told. What the program words itself is a text of the string table,
// so that it comes in the user's language; StringTable::Text makes the words of all three.
struct Failure {
  // It is None where Words, which are the system's or a library's, say it all.
  TextId Text{};
  // They fill the "%1" of the text when there is one.
  std::string Words{};
  // When there is one, it is the whole reason.
  FileFault Fault = FileFault::None;
};

// A result without a value only says whether the function has succeeded.
template <class Value = std::monostate>
class [[nodiscard]] Result {
 public:
  Result() requires std::is_same_v<Value, std::monostate>
  = default;
  Result(Value value) : held_(std::in_place_index<0>, std::move(value)) {}
  Result(Failure failure) : held_(std::in_place_index<1>, std::move(failure)) {}

  explicit operator bool() const { return held_.index() == 0; }

  // The value may only be asked of a result that has one.
  Value& operator*() & { return *std::get_if<0>(&held_); }
  const Value& operator*() const& { return *std::get_if<0>(&held_); }
  Value&& operator*() && { return std::move(*std::get_if<0>(&held_)); }
  Value* operator->() { return std::get_if<0>(&held_); }
  const Value* operator->() const { return std::get_if<0>(&held_); }

  // The reason may only be asked of a result that has no value.
  const Failure& Why() const { return *std::get_if<1>(&held_); }

 private:
  std::variant<Value, Failure> held_;
};

}  // namespace vaxel
