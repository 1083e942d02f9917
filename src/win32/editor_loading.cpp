// The part of the script editor that brings a long text into the control.
#include <windows.h>

#include <algorithm>
#include <chrono>

#include "win32/editor.h"
#include "win32/rich_format.h"

namespace vaxel {
namespace {

constexpr UINT_PTR LoadTimer = 2;
// What fills any window at once, and what is loaded behind the line that someone asks for.
constexpr std::size_t FirstLines = 300, LinesBehind = 100;
// A slice takes about as long, milliseconds, as nobody at the keys feels.
constexpr double SliceMs = 8;
constexpr std::size_t LeastLines = 20, MostLines = 5000;
constexpr UINT Utf16 = 1200;

// The length of the first lines of a text with their ends, and how many line ends these are.
struct Slice {
  std::size_t Length = 0, LineEnds = 0;
};
Slice SliceOf(std::wstring_view text, std::size_t lines) {
  // A line without end must not hang the window either.
  constexpr std::size_t longest = 200000;
  Slice slice;
  while (slice.LineEnds < lines && slice.Length < text.size() && slice.Length < longest) {
    const std::size_t end = text.find(L'\r', slice.Length);
    if (end == std::wstring_view::npos) {
      slice.Length = text.size();
      break;
    }
    slice.Length = end + 1;
    ++slice.LineEnds;
  }
  return slice;
}

}  // namespace

void EditorWin32::SetText(std::string_view text) {
  rest_ = ToControl(text);
  restLines_ = static_cast<std::size_t>(std::count(rest_.begin(), rest_.end(), L'\r'));
  const Slice first = SliceOf(rest_, FirstLines);
  restAt_ = first.Length;
  restLines_ -= first.LineEnds;
  colours_.Forget();
  paired_.reset();
  {
    const RichText::Unnoticed unnoticed(text_);
    const SETTEXTEX set = {ST_DEFAULT, Utf16};
    text_.Send(EM_SETTEXTEX, reinterpret_cast<WPARAM>(&set), rest_.substr(0, restAt_).c_str());
    text_.SetFormat(SCF_ALL, ColourFormat(plainInk_));
  }
  text_.Select({0, 0});
  text_.Send(EM_SCROLLCARET);
  text_.Send(EM_EMPTYUNDOBUFFER);
  lines_ = LineCount();
  sliceLines_ = LeastLines;
  if (IsLoading()) {
    SetTimer(window_, LoadTimer, USER_TIMER_MINIMUM, nullptr);
  } else {
    rest_ = {};
    restAt_ = 0;
  }
  margin_.Follow(LineCount());
}

void EditorWin32::LoadSlice(std::size_t lines) {
  const Slice slice = SliceOf(std::wstring_view(rest_).substr(restAt_), lines);
  const LONG end = text_.Length();
  {
    const RichText::Unnoticed unnoticed(text_);
    text_.Select({end, end});
    text_.SetFormat(SCF_SELECTION, ColourFormat(plainInk_));
    text_.Send(EM_REPLACESEL, FALSE, rest_.substr(restAt_, slice.Length).c_str());
  }
  colours_.Grown(end);
  restAt_ += slice.Length;
  restLines_ -= slice.LineEnds;
  lines_ = LineCount();
  if (IsLoading()) return;
  rest_ = {};
  restAt_ = restLines_ = 0;
  KillTimer(window_, LoadTimer);
  margin_.Follow(LineCount());
}

// The messages of timers come when there are no others. A run must not wait for what it has read already.
void EditorWin32::LoadWhileIdle() {
  if (application_ && application_->Runs().IsRunning()) return;
  if (!IsLoading()) {
    KillTimer(window_, LoadTimer);
    return;
  }
  const auto start = std::chrono::steady_clock::now();
  LoadSlice(sliceLines_);
  const double took =
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  const double next = static_cast<double>(sliceLines_) * SliceMs / std::max(took, 1.0);
  sliceLines_ = std::clamp(static_cast<std::size_t>(next), LeastLines, MostLines);
}

void EditorWin32::LoadToPlace(std::size_t place) {
  while (IsLoading() && text_.LineAt(static_cast<LONG>(place)) + LinesBehind > LineCount()) {
    LoadSlice(MostLines);
  }
}

void EditorWin32::LoadToLine(std::size_t line) {
  while (IsLoading() && line + LinesBehind > LineCount()) LoadSlice(MostLines);
}

}  // namespace vaxel
