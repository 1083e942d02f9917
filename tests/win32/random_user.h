// A user who acts at random, and what must hold whatever was done: of the text, the file, the title and the
// boxes. What does not is thrown as a DriveFailure.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "tests/win32/program_fixture.h"
#include "winbase/wide_text.h"

namespace vaxel {

std::wstring WithoutCr(std::wstring text);
// What runs and leaving a line may change of a text is the same: the letters' case, and the comments that "?"
// writes.
std::wstring Essence(std::wstring_view text);

// Ways to answer a box: the button that is pressed. 0: it is closed already.
std::optional<int> Leave(const ShownDialog& box);
std::optional<int> Confirm(const ShownDialog& box);
std::optional<int> Refuse(const ShownDialog& box);
// Names the file that a file dialog asks for.
std::optional<int> Name(const ShownDialog& box, const std::string& file);

class RandomUser : public ProgramTest {
 protected:
  struct Range {
    std::size_t Begin = 0, End = 0;
  };
  using Wish = std::function<bool(const std::wstring& now)>;
  using Answer = std::function<std::optional<int>(const ShownDialog& box)>;
  // The first acts of a program bring fonts, dialogs and help for good.
  static constexpr int SettledAfter = 200;
  static constexpr char File[] = "dial.dat", Other[] = "other.dat";

  void Begin(unsigned seed);
  // What must hold when an act is over.
  void Check();

  std::size_t Below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
  }
  bool Chance(int percent) { return Below(100) < static_cast<std::size_t>(percent); }
  template <class List>
  decltype(auto) OneOf(const List& list) {
    return list[Below(std::size(list))];
  }
  Range SomeRange();
  std::size_t SomeLineEnd();

  // Lines end in LF.
  std::wstring TextNow() const { return WithoutCr(Widen(program_->EditorText())); }
  std::wstring FileNow(const std::string& name) const { return WithoutCr(Widen(folder_.Read(name))); }
  void Select(Range range) const {
    program_->SelectInEditor(static_cast<int>(range.Begin), static_cast<int>(range.End));
  }
  // The wish must come true in a while.
  void Expect(const char* what, const Wish& wish);
  void ExpectText(const std::wstring& text);
  void ExpectSameText() { ExpectText(before_); }
  // What the text was before the last of these, with this in the place of the range.
  void ExpectReplaced(Range range, std::wstring_view by);
  // Answers what is asked until the program waits again; without an answer nothing may be asked.
  void Settle(const Answer& answer);
  void SettleSoon(const Answer& answer);
  void PostAndSettle(MenuId item, const Answer& answer);
  // What start does opens another file, after asking about text that is not saved; either answer is right.
  void OpenAnother(const std::string& other, const std::function<void()>& start);

  std::mt19937 random_;
  std::wstring before_, now_;     // the text before the act, and when it was looked at last
  std::wstring saved_;            // of the file that the program has open
  std::string file_ = File;       // empty: a new script
  int act_ = 0, started_ = 0;     // the present one, and the one with which the program was started
  ResourceCount settled_, most_;  // what it held soon after that, and how much more since
};

}  // namespace vaxel
