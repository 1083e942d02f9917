#include "win32/template_form.h"

#include <algorithm>
#include <optional>
#include <string>

#include "win32/dialog_ids.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// In dialog units.
constexpr int PaneWidth = 260, PaneHeight = 210, LeastPane = 100, AroundPaneX = 180, AroundPaneY = 70;
constexpr int ListWidth = 130, AroundList = 46;
constexpr int ProblemLines = 3;

std::optional<std::size_t> Chosen(HWND dialog, const ShownTemplates& shown) {
  const LRESULT place = SendDlgItemMessageW(dialog, IDC_LIST, LB_GETCURSEL, 0, 0);
  if (place < 0 || static_cast<std::size_t>(place) >= shown.Dialog.Names.size()) return std::nullopt;
  return static_cast<std::size_t>(place);
}

bool Take(HWND dialog, const ShownTemplates& shown) {
  const std::optional<std::size_t> place = Chosen(dialog, shown);
  if (place) shown.Dialog.OnChosen(*place);
  return place.has_value();
}

void ShowProblem(HWND dialog, const ShownTemplates& shown) {
  SetDlgItemTextW(dialog, IDC_HINT, ControlText(shown.View.Pages().Problem).c_str());
}

HWND FillList(HWND dialog, ShownTemplates& shown) {
  shown.Pane =
      std::make_unique<PreviewWindow>(dialog, IDC_PICTURE, shown.View, shown.Decoder, shown.OnFailure);
  const HWND list = GetDlgItem(dialog, IDC_LIST);
  for (const std::string& name : shown.Dialog.Names)
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ControlText(name).c_str()));
  SendMessageW(list, LB_SETCURSEL, 0, 0);
  ShowProblem(dialog, shown);
  return list;
}

// Each is seen whole at first, however the one before was enlarged.
void ShowChosen(HWND dialog, ShownTemplates& shown) {
  const std::optional<std::size_t> place = Chosen(dialog, shown);
  if (!place) return;
  shown.View.Show(shown.Dialog.OnShow(*place));
  shown.View.ShowWhole();
  shown.Pane->Changed();
  ShowProblem(dialog, shown);
}

DialogSpec TemplatesSpec(const TemplatesDialog& dialog, const ButtonTexts& buttons, const DialogFont& font) {
  const SIZE screen = font.Screen();
  const SIZE pane = {std::clamp<LONG>(screen.cx - AroundPaneX, LeastPane, PaneWidth),
                     std::clamp<LONG>(screen.cy - AroundPaneY, LeastPane, PaneHeight)};
  DialogBuilder builder(font, ControlText(dialog.Caption), ListWidth);
  builder.AddPane(IDC_PICTURE, pane);
  builder.AddText(IDC_LABEL1, ControlText(dialog.Label), true);
  builder.AddList(IDC_LIST, static_cast<int>(pane.cy) - AroundList, DialogBuilder::ListEntries::Texts);
  builder.AddLine(IDC_HINT, ProblemLines);
  builder.AddButtons({{IDC_COMMAND1, ControlText(dialog.Button)}, {IDCANCEL, ControlText(buttons.Cancel)}});
  return builder.Finish();
}

}  // namespace

DialogForm TemplatesForm(ShownTemplates& shown, const ButtonTexts& buttons, const DialogFont& font) {
  shown.View.Show(shown.Dialog.OnShow(0));
  DialogActions actions;
  actions.OnInit = [&shown](HWND dialog) { return FillList(dialog, shown); };
  actions.OnPressed = [&shown](HWND dialog, int id) {
    return id == IDC_COMMAND1 ? Take(dialog, shown) : id == IDCANCEL;
  };
  actions.OnMessage = [&shown](HWND dialog, UINT message, WPARAM wParam,
                               LPARAM lParam) -> std::optional<INT_PTR> {
    if (message == WM_MOUSEWHEEL) {
      shown.Pane->TurnWheel(wParam, lParam);
      return TRUE;
    }
    if (message != WM_COMMAND || LOWORD(wParam) != IDC_LIST) return std::nullopt;
    if (HIWORD(wParam) == LBN_SELCHANGE) ShowChosen(dialog, shown);
    if (HIWORD(wParam) == LBN_DBLCLK && Take(dialog, shown)) EndDialog(dialog, IDC_COMMAND1);
    return std::nullopt;
  };
  return {TemplatesSpec(shown.Dialog, buttons, font), actions};
}

}  // namespace vaxel
