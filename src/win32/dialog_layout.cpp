#include "win32/dialog_layout.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "win32/input_state.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr int FieldHeight = 14, LineHeight = 8, LabelDrop = 3;
constexpr int ButtonWidth = 50, ButtonHeight = 14, ButtonPadding = 14;
constexpr int PictureSize = 21;
constexpr int RadioHeight = 10, RadioStep = 12, RadioMark = 12, FrameTop = 11, FrameBottom = 5;
constexpr int EntriesAColumn = 15;
constexpr int CaptionButtons = 30;
constexpr int WidestScrolling = 300, WidestWordShown = 400, TallestText = 30 * LineHeight;
// More is not measured: it scrolls anyway, and measuring takes time.
constexpr std::size_t LongestMeasured = 20000, LongestWord = 500;
constexpr int WidestMeasured = 30000;

int UnitsOfPixels(int pixels, int base, int units) {
  return (pixels * units + base - 1) / base;
}

// Words and texts one after the other, as the templates of dialogs are written.
class TemplateWriter {
 public:
  void Word(WORD value) { words_.push_back(value); }
  void Double(DWORD value) {
    Word(LOWORD(value));
    Word(HIWORD(value));
  }
  void Number(int value) { Word(static_cast<WORD>(value)); }
  void Text(std::wstring_view text) {
    for (const wchar_t c : text) Word(static_cast<WORD>(c));
    Word(0);
  }
  void AlignToDouble() {
    if (words_.size() % 2 != 0) Word(0);
  }
  std::vector<WORD> Take() { return std::move(words_); }

 private:
  std::vector<WORD> words_;
};

void WriteControl(TemplateWriter& out, const DialogControl& control) {
  const RECT& place = control.Place;
  out.AlignToDouble();
  out.Double(0);
  out.Double(control.ExtendedStyle);
  out.Double(control.Style | WS_CHILD | WS_VISIBLE);
  out.Number(place.left);
  out.Number(place.top);
  out.Number(place.right - place.left);
  out.Number(place.bottom - place.top);
  out.Double(static_cast<DWORD>(control.Id));
  out.Word(0xFFFF);
  out.Word(static_cast<WORD>(control.Class));
  out.Text(control.Class == ControlClass::Edit ? std::wstring() : control.Text);
  out.Word(0);
}

}  // namespace

DialogFont::DialogFont(HWND owner) : context_(CreateCompatibleDC(nullptr)) {
  const int height = -MulDiv(Points, GetDeviceCaps(context_.get(), LOGPIXELSY), 72);
  font_.reset(CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                          OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, Face));
  // The width is what the system counts with: the mean of the letters of the alphabet.
  const SelectedObject selected(context_.get(), font_.get());
  const std::wstring_view letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  TEXTMETRICW metrics{};
  SIZE extent{};
  GetTextMetricsW(context_.get(), &metrics);
  GetTextExtentPoint32W(context_.get(), letters.data(), static_cast<int>(letters.size()), &extent);
  base_.cx = std::max<LONG>(1, (extent.cx / 26 + 1) / 2);
  base_.cy = std::max<LONG>(1, metrics.tmHeight);
  // The dialog takes the resolution of its screen; the font was measured in that of the main one.
  RECT over{};
  if (owner) GetWindowRect(owner, &over);
  const RECT area = WorkAreaNear(over);
  const int dpi = GetDeviceCaps(context_.get(), LOGPIXELSY);
  const int screenDpi = owner ? static_cast<int>(GetDpiForWindow(owner)) : dpi;
  screen_ = {MulDiv(area.right - area.left, 4 * dpi, base_.cx * screenDpi),
             MulDiv(area.bottom - area.top, 8 * dpi, base_.cy * screenDpi)};
}

SIZE DialogFont::Size(const std::wstring& text, int maxWidth, bool hasAccelerator) const {
  const SelectedObject selected(context_.get(), font_.get());
  RECT box{0, 0, MulDiv(maxWidth, base_.cx, 4), 0};
  const UINT format = DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_EDITCONTROL;
  DrawTextW(context_.get(), text.c_str(), -1, &box, hasAccelerator ? format : format | DT_NOPREFIX);
  // The size is more than was measured: the font of another resolution has other fractions, and smoothed text
  // may be wider.
  const int width = UnitsOfPixels(box.right, base_.cx, 4);
  return {width + width / 32 + 1, UnitsOfPixels(box.bottom, base_.cy, 8)};
}

std::vector<WORD> DialogTemplate(const DialogSpec& spec) {
  TemplateWriter out;
  out.Word(1);
  out.Word(0xFFFF);
  out.Double(0);
  out.Double(0);
  out.Double(DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU);
  out.Number(static_cast<int>(spec.Controls.size()));
  out.Number(0);
  out.Number(0);
  out.Number(spec.Size.cx);
  out.Number(spec.Size.cy);
  out.Word(0);
  out.Word(0);
  out.Text(spec.Caption);
  out.Word(DialogFont::Points);
  out.Word(FW_NORMAL);
  out.Word(MAKEWORD(FALSE, DEFAULT_CHARSET));
  out.Text(DialogFont::Face);
  for (const DialogControl& control : spec.Controls) WriteControl(out, control);
  return out.Take();
}

void FillFields(HWND dialog, const DialogSpec& spec) {
  for (const DialogControl& control : spec.Controls) {
    if (control.Class == ControlClass::Edit) SetDlgItemTextW(dialog, control.Id, control.Text.c_str());
  }
}

std::wstring ControlText(const std::string& text) {
  std::wstring shown;
  bool isAfterReturn = false;
  for (const wchar_t c : Widen(text)) {
    if (c == L'\n' && isAfterReturn) {
      isAfterReturn = false;
      continue;
    }
    isAfterReturn = c == L'\r';
    if (c == L'\n' || c == L'\r') {
      shown += L"\r\n";
    } else {
      // The first two would end the text, or make it a number in a template.
      shown += c == L'\0' || c == L'\xFFFF' ? L'\xFFFD' : c;
    }
  }
  return shown;
}

DialogBuilder::DialogBuilder(const DialogFont& font, const std::wstring& caption, int contentWidth)
    : font_(font) {
  const int captionWidth = static_cast<int>(font.Size(caption, WidestText, false).cx) + CaptionButtons;
  spec_.Caption = caption;
  width_ = std::max(contentWidth, captionWidth - 2 * Margin);
}

void DialogBuilder::Add(ControlClass controlClass, int id, const std::wstring& text, RECT place, DWORD style,
                        DWORD extendedStyle) {
  spec_.Controls.push_back({controlClass, id, text, place, style, extendedStyle});
}

// The upper edge of what is put there; the next one goes below it.
int DialogBuilder::Below(int height, int gap) {
  bottom_ = std::max(bottom_, top_ + height);
  return std::exchange(top_, top_ + height + gap);
}

void DialogBuilder::AddPicture(int id) {
  Add(ControlClass::Static, id, {}, {left_, top_, left_ + PictureSize, top_ + PictureSize}, SS_ICON);
  left_ += PictureSize + WideGap;
  bottom_ = top_ + PictureSize;
}

// As far as it matters: names of files are what is long.
int DialogBuilder::WidestWord(const std::wstring& text) const {
  constexpr std::size_t shortWord = 20;
  constexpr std::wstring_view blanks = L" \t\r\n";
  int widest = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find_first_of(blanks, begin), text.size());
    if (end - begin > shortWord) {
      const std::wstring word = text.substr(begin, std::min(end - begin, LongestWord));
      widest = std::max<int>(widest, font_.Size(word, WidestMeasured, false).cx);
    }
    begin = end + 1;
  }
  return widest;
}

void DialogBuilder::AddScrollingText(int id, const std::wstring& text, int height) {
  const int top = Below(height, WideGap);
  Add(ControlClass::Edit, id, text, {left_, top, left_ + width_, top + height},
      ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP | WS_GROUP, WS_EX_CLIENTEDGE);
}

void DialogBuilder::AddText(int id, const std::wstring& text, bool hasAccelerator) {
  const int tallest = std::min<int>(TallestText, static_cast<int>(font_.Screen().cy) / 2);
  const int widest = static_cast<int>(font_.Screen().cx) - left_ - 2 * Margin;
  if (text.size() > LongestMeasured) {
    width_ = std::max(width_, std::min(WidestScrolling, widest));
    return AddScrollingText(id, text, tallest);
  }
  const int widestWord = WidestWord(text);
  const int wanted = std::max({width_, WidestText, std::min(widestWord, WidestWordShown)});
  const SIZE size = font_.Size(text, std::min(wanted, widest), hasAccelerator);
  if (size.cy > tallest || widestWord > std::min(wanted, widest)) {
    width_ = std::max(width_, std::min(WidestScrolling, widest));
    constexpr int leastLines = 4;
    return AddScrollingText(id, text,
                            std::clamp<int>(size.cy + LineHeight, leastLines * LineHeight, tallest));
  }
  width_ = std::max<int>(width_, size.cx);
  const int height = std::max<int>(size.cy, LineHeight), top = Below(height, hasAccelerator ? Gap : WideGap);
  Add(ControlClass::Static, id, text, {left_, top, left_ + width_, top + height},
      SS_LEFT | SS_EDITCONTROL | WS_GROUP | (hasAccelerator ? 0U : SS_NOPREFIX));
}

void DialogBuilder::AddField(int id, const std::wstring& text) {
  const int top = Below(FieldHeight, WideGap);
  Add(ControlClass::Edit, id, text, {left_, top, left_ + width_, top + FieldHeight},
      ES_AUTOHSCROLL | WS_TABSTOP | WS_GROUP, WS_EX_CLIENTEDGE);
}

void DialogBuilder::AddField(int labelId, const std::wstring& label, int labelWidth, int id,
                             const std::wstring& text) {
  const int top = Below(FieldHeight, Gap), fieldLeft = left_ + labelWidth + WideGap;
  Add(ControlClass::Static, labelId, label,
      {left_, top + LabelDrop, left_ + labelWidth, top + LabelDrop + LineHeight}, SS_LEFT | WS_GROUP);
  Add(ControlClass::Edit, id, text, {fieldLeft, top, left_ + width_, top + FieldHeight},
      ES_AUTOHSCROLL | WS_TABSTOP | WS_GROUP, WS_EX_CLIENTEDGE);
}

// Returns how tall the frame must be.
int DialogBuilder::AddGroup(const Choice& choice, const std::vector<std::wstring>& entries, RECT frame,
                            bool isLastDisabled) {
  const int count = static_cast<int>(entries.size()), columns = (count - 1) / EntriesAColumn + 1;
  const int rows = (count + columns - 1) / columns;
  const int columnWidth = static_cast<int>(frame.right - frame.left - 2 * WideGap) / columns;
  for (int i = 0; i < count; ++i) {
    const int left = static_cast<int>(frame.left) + WideGap + i / rows * columnWidth;
    const int top = static_cast<int>(frame.top) + FrameTop + i % rows * RadioStep;
    const DWORD first = i == 0 ? WS_GROUP | WS_TABSTOP : 0;
    const DWORD last = isLastDisabled && i == count - 1 ? WS_DISABLED : 0;
    Add(ControlClass::Button, choice.FirstId + i, entries[static_cast<std::size_t>(i)],
        {left, top, left + columnWidth, top + RadioHeight}, BS_AUTORADIOBUTTON | first | last);
  }
  const int height = FrameTop + rows * RadioStep + FrameBottom;
  frame.bottom = frame.top + height;
  // Wine measures the label in a smaller font than it draws with, and cuts its end.
  Add(ControlClass::Button, choice.FrameId, choice.Label + L"   ", frame, BS_GROUPBOX | WS_GROUP);
  return height;
}

int DialogBuilder::WidthOf(const std::wstring& text) const {
  return static_cast<int>(font_.Size(text, WidestText, true).cx);
}

void DialogBuilder::AddChoice(const Choice& choice, const std::vector<std::wstring>& entries) {
  int widest = WidthOf(choice.Label);
  for (const std::wstring& entry : entries) widest = std::max(widest, WidthOf(entry) + RadioMark);
  width_ = std::max(width_, widest + 2 * WideGap);
  Below(AddGroup(choice, entries, {left_, top_, left_ + width_, top_}, false), WideGap);
}

void DialogBuilder::AddChoices(const Choice& left, const Choice& right,
                               const std::vector<std::wstring>& entries) {
  int widest = 0;
  for (const std::wstring& entry : entries) widest = std::max(widest, WidthOf(entry) + RadioMark);
  const int columns = (static_cast<int>(entries.size()) - 1) / EntriesAColumn + 1;
  const int frameWidth =
      2 * WideGap + std::max({widest * columns, WidthOf(left.Label), WidthOf(right.Label)});
  width_ = std::max(width_, 2 * frameWidth + WideGap);
  const int half = (width_ - WideGap) / 2;
  const RECT leftFrame{left_, top_, left_ + half, top_};
  const RECT rightFrame{left_ + width_ - half, top_, left_ + width_, top_};
  AddGroup(left, entries, leftFrame, true);
  Below(AddGroup(right, entries, rightFrame, true), WideGap);
}

void DialogBuilder::AddCheck(int id, const std::wstring& label, bool isEnabled) {
  width_ = std::max(width_, static_cast<int>(font_.Size(label, WidestText, true).cx) + RadioMark);
  const int top = Below(RadioHeight, RadioStep - RadioHeight);
  Add(ControlClass::Button, id, label, {left_, top, left_ + width_, top + RadioHeight},
      BS_AUTOCHECKBOX | WS_TABSTOP | WS_GROUP | (isEnabled ? 0U : WS_DISABLED));
}

void DialogBuilder::AddLine(int id, int lines) {
  const int height = lines * LineHeight, top = Below(height, WideGap);
  Add(ControlClass::Static, id, {}, {left_, top, left_ + width_, top + height},
      SS_LEFT | SS_NOPREFIX | WS_GROUP | (lines == 1 ? DWORD{SS_ENDELLIPSIS} : DWORD{SS_EDITCONTROL}));
}

void DialogBuilder::AddPane(int id, SIZE size) {
  Add(ControlClass::Static, id, {}, {left_, top_, left_ + size.cx, top_ + size.cy}, SS_LEFT);
  bottom_ = std::max(bottom_, top_ + static_cast<int>(size.cy));
  left_ += static_cast<int>(size.cx) + WideGap;
}

void DialogBuilder::AddList(int id, int height, ListEntries entries) {
  const int top = Below(height, WideGap);
  const DWORD drawn = entries == ListEntries::Drawn ? LBS_OWNERDRAWFIXED | LBS_HASSTRINGS : 0;
  Add(ControlClass::ListBox, id, {}, {left_, top, left_ + width_, top + height},
      drawn | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP | WS_GROUP, WS_EX_CLIENTEDGE);
}

void DialogBuilder::AddButtonRow(const std::vector<ButtonSpec>& buttons) {
  const int count = static_cast<int>(buttons.size());
  int each = 0;
  for (const ButtonSpec& button : buttons)
    each = std::max(each, static_cast<int>(font_.Size(button.Text, WidestText, true).cx) + ButtonPadding);
  width_ = std::max(width_, count * (each + Gap) - Gap);
  each = (width_ - (count - 1) * Gap) / count;
  const int top = Below(ButtonHeight, Gap);
  int left = left_;
  for (const ButtonSpec& button : buttons) {
    Add(ControlClass::Button, button.Id, button.Text, {left, top, left + each, top + ButtonHeight},
        BS_PUSHBUTTON | WS_GROUP | WS_TABSTOP);
    left += each + Gap;
  }
}

void DialogBuilder::AddButtons(const std::vector<ButtonSpec>& buttons, int defaultId) {
  std::vector<int> widths;
  int all = -Gap;
  for (const ButtonSpec& button : buttons) {
    const int text = static_cast<int>(font_.Size(button.Text, WidestText, true).cx);
    widths.push_back(std::max(ButtonWidth, text + ButtonPadding));
    all += widths.back() + Gap;
  }
  width_ = std::max(width_, all);
  top_ = std::max(top_, bottom_ + WideGap);
  const int top = Below(ButtonHeight, 0);
  int left = left_ + width_ - all;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const bool isDefault = defaultId == 0 ? i == 0 : buttons[i].Id == defaultId;
    const DWORD style = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, group = i == 0 ? WS_GROUP : 0;
    Add(ControlClass::Button, buttons[i].Id, buttons[i].Text,
        {left, top, left + widths[i], top + ButtonHeight}, style | group | WS_TABSTOP);
    left += widths[i] + Gap;
  }
}

DialogSpec DialogBuilder::Finish() {
  spec_.Size = {left_ + width_ + Margin, top_ + Margin};
  return std::move(spec_);
}

}  // namespace vaxel
