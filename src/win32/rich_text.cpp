#include "win32/rich_text.h"

#include <richole.h>

#include <algorithm>

#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr UINT Utf16 = 1200;

// The id is spelled out, as not every system's library has it.
constexpr GUID TextDocumentId = {
    0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};

}  // namespace

std::wstring ToControl(std::string_view text) {
  std::wstring wide = Widen(text);
  std::replace(wide.begin(), wide.end(), L'\n', L'\r');
  return wide;
}

std::string FromControl(std::wstring_view text) {
  std::string narrow = Narrow(text);
  std::replace(narrow.begin(), narrow.end(), '\r', '\n');
  return narrow;
}

RichText::RichText(HWND control) : control_(control) {
  const auto object = Obtained<IUnknown>(
      [this](IUnknown** unknown) { return Send(EM_GETOLEINTERFACE, 0, unknown) ? S_OK : E_FAIL; });
  if (!object) return;
  document_ = Obtained<ITextDocument>([&](ITextDocument** document) {
    return object->QueryInterface(TextDocumentId, reinterpret_cast<void**>(document));
  });
}

RichText::Unnoticed::Unnoticed(RichText& text)
    : text_(text), isSeen_(IsWindowVisible(text.control_) != FALSE) {
  if (text_.unnoticed_++ > 0) return;
  if (text_.document_) text_.document_->Undo(tomSuspend, nullptr);
  // A hidden window would be shown by this.
  if (isSeen_) text_.Send(WM_SETREDRAW, FALSE);
  text_.Send(EM_GETSCROLLPOS, 0, &scroll_);
  selection_ = text_.Selection();
}

RichText::Unnoticed::~Unnoticed() {
  if (--text_.unnoticed_ > 0) return;
  // The selection and the scroll position come back before anyone is told of them.
  ++text_.unnoticed_;
  const CHARRANGE selection = text_.Selection();
  if (selection.cpMin != selection_.cpMin || selection.cpMax != selection_.cpMax) text_.Select(selection_);
  POINT scroll{};
  text_.Send(EM_GETSCROLLPOS, 0, &scroll);
  if (scroll.x != scroll_.x || scroll.y != scroll_.y) text_.Send(EM_SETSCROLLPOS, 0, &scroll_);
  if (text_.document_) text_.document_->Undo(tomResume, nullptr);
  --text_.unnoticed_;
  if (!isSeen_) return;
  text_.Send(WM_SETREDRAW, TRUE);
  RedrawWindow(text_.control_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_NOERASE);
}

CHARRANGE RichText::Selection() const {
  CHARRANGE selection{};
  Send(EM_EXGETSEL, 0, &selection);
  return selection;
}

LONG RichText::Length() const {
  const GETTEXTLENGTHEX lengthOf = {GTL_NUMCHARS | GTL_PRECISE, Utf16};
  return static_cast<LONG>(
      std::max<LRESULT>(Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&lengthOf)), 0));
}

CHARRANGE RichText::RangeOfLine(std::size_t line) const {
  const LRESULT begin = Send(EM_LINEINDEX, line);
  if (begin < 0) {
    const LONG end = Length();
    return {end, end};
  }
  const LRESULT length = Send(EM_LINELENGTH, static_cast<WPARAM>(begin));
  return {static_cast<LONG>(begin), static_cast<LONG>(begin + length)};
}

std::size_t RichText::LineAt(LONG place) const {
  return static_cast<std::size_t>(Send(EM_EXLINEFROMCHAR, 0, LPARAM{place}));
}

std::wstring RichText::TextOf(CHARRANGE range) const {
  std::wstring text(static_cast<std::size_t>(std::max(0L, range.cpMax - range.cpMin)) + 1, L'\0');
  TEXTRANGEW get{range, text.data()};
  text.resize(static_cast<std::size_t>(Send(EM_GETTEXTRANGE, 0, &get)));
  return text;
}

std::wstring RichText::WholeText() const {
  std::wstring text(static_cast<std::size_t>(Length()) + 1, L'\0');
  GETTEXTEX get{};
  get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  get.flags = GT_DEFAULT;
  get.codepage = Utf16;
  text.resize(static_cast<std::size_t>(Send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get), text.data())));
  return text;
}

RichText::LineRange RichText::VisibleLines() const {
  RECT client{};
  GetClientRect(control_, &client);
  const POINTL corner = {0, std::max(0L, client.bottom - 1)};
  const LRESULT last = Send(EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(Send(EM_CHARFROMPOS, 0, &corner)));
  return {static_cast<std::size_t>(Send(EM_GETFIRSTVISIBLELINE)), static_cast<std::size_t>(last)};
}

void RichText::SetTabStop(float points) const {
  if (document_) document_->SetDefaultTabStop(points);
}

}  // namespace vaxel
