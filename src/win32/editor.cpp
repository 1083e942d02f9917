#include "win32/editor.h"

#include <windows.h>
// These need what windows.h declares.
#include <commctrl.h>
#include <richole.h>

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "app/script_colours.h"
#include "win32/control_ids.h"
#include "win32/input_state.h"
#include "win32/rich_format.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr UINT_PTR ColourTimer = 1;
constexpr UINT BetweenLooks = 50;  // milliseconds, at what is seen
constexpr auto FirstColours = std::chrono::milliseconds(100);
constexpr double UsualFontSize = 10;
constexpr UINT Utf16 = 1200;

// The id is spelled out, as not every system's library has it.
constexpr GUID TextDocumentId = {
    0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};

// Line ends as the control has them, and back.
std::wstring ToControl(std::string_view text) {
  std::wstring wide = Widen(text);
  std::replace(wide.begin(), wide.end(), L'\n', L'\r');
  return wide;
}

std::string FromControl(std::wstring wide) {
  std::replace(wide.begin(), wide.end(), L'\r', L'\n');
  return Narrow(wide);
}

bool IsInWord(wchar_t unit) {
  return unit == L'_' || IsCharAlphaNumericW(unit) != FALSE;
}

}  // namespace

// What happens meanwhile is not the user's doing: the application is not told, undoing does not see it,
// selection and scroll position stay.
class EditorWin32::Unnoticed {
 public:
  explicit Unnoticed(EditorWin32& editor, bool isSeen = true)
      : editor_(editor), isSeen_(isSeen && IsWindowVisible(editor.window_) != FALSE) {
    if (editor_.unnoticed_++ > 0) return;
    if (editor_.document_) editor_.document_->Undo(tomSuspend, nullptr);
    // A hidden window would be shown by this.
    if (isSeen_) editor_.Send(WM_SETREDRAW, FALSE);
    editor_.Send(EM_GETSCROLLPOS, 0, &scroll_);
    selection_ = editor_.Selection();
  }
  ~Unnoticed() {
    if (--editor_.unnoticed_ > 0) return;
    const CHARRANGE selection = editor_.Selection();
    if (selection.cpMin != selection_.cpMin || selection.cpMax != selection_.cpMax)
      editor_.Select(selection_);
    POINT scroll{};
    editor_.Send(EM_GETSCROLLPOS, 0, &scroll);
    if (scroll.x != scroll_.x || scroll.y != scroll_.y) editor_.Send(EM_SETSCROLLPOS, 0, &scroll_);
    if (editor_.document_) editor_.document_->Undo(tomResume, nullptr);
    if (!isSeen_) return;
    editor_.Send(WM_SETREDRAW, TRUE);
    RedrawWindow(editor_.window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_NOERASE);
  }
  Unnoticed(const Unnoticed&) = delete;
  Unnoticed& operator=(const Unnoticed&) = delete;

 private:
  EditorWin32& editor_;
  bool isSeen_;
  POINT scroll_{};
  CHARRANGE selection_{};
};

EditorWin32::EditorWin32(HINSTANCE instance, HWND parent, FailureHandler onFailure)
    : onFailure_(std::move(onFailure)), library_(LoadLibraryW(L"Msftedit.dll")) {
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL | ES_MULTILINE | ES_AUTOHSCROLL |
                          ES_AUTOVSCROLL | ES_NOHIDESEL | ES_WANTRETURN;
  window_ = CreateWindowExW(0, MSFTEDIT_CLASS, L"", style, 0, 0, 1, 1, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(EditorId)), instance, nullptr);
  if (!window_) throw std::runtime_error("the script editor could not be made");
  if (const auto object = Obtained<IUnknown>(
          [this](IUnknown** unknown) { return Send(EM_GETOLEINTERFACE, 0, unknown) ? S_OK : E_FAIL; })) {
    document_ = Obtained<ITextDocument>([&](ITextDocument** document) {
      return object->QueryInterface(TextDocumentId, reinterpret_cast<void**>(document));
    });
  }
  // Files that are dropped on it are for the window.
  RevokeDragDrop(window_);
  Send(EM_SETTARGETDEVICE, 0, LPARAM{1});  // lines are as long as they are
  Send(EM_EXLIMITTEXT, 0, static_cast<LPARAM>(MaxScriptBytes));
  Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(White));
  CHARFORMAT2W format = FormatOf(CFM_FACE | CFM_COLOR | CFM_CHARSET | CFM_BOLD | CFM_ITALIC);
  format.bCharSet = DEFAULT_CHARSET;
  lstrcpynW(format.szFaceName, ScriptFace(), LF_FACESIZE);
  SetFormat(SCF_DEFAULT, format);
  SetFormat(SCF_ALL, format);
  SetFontSize(UsualFontSize);
  Send(EM_SETEVENTMASK, 0, LPARAM{ENM_CHANGE | ENM_SELCHANGE});
  SetWindowSubclass(window_, Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK EditorWin32::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR editor) {
  auto& self = *reinterpret_cast<EditorWin32*>(editor);
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, Procedure, 0);
  try {
    if (const std::optional<LRESULT> result = self.Handle(message, wParam)) return *result;
  } catch (...) {
    self.onFailure_();
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> EditorWin32::Handle(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_PASTE:
      Paste();
      return 0;
    case WM_KEYDOWN:
      return TakesKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR: {
      const bool isCommand = wParam < L' ' && IsDown(VK_CONTROL) && !IsDown(VK_MENU);
      const bool isShiftReturn = wParam == L'\r' && IsDown(VK_SHIFT);
      return isCommand || isShiftReturn ? std::optional<LRESULT>(0) : std::nullopt;
    }
    case WM_TIMER:
      if (wParam != ColourTimer) return std::nullopt;
      ColourSeen();
      return 0;
    default:
      return std::nullopt;
  }
}

// The control's own keys would paste what is no text, break lines within a paragraph or format.
bool EditorWin32::TakesKey(WPARAM key) {
  const bool withCtrl = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
  const bool withShift = IsDown(VK_SHIFT);
  if ((withCtrl && key == 'V') || (withShift && !withCtrl && key == VK_INSERT)) {
    Paste();
    return true;
  }
  if (withShift && key == VK_RETURN) {
    Send(EM_REPLACESEL, TRUE, L"\r");
    return true;
  }
  constexpr std::wstring_view commands = L"ACXYZ";
  const bool isCharacter = (key >= '0' && key <= 'Z') || key >= VK_OEM_1;
  return withCtrl && isCharacter && commands.find(static_cast<wchar_t>(key)) == std::wstring_view::npos;
}

void EditorWin32::Paste() {
  Send(EM_PASTESPECIAL, CF_UNICODETEXT);
}

void EditorWin32::SetDpi(UINT dpi) {
  const UINT system = GetDpiForSystem();
  // Without a factor the control is sharper.
  if (dpi == system) {
    Send(EM_SETZOOM, 0, LPARAM{0});
  } else {
    Send(EM_SETZOOM, dpi, static_cast<LPARAM>(system));
  }
}

void EditorWin32::TextChanged() {
  if (unnoticed_ > 0 || !application_) return;
  if (pending_) pending_ = std::min(*pending_, RangeOfLine(Place().Line - 1).cpMin);
  application_->EditorChanged();
}

void EditorWin32::SelectionChanged() {
  if (unnoticed_ == 0 && application_) application_->CursorMoved();
}

std::wstring EditorWin32::WholeText() const {
  const GETTEXTLENGTHEX lengthOf = {GTL_NUMCHARS | GTL_PRECISE, Utf16};
  const LRESULT length = Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&lengthOf));
  std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
  GETTEXTEX get{};
  get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  get.flags = GT_DEFAULT;
  get.codepage = Utf16;
  text.resize(static_cast<std::size_t>(Send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get), text.data())));
  return text;
}

std::wstring EditorWin32::TextOf(CHARRANGE range) const {
  std::wstring text(static_cast<std::size_t>(range.cpMax - range.cpMin) + 1, L'\0');
  TEXTRANGEW get{range, text.data()};
  text.resize(static_cast<std::size_t>(Send(EM_GETTEXTRANGE, 0, &get)));
  return text;
}

std::string EditorWin32::Text() {
  return FromControl(WholeText());
}

bool EditorWin32::IsEmpty() {
  return GetWindowTextLengthW(window_) == 0;
}

void EditorWin32::SetText(std::string_view text) {
  const std::wstring wide = ToControl(text);
  pending_.reset();
  {
    const Unnoticed unnoticed(*this);
    const SETTEXTEX set = {ST_DEFAULT, Utf16};
    Send(EM_SETTEXTEX, reinterpret_cast<WPARAM>(&set), wide.c_str());
    SetFormat(SCF_ALL, ColourFormat(Black));
  }
  Select({0, 0});
  Send(EM_SCROLLCARET);
  Send(EM_EMPTYUNDOBUFFER);
}

void EditorWin32::ReplaceSelection(std::string_view text) {
  Send(EM_REPLACESEL, TRUE, ToControl(text).c_str());
}

CHARRANGE EditorWin32::Selection() const {
  CHARRANGE selection{};
  Send(EM_EXGETSEL, 0, &selection);
  return selection;
}

CHARRANGE EditorWin32::RangeOfLine(std::size_t line) const {
  const LRESULT begin = Send(EM_LINEINDEX, line);
  if (begin < 0) {
    const auto end = static_cast<LONG>(GetWindowTextLengthW(window_));
    return {end, end};
  }
  const LRESULT length = Send(EM_LINELENGTH, static_cast<WPARAM>(begin));
  return {static_cast<LONG>(begin), static_cast<LONG>(begin + length)};
}

// The cursor stays in its line and, as far as that is long enough, in its column.
void EditorWin32::ReplaceLine(std::size_t line, std::string_view text) {
  const CHARRANGE old = RangeOfLine(line - 1);
  const std::wstring wide = ToControl(text);
  const LONG newEnd = old.cpMin + static_cast<LONG>(wide.size());
  const auto moved = [&](LONG place) {
    if (place <= old.cpMin) return place;
    return place > old.cpMax ? place + newEnd - old.cpMax : std::min(place, newEnd);
  };
  const CHARRANGE selection = Selection();
  POINT scroll{};
  Send(EM_GETSCROLLPOS, 0, &scroll);
  ++unnoticed_;
  Select(old);
  Send(EM_REPLACESEL, TRUE, wide.c_str());
  Select({moved(selection.cpMin), moved(selection.cpMax)});
  --unnoticed_;
  Send(EM_SETSCROLLPOS, 0, &scroll);
  ColourLine(line);
  if (application_) application_->EditorChanged();
}

EditorPlace EditorWin32::Place() {
  const LRESULT line = Send(EM_EXLINEFROMCHAR, 0, LPARAM{Selection().cpMin});
  return {static_cast<std::size_t>(line) + 1, static_cast<std::size_t>(Send(EM_GETLINECOUNT))};
}

void EditorWin32::GoToLine(std::size_t line) {
  const LONG begin = RangeOfLine(line - 1).cpMin;
  Select({begin, begin});
  Send(EM_SCROLLCARET);
}

std::string EditorWin32::WordAtCursor() {
  const CHARRANGE line = RangeOfLine(Place().Line - 1);
  const std::wstring text = TextOf(line);
  auto begin = std::min(static_cast<std::size_t>(Selection().cpMin - line.cpMin), text.size());
  auto end = begin;
  while (begin > 0 && IsInWord(text[begin - 1])) --begin;
  while (end < text.size() && IsInWord(text[end])) ++end;
  return Narrow(std::wstring_view(text).substr(begin, end - begin));
}

void EditorWin32::SetTypingColour(Colour colour) {
  const Unnoticed unnoticed(*this);
  SetFormat(SCF_SELECTION, ColourFormat(colour));
}

// The control's text ranges would do it without the selection, but under Wine they take ten times as long.
void EditorWin32::SetColour(CHARRANGE range, Colour colour) const {
  if (range.cpMin == range.cpMax) return;
  Select(range);
  SetFormat(SCF_SELECTION, ColourFormat(colour));
}

LONG EditorWin32::ColourLines(std::wstring_view text, LONG begin, Clock::time_point until) const {
  std::size_t from = 0;
  while (from < text.size() && Clock::now() < until) {
    const std::size_t end = std::min(text.find(L'\r', from), text.size());
    const LONG place = begin + static_cast<LONG>(from);
    SetColour({place, begin + static_cast<LONG>(end)}, Black);
    for (const ColouredRange& range : ColoursOfLine(Narrow(text.substr(from, end - from)))) {
      SetColour({place + static_cast<LONG>(range.Begin), place + static_cast<LONG>(range.End)}, range.Ink);
    }
    from = end + 1;
  }
  return begin + static_cast<LONG>(std::min(from, text.size()));
}

void EditorWin32::ColourLine(std::size_t line) {
  const CHARRANGE range = RangeOfLine(line - 1);
  const std::wstring text = TextOf(range);
  const Unnoticed unnoticed(*this);
  ColourLines(text, range.cpMin, Clock::time_point::max());
}

EditorWin32::LineRange EditorWin32::VisibleLines() const {
  RECT client{};
  GetClientRect(window_, &client);
  const POINTL corner = {0, std::max(0L, client.bottom - 1)};
  const LRESULT last = Send(EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(Send(EM_CHARFROMPOS, 0, &corner)));
  return {static_cast<std::size_t>(Send(EM_GETFIRSTVISIBLELINE)), static_cast<std::size_t>(last)};
}

void EditorWin32::ColourAll() {
  const std::wstring text = WholeText();
  const auto length = static_cast<LONG>(text.size());
  {
    const Unnoticed unnoticed(*this);
    pending_ = ColourLines(text, 0, Clock::now() + FirstColours);
  }
  seen_.reset();
  if (*pending_ >= length) return pending_.reset();
  ColourSeen();
  SetTimer(window_, ColourTimer, BetweenLooks, nullptr);
}

void EditorWin32::ColourSeen() {
  if (!pending_) {
    KillTimer(window_, ColourTimer);
    return;
  }
  const LineRange lines = VisibleLines();
  const CHARRANGE range = {RangeOfLine(lines.First).cpMin, RangeOfLine(lines.Last).cpMax};
  if (range.cpMax <= *pending_ || lines == seen_) return;
  seen_ = lines;
  const std::wstring text = TextOf(range);
  const Unnoticed unnoticed(*this);
  ColourLines(text, range.cpMin, Clock::time_point::max());
}

void EditorWin32::SetFontSize(double points) {
  const Unnoticed unnoticed(*this);
  SetFormat(SCF_ALL, SizeFormat(points));
  SetFormat(SCF_DEFAULT, SizeFormat(points));
  // Four characters, each some 0.55 of the size wide.
  if (document_) document_->SetDefaultTabStop(static_cast<float>(points * 0.55 * 4));
}

}  // namespace vaxel
