#include "win32/aid_panel.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "win32/accessible_name.h"
#include "win32/pixels.h"
#include "win32/rich_format.h"
#include "winbase/safe_process.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr wchar_t AidClass[] = L"VaxelAid";
constexpr int HelpId = 1, ProblemsId = 2;
constexpr int Lines = 6;    // of text that the panel shows
constexpr int Padding = 8;  // 1/96 inch, beside captions
constexpr wchar_t Cross[] = L"\u00D7";

RECT InParent(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return client;
}

}  // namespace

AidPanel::AidPanel(HINSTANCE instance, HWND parent, FailureHandler onFailure)
    : onFailure_(std::move(onFailure)), library_(LoadSystemLibrary(L"Msftedit.dll")) {
  RegisterWindowClass<AidPanel>(instance, AidClass, nullptr, nullptr);
  window_ = CreateWindowExW(0, AidClass, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, 1, 1, parent, nullptr,
                            instance, this);
  if (!window_) throw std::runtime_error("the panel of the editor could not be made");
  const auto childOf = [&](const wchar_t* name, DWORD style, int id) {
    return CreateWindowExW(0, name, L"", WS_CHILD | WS_VSCROLL | style, 0, 0, 1, 1, window_,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
  };
  help_ = childOf(MSFTEDIT_CLASS, ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_TABSTOP, HelpId);
  problems_ = childOf(L"LISTBOX", LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_HSCROLL | WS_TABSTOP, ProblemsId);
  if (!help_ || !problems_) throw std::runtime_error("the panel of the editor could not be made");
  helpText_ = RichText(help_);
  SetDpi(GetDpiForWindow(window_));
  SetTheme(theme_);
}

int AidPanel::Pixels(int length) const {
  return ToPixels(length, dpi_);
}

void AidPanel::SetDpi(UINT dpi) {
  dpi_ = dpi;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  UniqueGdi<HFONT> font(CreateFontIndirectW(&metrics.lfMessageFont));
  {
    const UniqueDc context(CreateCompatibleDC(nullptr));
    const SelectedObject selected(context.get(), font.get());
    TEXTMETRICW text{};
    GetTextMetricsW(context.get(), &text);
    textHeight_ = static_cast<int>(text.tmHeight);
  }
  for (HWND child : {help_, problems_}) {
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  }
  font_ = std::move(font);
  Layout();
}

void AidPanel::SetTheme(const Theme& theme) {
  theme_ = theme;
  field_.reset(CreateSolidBrush(theme.Field));
  helpText_.Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(theme.Field));
  CHARFORMAT2W format = FormatOf(CFM_COLOR);
  format.crTextColor = theme.FieldText;
  helpText_.SetFormat(SCF_ALL, format);
  InvalidateRect(problems_, nullptr, TRUE);
  InvalidateRect(window_, nullptr, FALSE);
}

int AidPanel::Height() const {
  return page_ == AidPage::None ? 0 : CaptionHeight() + Lines * textHeight_ + Pixels(Padding);
}

void AidPanel::Layout() {
  const RECT client = InParent(window_);
  const int top = CaptionHeight();
  for (HWND child : {help_, problems_}) {
    SetWindowPos(child, nullptr, 0, top, client.right, std::max(0L, client.bottom - top),
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
  RECT text = InParent(help_);
  text.left += Pixels(Padding);
  helpText_.Send(EM_SETRECT, 0, &text);
  InvalidateRect(window_, nullptr, FALSE);
}

void AidPanel::SetHelp(const AidHelp& help) {
  const std::wstring text = ToControl(help.Text);
  SetWindowTextW(help_, text.c_str());
  CHARFORMAT2W format = FormatOf(CFM_BOLD | CFM_COLOR);
  format.crTextColor = theme_.FieldText;
  helpText_.SetFormat(SCF_ALL, format);
  format.dwEffects = CFE_BOLD;
  for (const EditorRange& range : help.Strong) {
    helpText_.Select({static_cast<LONG>(range.Begin), static_cast<LONG>(range.End)});
    helpText_.SetFormat(SCF_SELECTION, format);
  }
  helpText_.Select({0, 0});
  helpText_.Send(EM_SCROLLCARET);
}

void AidPanel::SetProblems(const std::vector<std::string>& problems) {
  SendMessageW(problems_, WM_SETREDRAW, FALSE, 0);
  SendMessageW(problems_, LB_RESETCONTENT, 0, 0);
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const SelectedObject font(context.get(), font_.get());
  LONG widest = 0;
  for (const std::string& problem : problems) {
    const std::wstring text = Widen(problem);
    SendMessageW(problems_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SIZE size{};
    GetTextExtentPoint32W(context.get(), text.c_str(), static_cast<int>(text.size()), &size);
    widest = std::max(widest, size.cx);
  }
  SendMessageW(problems_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + Pixels(Padding)), 0);
  SendMessageW(problems_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(problems_, nullptr, TRUE);
}

void AidPanel::ChooseProblem(std::size_t index) {
  SendMessageW(problems_, LB_SETCURSEL, index, 0);
}

void AidPanel::SetName(std::string_view name) const {
  for (HWND window : {window_, help_, problems_}) SetAccessibleName(window, name);
}

void AidPanel::SetCaptions(const std::string& help, const std::string& problems) {
  captions_ = {Widen(help), Widen(problems)};
  InvalidateRect(window_, nullptr, FALSE);
}

// The parent gives it its place.
void AidPanel::ShowPage(AidPage page) {
  page_ = page;
  ShowWindow(help_, page == AidPage::Help ? SW_SHOWNA : SW_HIDE);
  ShowWindow(problems_, page == AidPage::Problems ? SW_SHOWNA : SW_HIDE);
  ShowWindow(window_, page == AidPage::None ? SW_HIDE : SW_SHOWNA);
  InvalidateRect(window_, nullptr, FALSE);
}

RECT AidPanel::CaptionBox(std::size_t page) const {
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const SelectedObject font(context.get(), font_.get());
  RECT box = {0, 0, 0, CaptionHeight()};
  for (std::size_t i = 0; i <= page; ++i) {
    SIZE size{};
    GetTextExtentPoint32W(context.get(), captions_[i].c_str(), static_cast<int>(captions_[i].size()), &size);
    box.left = box.right;
    box.right = box.left + size.cx + 2 * Pixels(Padding);
  }
  return box;
}

RECT AidPanel::CloseBox() const {
  const RECT client = InParent(window_);
  return {client.right - CaptionHeight(), 0, client.right, CaptionHeight()};
}

void AidPanel::Paint() const {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_, &paint);
  const SelectedObject font(context, font_.get());
  RECT strip = InParent(window_);
  strip.bottom = CaptionHeight();
  const UniqueGdi<HBRUSH> ground(CreateSolidBrush(theme_.Window));
  FillRect(context, &strip, ground.get());
  SetBkMode(context, TRANSPARENT);
  constexpr UINT format = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX;
  for (std::size_t i = 0; i < captions_.size(); ++i) {
    RECT box = CaptionBox(i);
    const bool isShown = page_ == (i == 0 ? AidPage::Help : AidPage::Problems);
    if (isShown) FillRect(context, &box, field_.get());
    SetTextColor(context, isShown ? theme_.FieldText : theme_.Text);
    DrawTextW(context, captions_[i].c_str(), -1, &box, format);
  }
  SetTextColor(context, theme_.Text);
  RECT close = CloseBox();
  DrawTextW(context, Cross, -1, &close, format);
  EndPaint(window_, &paint);
}

void AidPanel::Press(POINT pixel) {
  const RECT close = CloseBox();
  if (PtInRect(&close, pixel)) return OnPage(AidPage::None);
  for (std::size_t i = 0; i < captions_.size(); ++i) {
    const RECT box = CaptionBox(i);
    if (PtInRect(&box, pixel)) OnPage(i == 0 ? AidPage::Help : AidPage::Problems);
  }
}

std::optional<LRESULT> AidPanel::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      Layout();
      return 0;
    case WM_LBUTTONDOWN:
      if (OnPage) Press({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return 0;
    case WM_CTLCOLORLISTBOX: {
      const auto context = reinterpret_cast<HDC>(wParam);
      SetTextColor(context, theme_.FieldText);
      SetBkColor(context, theme_.Field);
      return reinterpret_cast<LRESULT>(field_.get());
    }
    case WM_COMMAND: {
      const LRESULT chosen = SendMessageW(problems_, LB_GETCURSEL, 0, 0);
      const bool isChosen = LOWORD(wParam) == ProblemsId && HIWORD(wParam) == LBN_SELCHANGE && chosen >= 0;
      if (isChosen && OnProblem) OnProblem(static_cast<std::size_t>(chosen));
      return 0;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
