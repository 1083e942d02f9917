#include "win32/print_forms.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "win32/dialog_ids.h"
#include "winbase/gdi_handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// In dialog units.
constexpr int FontListWidth = 300, FontListHeight = 170;
constexpr int PaneWidth = 300, PaneHeight = 290, LeastPane = 100;
constexpr int AroundPaneX = 240, AroundPaneY = 70;
constexpr int OptionFieldWidth = 32, OptionWidth = 130;
// Pixels of an entry at 96 dpi.
constexpr int EntryHeight = 24, SampleHeight = 17;

void Check(HWND dialog, int id, bool isChecked) {
  CheckDlgButton(dialog, id, isChecked ? BST_CHECKED : BST_UNCHECKED);
}

bool IsChecked(HWND dialog, int id) {
  return IsDlgButtonChecked(dialog, id) == BST_CHECKED;
}

int Scaled(HWND window, int pixels) {
  return MulDiv(pixels, static_cast<int>(GetDpiForWindow(window)), 96);
}

// The name in the dialog's font, the sample in its own.
void DrawFontEntry(HWND dialog, const DRAWITEMSTRUCT& item, const std::wstring& name,
                   const std::wstring& sample) {
  const bool isChosen = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(isChosen ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  SetTextColor(item.hDC, GetSysColor(isChosen ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  SetBkMode(item.hDC, TRANSPARENT);
  constexpr UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  RECT half = item.rcItem;
  half.left += Scaled(dialog, 4);
  half.right = (item.rcItem.left + item.rcItem.right) / 2 - Scaled(dialog, 4);
  DrawTextW(item.hDC, name.c_str(), -1, &half, format);
  half.left = (item.rcItem.left + item.rcItem.right) / 2;
  half.right = item.rcItem.right;
  const UniqueGdi<HFONT> font(CreateFontW(-Scaled(dialog, SampleHeight), 0, 0, 0, FW_NORMAL, FALSE, FALSE,
                                          FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                          DEFAULT_QUALITY, DEFAULT_PITCH, name.c_str()));
  const SelectedObject selected(item.hDC, font.get());
  DrawTextW(item.hDC, sample.c_str(), -1, &half, format);
  if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

HWND ListOf(HWND dialog) {
  return GetDlgItem(dialog, IDC_LIST);
}

HWND FillFonts(HWND dialog, const FontsDialog& fonts) {
  const HWND list = ListOf(dialog);
  SendMessageW(list, LB_SETITEMHEIGHT, 0, Scaled(dialog, EntryHeight));
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  for (const std::string& name : fonts.Names) {
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ControlText(name).c_str()));
  }
  SendMessageW(list, LB_SETCURSEL, 0, 0);
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  return GetDlgItem(dialog, IDC_TEXT1);
}

bool TakeFont(HWND dialog, const FontsDialog& fonts) {
  const LRESULT chosen = SendMessageW(ListOf(dialog), LB_GETCURSEL, 0, 0);
  if (chosen < 0 || static_cast<std::size_t>(chosen) >= fonts.Names.size()) return false;
  fonts.OnChosen(static_cast<std::size_t>(chosen));
  return true;
}

void ShowTexts(HWND dialog, const ShownPreview& shown) {
  const PreviewView& view = shown.View;
  const PreviewPages& pages = view.Pages();
  const auto show = [dialog](int id, const std::string& text) {
    SetDlgItemTextW(dialog, id, ControlText(text).c_str());
  };
  show(IDC_STATUS, shown.Dialog.PageText(view.Page(), view.LastPage() + 1));
  show(IDC_PRINTER_TEXT, pages.Printer);
  show(IDC_CALIBRATION, pages.Calibration);
  show(IDC_HINT, pages.Problem);
  EnableWindow(GetDlgItem(dialog, IDC_PREVIOUS), view.Page() > 0);
  EnableWindow(GetDlgItem(dialog, IDC_NEXT), view.Page() < view.LastPage());
}

void ShowChange(HWND dialog, ShownPreview& shown) {
  shown.Pane->Changed();
  ShowTexts(dialog, shown);
}

void TakeEntry(HWND dialog, ShownPreview& shown) {
  const auto text = [dialog](int id) { return Narrow(TextOfControl(dialog, id)); };
  shown.Entry = {IsChecked(dialog, IDC_CHECK1), IsChecked(dialog, IDC_CHECK2), IsChecked(dialog, IDC_CHECK3),
                 text(IDC_TEXT1), text(IDC_TEXT2)};
  shown.View.Show(shown.Dialog.OnEntry(shown.Entry));
  ShowChange(dialog, shown);
}

// A run for the printer leaves the main window enabled, which the dialog is still modal to.
void StayModal(HWND dialog) {
  const HWND owner = GetWindow(dialog, GW_OWNER);
  if (owner) EnableWindow(owner, FALSE);
}

// The answer says whether the dialog closes.
bool PressInPreview(HWND dialog, ShownPreview& shown, int id) {
  PreviewView& view = shown.View;
  switch (id) {
    case IDC_COMMAND1: {
      const bool isPrinted = shown.Dialog.OnPrint();
      StayModal(dialog);
      return isPrinted;
    }
    case IDC_PREVIOUS:
      if (view.Page() > 0) view.TurnTo(view.Page() - 1);
      break;
    case IDC_NEXT:
      view.TurnTo(view.Page() + 1);
      break;
    case IDC_LARGER:
      view.Zoom(1);
      break;
    case IDC_SMALLER:
      view.Zoom(-1);
      break;
    case IDC_WHOLE:
      view.ShowWhole();
      break;
    case IDC_PRINTER:
      if (auto pages = shown.Dialog.OnPrinter(shown.Entry)) view.Show(std::move(*pages));
      StayModal(dialog);
      break;
    case IDC_CHECK1:
    case IDC_CHECK2:
    case IDC_CHECK3:
      TakeEntry(dialog, shown);
      return false;
    default:
      return id == IDCANCEL;
  }
  ShowChange(dialog, shown);
  // A button that was greyed as there is no further page must not keep the keys.
  if (!IsWindowEnabled(GetDlgItem(dialog, id)))
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDC_COMMAND1)), TRUE);
  return false;
}

DialogSpec PreviewSpec(const PreviewDialog& dialog, const DialogFont& font) {
  const std::wstring copies = ControlText(dialog.CopiesLabel), gap = ControlText(dialog.GapLabel);
  const auto widthOf = [&](const std::wstring& label) {
    return static_cast<int>(font.Size(label, DialogBuilder::WidestText, true).cx);
  };
  const int labelWidth = std::max({widthOf(copies), widthOf(gap), OptionWidth});
  const SIZE screen = font.Screen();
  const SIZE pane = {std::clamp<LONG>(screen.cx - AroundPaneX, LeastPane, PaneWidth),
                     std::clamp<LONG>(screen.cy - AroundPaneY, LeastPane, PaneHeight)};
  DialogBuilder builder(font, ControlText(dialog.Caption),
                        labelWidth + DialogBuilder::WideGap + OptionFieldWidth);
  builder.AddPane(IDC_PICTURE, pane);
  builder.AddButtonRow(
      {{IDC_PREVIOUS, ControlText(dialog.PreviousButton)}, {IDC_NEXT, ControlText(dialog.NextButton)}});
  builder.AddLine(IDC_STATUS);
  builder.AddButtonRow({{IDC_LARGER, ControlText(dialog.LargerButton)},
                        {IDC_SMALLER, ControlText(dialog.SmallerButton)},
                        {IDC_WHOLE, ControlText(dialog.WholeButton)}});
  builder.AddCheck(IDC_CHECK1, ControlText(dialog.CropMarksLabel));
  builder.AddCheck(IDC_CHECK2, ControlText(dialog.RulerLabel));
  builder.AddCheck(IDC_CHECK3, ControlText(dialog.MirrorLabel));
  builder.AddField(IDC_LABEL1, copies, labelWidth, IDC_TEXT1, ControlText(dialog.Entry.Copies));
  builder.AddField(IDC_LABEL2, gap, labelWidth, IDC_TEXT2, ControlText(dialog.Entry.Gap));
  builder.AddLine(IDC_HINT, 2);
  builder.AddLine(IDC_PRINTER_TEXT, 3);
  builder.AddLine(IDC_CALIBRATION, 2);
  builder.AddButtonRow({{IDC_PRINTER, ControlText(dialog.PrinterButton)}});
  builder.AddButtons(
      {{IDC_COMMAND1, ControlText(dialog.PrintButton)}, {IDCANCEL, ControlText(dialog.CloseButton)}});
  return builder.Finish();
}

}  // namespace

DialogForm FontsForm(const FontsDialog& dialog, const DialogFont& font) {
  const std::wstring label = ControlText(dialog.FindLabel), sample = ControlText(dialog.Sample);
  DialogBuilder builder(font, ControlText(dialog.Caption), FontListWidth);
  const int labelWidth = static_cast<int>(font.Size(label, DialogBuilder::WidestText, true).cx);
  builder.AddField(IDC_LABEL1, label, labelWidth, IDC_TEXT1, {});
  builder.AddList(IDC_LIST, FontListHeight);
  builder.AddButtons(
      {{IDC_COMMAND1, ControlText(dialog.Button)}, {IDCANCEL, ControlText(dialog.CloseButton)}});
  DialogActions actions;
  actions.OnInit = [&dialog](HWND window) { return FillFonts(window, dialog); };
  actions.OnPressed = [&dialog](HWND window, int id) {
    return id == IDC_COMMAND1 ? TakeFont(window, dialog) : id == IDCANCEL;
  };
  actions.OnMessage = [&dialog, sample](HWND window, UINT message, WPARAM wParam,
                                        LPARAM lParam) -> std::optional<INT_PTR> {
    if (message == WM_DRAWITEM) {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (item.itemID < dialog.Names.size())
        DrawFontEntry(window, item, ControlText(dialog.Names[item.itemID]), sample);
      return TRUE;
    }
    if (message != WM_COMMAND) return std::nullopt;
    if (LOWORD(wParam) == IDC_TEXT1 && HIWORD(wParam) == EN_CHANGE) {
      SendMessageW(ListOf(window), LB_SETCURSEL, dialog.OnFind(Narrow(TextOfControl(window, IDC_TEXT1))), 0);
      return TRUE;
    }
    if (LOWORD(wParam) == IDC_LIST && HIWORD(wParam) == LBN_DBLCLK && TakeFont(window, dialog))
      EndDialog(window, IDC_COMMAND1);
    return std::nullopt;
  };
  return {builder.Finish(), actions};
}

DialogForm PreviewForm(ShownPreview& shown, const DialogFont& font) {
  shown.Entry = shown.Dialog.Entry;
  shown.View.Show(shown.Dialog.Pages);
  DialogActions actions;
  actions.OnInit = [&shown](HWND window) {
    shown.Pane =
        std::make_unique<PreviewWindow>(window, IDC_PICTURE, shown.View, shown.Decoder, shown.OnFailure);
    Check(window, IDC_CHECK1, shown.Entry.CropMarks);
    Check(window, IDC_CHECK2, shown.Entry.Ruler);
    Check(window, IDC_CHECK3, shown.Entry.IsMirrored);
    ShowTexts(window, shown);
    return GetDlgItem(window, IDC_COMMAND1);
  };
  actions.OnPressed = [&shown](HWND window, int id) { return PressInPreview(window, shown, id); };
  actions.OnMessage = [&shown](HWND window, UINT message, WPARAM wParam,
                               LPARAM lParam) -> std::optional<INT_PTR> {
    if (message == WM_MOUSEWHEEL) {
      shown.Pane->TurnWheel(wParam, lParam);
      return TRUE;
    }
    const bool isField = LOWORD(wParam) == IDC_TEXT1 || LOWORD(wParam) == IDC_TEXT2;
    if (message != WM_COMMAND || HIWORD(wParam) != EN_CHANGE || !isField) return std::nullopt;
    TakeEntry(window, shown);
    return TRUE;
  };
  return {PreviewSpec(shown.Dialog, font), actions};
}

}  // namespace vaxel
