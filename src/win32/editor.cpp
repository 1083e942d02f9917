#include "win32/editor.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "app/line_editing.h"
#include "win32/control_ids.h"
#include "win32/input_state.h"
#include "win32/rich_format.h"
#include "winbase/safe_process.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr UINT_PTR ColourTimer = 1, LoadTimer = 2;
constexpr UINT BetweenLooks = 50;  // milliseconds, at what is seen
// Who has not typed for so long, milliseconds, begins another step to undo.
constexpr DWORD TypingPause = 1000;
constexpr Colour PairInk = MakeColour(192, 0, 0);

// The messages that come often and surely leave the text as it is.
bool KeepsText(UINT message) {
  switch (message) {
    case EM_EXGETSEL:
    case EM_EXSETSEL:
    case EM_EXLINEFROMCHAR:
    case EM_LINEINDEX:
    case EM_LINELENGTH:
    case EM_GETLINECOUNT:
    case EM_GETTEXTRANGE:
    case EM_GETTEXTLENGTHEX:
    case EM_GETTEXTEX:
    case EM_POSFROMCHAR:
    case EM_CHARFROMPOS:
    case EM_GETFIRSTVISIBLELINE:
    case EM_GETSCROLLPOS:
    case EM_SETSCROLLPOS:
    case EM_SETCHARFORMAT:
    case EM_STOPGROUPTYPING:
    case WM_PAINT:
    case WM_TIMER:
    case WM_MOUSEMOVE:
    case WM_SETCURSOR:
    case WM_NCHITTEST:
    case WM_SETREDRAW:
      return true;
    default:
      return false;
  }
}

}  // namespace

EditorWin32::EditorWin32(HINSTANCE instance, HWND parent, FailureHandler onFailure)
    : onFailure_(std::move(onFailure)),
      library_(LoadSystemLibrary(L"Msftedit.dll")),
      margin_(instance, parent, onFailure_) {
  // Scroll bars that came and went would change the size of the control, which lays out the whole text then.
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL | ES_MULTILINE | ES_AUTOHSCROLL |
                          ES_AUTOVSCROLL | ES_DISABLENOSCROLL | ES_NOHIDESEL | ES_WANTRETURN;
  window_ = CreateWindowExW(0, MSFTEDIT_CLASS, L"", style, 0, 0, 1, 1, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(EditorId)), instance, nullptr);
  if (!window_) throw std::runtime_error("the script editor could not be made");
  text_ = RichText(window_);
  margin_.Attach(text_);
  // Files that are dropped on it are for the window.
  RevokeDragDrop(window_);
  text_.Send(EM_SETTARGETDEVICE, 0, LPARAM{1});  // lines are as long as they are
  text_.Send(EM_EXLIMITTEXT, 0, static_cast<LPARAM>(MaxScriptBytes));
  text_.Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(White));
  CHARFORMAT2W format = FormatOf(CFM_FACE | CFM_COLOR | CFM_CHARSET | CFM_BOLD | CFM_ITALIC);
  format.bCharSet = DEFAULT_CHARSET;
  lstrcpynW(format.szFaceName, ScriptFace(), LF_FACESIZE);
  text_.SetFormat(SCF_DEFAULT, format);
  text_.SetFormat(SCF_ALL, format);
  SetFontSize(UsualCodeFontSize);
  text_.Send(EM_SETEVENTMASK, 0, LPARAM{ENM_CHANGE | ENM_SELCHANGE});
  tip_.emplace(window_);
  // A subclass of the common controls would ask the system twice for each of the many messages of a key,
  // which under Wine takes longer than all the rest.
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  control_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
}

LRESULT CALLBACK EditorWin32::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto& self = *reinterpret_cast<EditorWin32*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_NCDESTROY)
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(self.control_));
  if (!KeepsText(message)) self.counted_.reset();
  try {
    if (const std::optional<LRESULT> result = self.Handle(message, wParam, lParam)) return *result;
  } catch (...) {
    self.onFailure_();
    return 0;
  }
  const LRESULT result = CallWindowProcW(self.control_, window, message, wParam, lParam);
  if (!KeepsText(message)) self.counted_.reset();
  // However the text was scrolled or changed, it is painted then.
  if (message == WM_PAINT) {
    self.margin_.Follow(self.LineCount());
    if (self.colours_.AreMissing()) SetTimer(window, ColourTimer, BetweenLooks, nullptr);
  }
  if (message == WM_CHAR) self.AfterCharacter(wParam);
  if (message == WM_LBUTTONDBLCLK) self.AfterDoubleClick();
  return result;
}

std::optional<LRESULT> EditorWin32::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  FollowPointer(message, lParam);
  switch (message) {
    case WM_PASTE:
      Paste();
      return 0;
    case WM_KEYDOWN:
      return TakesKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR:
      return TakesCharacter(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_MOUSEWHEEL:
      if ((LOWORD(wParam) & MK_CONTROL) == 0) return std::nullopt;
      TurnWheel(wParam);
      return 0;
    case WM_TIMER:
      if (wParam == ColourTimer) {
        colours_.Seen();
        if (!IsLoading()) KillTimer(window_, ColourTimer);
      }
      if (wParam == LoadTimer) LoadWhileIdle();
      return wParam == ColourTimer || wParam == LoadTimer ? std::optional<LRESULT>(0) : std::nullopt;
    default:
      return std::nullopt;
  }
}

// The control's own keys would paste what is no text, break lines within a paragraph or format.
bool EditorWin32::TakesKey(WPARAM key) {
  const bool withCtrl = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
  const bool withShift = IsDown(VK_SHIFT);
  // These may go to the end of the text.
  if (IsLoading() && withCtrl && (key == VK_END || key == VK_DOWN)) LoadToLine(restLines_ + lines_);
  if (withShift && !withCtrl && key == VK_INSERT) {
    Paste();
    return true;
  }
  if (withShift && key == VK_RETURN) {
    text_.ReplaceSelection(L"\r");
    return true;
  }
  if (key == VK_DELETE || key == VK_BACK) BeforeTyping(L'\b');
  const bool isCharacter = (key >= '0' && key <= 'Z') || key >= VK_OEM_1;
  return withCtrl && isCharacter;
}

bool EditorWin32::TakesCharacter(WPARAM character) {
  const bool isCommand = character < L' ' && IsDown(VK_CONTROL) && !IsDown(VK_MENU);
  const bool isShiftReturn = character == L'\r' && IsDown(VK_SHIFT);
  if (isCommand || isShiftReturn) return true;
  if (character >= L' ' || character == L'\r' || character == L'\t') BeforeTyping(character);
  return false;
}

// The control has put the character into the text.
void EditorWin32::AfterCharacter(WPARAM character) {
  if (character == L'\r') EndStep();
  if (!application_ || (character < L' ' && character != L'\b' && character != L'\r')) return;
  try {
    application_->Typed();
  } catch (...) {
    onFailure_();
  }
}

void EditorWin32::AfterDoubleClick() {
  try {
    if (application_) application_->DoubleClicked();
  } catch (...) {
    onFailure_();
  }
}

// What is typed next is another step to undo.
void EditorWin32::EndStep() {
  text_.Send(EM_STOPGROUPTYPING);
}

// A step ends at a pause, and what is typed over comes back by a step of its own: the control would have
// forgotten it.
void EditorWin32::BeforeTyping(WPARAM character) {
  const DWORD now = GetTickCount();
  if (now - std::exchange(lastTyped_, now) >= TypingPause) EndStep();
  const CHARRANGE selection = text_.Selection();
  if (selection.cpMin == selection.cpMax) return;
  EndStep();
  if (character == L'\b') return;
  text_.ReplaceSelection(L"");
  EndStep();
}

void EditorWin32::TurnWheel(WPARAM wParam) {
  wheel_ += GET_WHEEL_DELTA_WPARAM(wParam);
  const int notches = wheel_ / WHEEL_DELTA;
  wheel_ -= notches * WHEEL_DELTA;
  if (notches != 0 && application_) application_->CodeSizeStepped(notches);
}

HDWP EditorWin32::Place(HDWP moves, const RECT& box) const {
  constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
  const int width = std::max(0L, box.right - box.left), height = std::max(0L, box.bottom - box.top);
  const int margin = std::min(margin_.Width(), width);
  if (moves)
    moves = DeferWindowPos(moves, margin_.Window(), nullptr, box.left, box.top, margin, height, flags);
  if (!moves) return nullptr;
  return DeferWindowPos(moves, window_, nullptr, box.left + margin, box.top, width - margin, height, flags);
}

void EditorWin32::SetVisible(bool isVisible) {
  for (HWND window : {margin_.Window(), window_}) ShowWindow(window, isVisible ? SW_SHOWNA : SW_HIDE);
}

void EditorWin32::SetDpi(UINT dpi) {
  const UINT system = GetDpiForSystem();
  // Without a factor the control is sharper.
  if (dpi == system) {
    text_.Send(EM_SETZOOM, 0, LPARAM{0});
  } else {
    text_.Send(EM_SETZOOM, dpi, static_cast<LPARAM>(system));
  }
  margin_.SetDpi(dpi);
}

void EditorWin32::SetTheme(const Theme& theme) {
  plainInk_ = theme.FieldText;
  colours_.SetInks(theme.FieldText, theme.IsDark, theme.IsHighContrast);
  margin_.SetTheme(theme);
  text_.Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(theme.Field));
  text_.SetFormat(SCF_DEFAULT, ColourFormat(plainInk_));
  {
    const RichText::Unnoticed unnoticed(text_);
    text_.SetFormat(SCF_ALL, ColourFormat(plainInk_));
  }
  ColourAll();
}

std::size_t EditorWin32::LineCount() {
  if (!counted_) counted_ = text_.Lines();
  return *counted_;
}

void EditorWin32::TextChanged() {
  counted_.reset();
  if (text_.IsUnnoticed() || !application_) return;
  ColourNewLines();
  application_->EditorChanged();
}

// What was pasted, or brought back by undoing, has come in beside the cursor.
void EditorWin32::ColourNewLines() {
  constexpr std::size_t mostSingly = 200;
  const std::size_t lines = LineCount(), before = std::exchange(lines_, lines);
  const std::size_t line = text_.LineAt(text_.Selection().cpMin);
  const std::size_t added = lines > before ? lines - before : 0;
  const std::size_t first = line > added ? line - added : 0;
  colours_.ChangedFrom(first);
  if (added > mostSingly) return ColourAll();
  if (added > 0) colours_.Lines(first, std::min(line + added, lines - 1));
}

void EditorWin32::SelectionChanged() {
  if (text_.IsUnnoticed() || !application_) return;
  // What is typed at the end of what is there would come before the rest.
  if (IsLoading()) LoadToPlace(static_cast<std::size_t>(text_.Selection().cpMax));
  application_->CursorMoved();
  MarkParentheses();
  // Whatever else changes is painted, and followed then.
  const std::size_t line = text_.LineAt(text_.Selection().cpMin);
  if (std::exchange(cursorLine_, line) != line) margin_.Follow(LineCount());
}

void EditorWin32::MarkParentheses() {
  const CHARRANGE selection = text_.Selection();
  const std::size_t line = text_.LineAt(selection.cpMin);
  if (const auto marked = std::exchange(paired_, std::nullopt)) colours_.Lines(*marked, *marked);
  constexpr LONG longest = 2000;  // of a line that is looked through at every key
  const CHARRANGE range = text_.RangeOfLine(line);
  if (selection.cpMin != selection.cpMax || range.cpMax - range.cpMin > longest) return;
  const auto pair =
      ParenthesesAt(Narrow(text_.TextOf(range)), static_cast<std::size_t>(selection.cpMin - range.cpMin));
  if (!pair) return;
  paired_ = line;
  const RichText::Unnoticed unnoticed(text_);
  for (const std::size_t column : {pair->Opening, pair->Closing}) {
    const LONG at = range.cpMin + static_cast<LONG>(column);
    text_.Select({at, at + 1});
    text_.SetFormat(SCF_SELECTION, ColourFormat(PairInk));
  }
}

bool EditorWin32::HasLinesSelected() const {
  const CHARRANGE selection = text_.Selection();
  return selection.cpMin != selection.cpMax && text_.LineAt(selection.cpMin) != text_.LineAt(selection.cpMax);
}

// Black is the ink of plain text, whatever that is on the ground in use.
void EditorWin32::SetTypingColour(Colour colour) {
  const RichText::Unnoticed unnoticed(text_);
  text_.SetFormat(SCF_SELECTION, ColourFormat(colour == Black ? plainInk_ : colour));
}

void EditorWin32::SetSurvey(const ScriptSurvey* survey) {
  colours_.SetSurvey(survey);
  SetTimer(window_, ColourTimer, BetweenLooks, nullptr);
}

void EditorWin32::ColourLine(std::size_t line) {
  LoadToLine(line);
  colours_.Lines(line - 1, line - 1);
}

void EditorWin32::ColourAll() {
  colours_.All();
  if (IsLoading()) colours_.Grown(text_.Length());
  if (colours_.AreMissing()) SetTimer(window_, ColourTimer, BetweenLooks, nullptr);
}

std::string EditorWin32::FontName() {
  return Narrow(ScriptFace());
}

void EditorWin32::SetFontSize(double points) {
  const RichText::Unnoticed unnoticed(text_);
  text_.SetFormat(SCF_ALL, SizeFormat(points));
  text_.SetFormat(SCF_DEFAULT, SizeFormat(points));
  // Four characters, each some 0.55 of the size wide.
  text_.SetTabStop(static_cast<float>(points * 0.55 * 4));
  margin_.SetFontSize(points);
}

}  // namespace vaxel
