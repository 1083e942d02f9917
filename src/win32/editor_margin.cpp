#include "win32/editor_margin.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

#include "app/script_colours.h"
#include "win32/fill_box.h"
#include "win32/pixels.h"
#include "win32/rich_format.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr wchar_t MarginClass[] = L"VaxelMargin";
constexpr std::size_t LeastDigits = 3;
constexpr COLORREF ErrorInk = RGB(208, 32, 32);
constexpr int MarkWidth = 3;  // 1/96 inch, of what marks a line that is in error
constexpr int Padding = 4;    // 1/96 inch, left and right of the numbers
// 1/96 inch, left of the text, on its ground. A rectangle of the control's own would have the whole text laid
// out anew whenever a scroll bar comes or goes.
constexpr int TextInset = 4;
constexpr int SampleSide = 9;
// A line that is longer names its colours before that, or not at all in the margin.
constexpr LONG MostUnits = 500;

}  // namespace

EditorMargin::EditorMargin(HINSTANCE instance, HWND parent, FailureHandler onFailure)
    : onFailure_(std::move(onFailure)) {
  RegisterWindowClass<EditorMargin>(instance, MarginClass, nullptr, nullptr);
  window_ = CreateWindowExW(0, MarginClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 1, 1, parent, nullptr, instance,
                            this);
  if (!window_) throw std::runtime_error("the margin of the editor could not be made");
  dpi_ = GetDpiForWindow(window_);
  MakeFont();
}

int EditorMargin::Width() const {
  const int sample = ToPixels(MarkWidth + SampleSide + 1, dpi_);
  return sample + static_cast<int>(digits_) * digitWidth_ + 2 * ToPixels(Padding, dpi_) +
         ToPixels(TextInset, dpi_);
}

void EditorMargin::MakeFont() {
  const int height = -static_cast<int>(std::lround(points_ * dpi_ / 72));
  UniqueGdi<HFONT> font(CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH,
                                    ScriptFace()));
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const SelectedObject selected(context.get(), font.get());
  SIZE digit{};
  GetTextExtentPoint32W(context.get(), L"0", 1, &digit);
  digitWidth_ = std::max(1L, digit.cx);
  rowHeight_ = std::max(1L, digit.cy);
  font_ = std::move(font);
  InvalidateRect(window_, nullptr, FALSE);
}

void EditorMargin::SetFontSize(double points) {
  points_ = points;
  MakeFont();
}

void EditorMargin::SetTheme(const Theme& theme) {
  theme_ = theme;
  InvalidateRect(window_, nullptr, FALSE);
}

void EditorMargin::SetDpi(UINT dpi) {
  dpi_ = dpi;
  MakeFont();
}

void EditorMargin::MarkLines(std::vector<std::size_t> lines) {
  marked_ = std::move(lines);
  InvalidateRect(window_, nullptr, FALSE);
}

EditorMargin::Look EditorMargin::LookNow() const {
  Look look;
  look.CurrentLine = text_->LineAt(text_->Selection().cpMin);
  const RichText::LineRange lines = text_->VisibleLines();
  for (std::size_t line = lines.First; line <= lines.Last; ++line) {
    POINTL place{};
    const LRESULT begin = text_->Send(EM_LINEINDEX, line);
    if (begin < 0) break;
    text_->Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), static_cast<LPARAM>(begin));
    CHARRANGE range = text_->RangeOfLine(line);
    range.cpMax = std::min(range.cpMax, range.cpMin + MostUnits);
    look.Rows.push_back({static_cast<int>(place.y), line, ColourNamedIn(Narrow(text_->TextOf(range)))});
  }
  return look;
}

void EditorMargin::Follow(std::size_t lines) {
  if (!text_ || text_->IsUnnoticed() || !IsWindowVisible(window_)) return;
  const std::size_t digits = std::max(LeastDigits, std::to_string(lines).size());
  if (digits != std::exchange(digits_, digits)) {
    // The parent lays out its windows anew.
    SendMessageW(GetParent(window_), WM_SIZE, SIZE_RESTORED, 0);
  }
  Look look = LookNow();
  if (look == look_) return;
  look_ = std::move(look);
  InvalidateRect(window_, nullptr, FALSE);
}

void EditorMargin::Paint() const {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_, &paint);
  RECT client{};
  GetClientRect(window_, &client);
  const int right = client.right - ToPixels(TextInset, dpi_);
  FillBox(context, {0, 0, right, client.bottom}, theme_.Window);
  FillBox(context, {right, 0, client.right, client.bottom}, theme_.Field);
  const SelectedObject font(context, font_.get());
  SetBkMode(context, TRANSPARENT);
  SetTextAlign(context, TA_RIGHT | TA_TOP);
  for (const Row& row : look_.Rows) PaintRow(context, row, right);
  EndPaint(window_, &paint);
}

void EditorMargin::PaintRow(HDC context, const Row& row, int width) const {
  const bool isCurrent = row.Line == look_.CurrentLine;
  const int bottom = row.Top + rowHeight_, markWidth = ToPixels(MarkWidth, dpi_);
  if (isCurrent) FillBox(context, {0, row.Top, width, bottom}, theme_.Field);
  if (std::ranges::find(marked_, row.Line + 1) != marked_.end())
    FillBox(context, {0, row.Top, markWidth, bottom}, theme_.IsHighContrast ? theme_.Hot : ErrorInk);
  if (row.Sample) {
    const int side = ToPixels(SampleSide, dpi_), top = row.Top + (rowHeight_ - side) / 2;
    RECT box = {markWidth + 1, top, markWidth + 1 + side, top + side};
    FillBox(context, box, theme_.GreyText);
    InflateRect(&box, -1, -1);
    FillBox(context, box, *row.Sample);
  }
  SetTextColor(context, isCurrent ? theme_.FieldText : theme_.GreyText);
  const std::wstring number = std::to_wstring(row.Line + 1);
  TextOutW(context, width - ToPixels(Padding, dpi_), row.Top, number.c_str(),
           static_cast<int>(number.size()));
}

void EditorMargin::SelectLineAt(int y) const {
  const auto behind = std::ranges::upper_bound(look_.Rows, y, {}, &Row::Top);
  if (behind == look_.Rows.begin()) return;
  const std::size_t line = (behind - 1)->Line;
  const CHARRANGE range = text_->RangeOfLine(line);
  text_->Select({range.cpMin, line + 1 < text_->Lines() ? range.cpMax + 1 : range.cpMax});
}

std::optional<LRESULT> EditorMargin::Handle(UINT message, WPARAM, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      if (text_) SelectLineAt(GET_Y_LPARAM(lParam));
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
