#include "win32/dialog_forms.h"

#include <commctrl.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "win32/box_form.h"
#include "win32/dialog_ids.h"
#include "win32/input_state.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr int SearchFieldWidth = 170;
constexpr int SearchButtons[] = {IDC_COMMAND1, IDC_COMMAND2, IDC_COMMAND3};
constexpr int InputWidth = 200, ZoomFieldWidth = 70, ReferenceWidth = 200;

std::string FieldText(HWND dialog, int id) {
  return Narrow(TextOfControl(dialog, id));
}

// The user may type as much as a field holds at all.
void LiftLimit(HWND dialog, int id) {
  SendDlgItemMessageW(dialog, id, EM_SETLIMITTEXT, 0, 0);
}

void ShowIcon(HWND dialog, HICON icon) {
  SendDlgItemMessageW(dialog, IDC_PICTURE, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
}

// Puts the focus on a field with its text selected, to be typed anew.
void SelectField(HWND dialog, int id) {
  SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE);
}

// A disabled control gets no pointer, so the hint lies over its place in the dialog.
void AddHint(HWND dialog, int id, std::wstring hint) {
  const HWND tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0,
                                   0, dialog, nullptr, nullptr, nullptr);
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = dialog;
  tool.uId = static_cast<UINT_PTR>(id);
  tool.lpszText = hint.data();
  GetWindowRect(GetDlgItem(dialog, id), &tool.rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&tool.rect), 2);
  SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

// A group of radio buttons and who is told of it. A button that gets the focus also says that it was pressed.
struct OptionGroup {
  int FirstId, Count;
  int Chosen;  // from 1; 0: none
  const std::function<void(int)>& OnChosen;

  void Show(HWND dialog) const {
    if (Chosen > 0) CheckRadioButton(dialog, FirstId, FirstId + Count - 1, FirstId + Chosen - 1);
  }
  void Pressed(HWND dialog, int id) {
    const int index = id - FirstId + 1;
    if (index < 1 || index > Count || index == Chosen || !IsDlgButtonChecked(dialog, id)) return;
    Chosen = index;
    if (OnChosen) OnChosen(index);
  }
};

// To the right edge of its owner: what is found must be seen.
void MoveAside(HWND dialog) {
  const HWND owner = GetWindow(dialog, GW_OWNER);
  if (!owner) return;
  RECT over{}, frame{};
  GetWindowRect(owner, &over);
  GetWindowRect(dialog, &frame);
  const RECT area = WorkAreaNear(over);
  const LONG left = std::max(area.left, std::min(over.right, area.right) - (frame.right - frame.left) - 16);
  SetWindowPos(dialog, nullptr, left, frame.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Which of so many radio buttons is pressed, from 0.
int Checked(HWND dialog, int firstId, int count) {
  for (int i = 0; i < count; ++i) {
    if (IsDlgButtonChecked(dialog, firstId + i)) return i;
  }
  return 0;
}

std::wstring WithoutAccelerator(const std::string& name) {
  std::wstring text;
  for (const wchar_t c : ControlText(name)) text.append(c == L'&' ? 2 : 1, c);
  return text;
}

}  // namespace

DialogForm InputForm(const InputDialog& dialog, const ButtonTexts& buttons, const DialogFont& font,
                     std::string& answer) {
  DialogBuilder builder(font, ControlText(dialog.Title), InputWidth);
  builder.AddText(IDC_PROMPT, ControlText(dialog.Prompt));
  builder.AddField(IDC_TEXT1, ControlText(dialog.Proposal));
  builder.AddButtons(ButtonsOf({IDOK, IDCANCEL}, buttons));
  DialogActions actions;
  actions.OnInit = [](HWND window) {
    LiftLimit(window, IDC_TEXT1);
    return GetDlgItem(window, IDC_TEXT1);
  };
  actions.OnPressed = [&dialog, &answer](HWND window, int id) {
    if (id != IDOK) return id == IDCANCEL;
    answer = FieldText(window, IDC_TEXT1);
    if (!dialog.OnOk || dialog.OnOk(answer)) return true;
    SelectField(window, IDC_TEXT1);
    return false;
  };
  return {builder.Finish(), actions};
}

DialogForm ZoomForm(const ZoomDialog& dialog, const DialogFont& font) {
  const std::wstring factor = ControlText(dialog.FactorLabel), zmm = ControlText(dialog.ZmmLabel);
  const auto widthOf = [&](const std::wstring& label) {
    return static_cast<int>(font.Size(label, DialogBuilder::WidestText, true).cx);
  };
  const int labelWidth = std::max(widthOf(factor), widthOf(zmm));
  DialogBuilder builder(font, ControlText(dialog.Caption),
                        labelWidth + DialogBuilder::WideGap + ZoomFieldWidth);
  builder.AddField(IDC_LABEL1, factor, labelWidth, IDC_TEXT1, ControlText(dialog.FactorText));
  builder.AddField(IDC_LABEL2, zmm, labelWidth, IDC_TEXT2, ControlText(dialog.ZmmText));
  builder.AddButtons({{IDC_COMMAND1, ControlText(dialog.Button)}});
  DialogActions actions;
  actions.OnInit = [](HWND window) {
    LiftLimit(window, IDC_TEXT1);
    LiftLimit(window, IDC_TEXT2);
    return GetDlgItem(window, IDC_TEXT1);
  };
  actions.OnPressed = [&dialog](HWND window, int id) {
    if (id != IDC_COMMAND1) return id == IDCANCEL;
    const auto wrong = dialog.OnButton(FieldText(window, IDC_TEXT1), FieldText(window, IDC_TEXT2));
    if (wrong) SelectField(window, *wrong == ZoomField::Factor ? IDC_TEXT1 : IDC_TEXT2);
    return !wrong;
  };
  return {builder.Finish(), actions};
}

DialogForm ReferenceForm(const ReferenceDialog& dialog, const DialogFont& font) {
  DialogBuilder builder(font, ControlText(dialog.Caption), ReferenceWidth);
  builder.AddText(IDC_LABEL1, ControlText(dialog.Label), true);
  builder.AddField(IDC_TEXT1, ControlText(dialog.Text));
  builder.AddButtons({{IDC_COMMAND1, ControlText(dialog.Button)}});
  DialogActions actions;
  actions.OnInit = [](HWND window) {
    LiftLimit(window, IDC_TEXT1);
    return GetDlgItem(window, IDC_TEXT1);
  };
  actions.OnPressed = [&dialog](HWND window, int id) {
    if (id != IDC_COMMAND1) return id == IDCANCEL;
    if (dialog.OnButton(FieldText(window, IDC_TEXT1))) return true;
    SelectField(window, IDC_TEXT1);
    return false;
  };
  return {builder.Finish(), actions};
}

DialogForm SearchForm(const SearchDialog& dialog, const DialogFont& font) {
  const std::wstring wanted = ControlText(dialog.WantedLabel);
  const std::wstring replacement = ControlText(dialog.ReplacementLabel);
  const auto widthOf = [&](const std::wstring& label) {
    return static_cast<int>(font.Size(label, DialogBuilder::WidestText, true).cx);
  };
  const int labelWidth = std::max(widthOf(wanted), widthOf(replacement));
  DialogBuilder builder(font, ControlText(dialog.Caption), labelWidth + SearchFieldWidth);
  builder.AddField(IDC_LABEL1, wanted, labelWidth, IDC_TEXT1, ControlText(dialog.Entry.Wanted));
  builder.AddField(IDC_LABEL2, replacement, labelWidth, IDC_TEXT2, ControlText(dialog.Entry.Replacement));
  builder.AddCheck(IDC_CHECK1, ControlText(dialog.CaseLabel));
  builder.AddCheck(IDC_CHECK2, ControlText(dialog.WordsLabel));
  builder.AddCheck(IDC_CHECK3, ControlText(dialog.SelectionLabel), dialog.HasSelection);
  builder.AddLine(IDC_STATUS);
  std::vector<ButtonSpec> buttons;
  for (std::size_t i = 0; i < dialog.Buttons.size(); ++i) {
    buttons.push_back({SearchButtons[i], ControlText(dialog.Buttons[i].Caption)});
  }
  buttons.push_back({IDCANCEL, ControlText(dialog.CloseButton)});
  builder.AddButtons(buttons);
  DialogActions actions;
  actions.OnInit = [&dialog](HWND window) {
    LiftLimit(window, IDC_TEXT1);
    LiftLimit(window, IDC_TEXT2);
    CheckDlgButton(window, IDC_CHECK1, dialog.Entry.MatchesCase ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(window, IDC_CHECK2, dialog.Entry.WholeWords ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(window, IDC_CHECK3, dialog.Entry.InSelection ? BST_CHECKED : BST_UNCHECKED);
    MoveAside(window);
    return GetDlgItem(window, IDC_TEXT1);
  };
  actions.OnPressed = [&dialog](HWND window, int id) {
    const auto* const button = std::ranges::find(SearchButtons, id);
    if (button == std::end(SearchButtons)) return id == IDCANCEL;
    const auto isChecked = [window](int check) { return IsDlgButtonChecked(window, check) == BST_CHECKED; };
    const SearchEntry entry{FieldText(window, IDC_TEXT1), FieldText(window, IDC_TEXT2), isChecked(IDC_CHECK1),
                            isChecked(IDC_CHECK2), isChecked(IDC_CHECK3)};
    const auto index = static_cast<std::size_t>(button - SearchButtons);
    SetDlgItemTextW(window, IDC_STATUS, ControlText(dialog.Buttons[index].OnPressed(entry)).c_str());
    return false;
  };
  return {builder.Finish(), actions};
}

DialogForm LanguageForm(const LanguageDialog& dialog, const DialogFont& font) {
  const std::wstring hint = ControlText(dialog.LastEntryHint);
  std::vector<std::wstring> entries;
  for (const std::string& name : dialog.Languages) entries.push_back(WithoutAccelerator(name));
  entries.push_back(WithoutAccelerator(dialog.LastEntry));
  DialogBuilder builder(font, ControlText(dialog.Caption), 0);
  builder.AddChoices({IDC_FRAME1, IDC_OPTION1_FIRST, ControlText(dialog.MessagesLabel)},
                     {IDC_FRAME2, IDC_OPTION2_FIRST, ControlText(dialog.HelpLabel)}, entries);
  builder.AddText(IDC_HINT, ControlText(dialog.LastEntry) + L"   " + hint);
  builder.AddButtons({{IDC_COMMAND1, ControlText(dialog.Button)}});
  const int count = static_cast<int>(dialog.Languages.size());
  DialogActions actions;
  OptionGroup messages{IDC_OPTION1_FIRST, count, dialog.Messages, dialog.OnMessages};
  OptionGroup help{IDC_OPTION2_FIRST, count, dialog.Help, dialog.OnHelp};
  actions.OnInit = [=](HWND window) {
    messages.Show(window);
    help.Show(window);
    AddHint(window, IDC_OPTION1_FIRST + count, hint);
    AddHint(window, IDC_OPTION2_FIRST + count, hint);
    // Where nothing is chosen, a group must not be entered unasked: that would choose its first entry.
    const int focus = messages.Chosen > 0 ? IDC_OPTION1_FIRST + messages.Chosen - 1 : IDC_COMMAND1;
    return GetDlgItem(window, focus);
  };
  actions.OnPressed = [messages, help, &dialog](HWND window, int id) mutable {
    messages.Pressed(window, id);
    help.Pressed(window, id);
    if (id == IDC_COMMAND1) dialog.OnButton();
    return id == IDC_COMMAND1 || id == IDCANCEL;
  };
  return {builder.Finish(), actions};
}

// The field keeps the focus when it is refused.
DialogForm ExportForm(const ExportDialog& dialog, const ButtonTexts& buttons, const DialogFont& font) {
  const auto texts = [](const std::vector<std::string>& entries) {
    std::vector<std::wstring> wide;
    for (const std::string& entry : entries) wide.push_back(WithoutAccelerator(entry));
    return wide;
  };
  const std::wstring dpi = ControlText(dialog.DpiLabel);
  const int labelWidth = static_cast<int>(font.Size(dpi, DialogBuilder::WidestText, true).cx);
  DialogBuilder builder(font, ControlText(dialog.Caption),
                        labelWidth + DialogBuilder::WideGap + ZoomFieldWidth);
  builder.AddChoice({IDC_FRAME1, IDC_OPTION1_FIRST, ControlText(dialog.FormatLabel)}, texts(dialog.Formats));
  builder.AddChoice({IDC_FRAME2, IDC_OPTION2_FIRST, ControlText(dialog.PageLabel)}, texts(dialog.Pages));
  builder.AddField(IDC_LABEL1, dpi, labelWidth, IDC_TEXT1, ControlText(dialog.DpiText));
  builder.AddButtons(ButtonsOf({IDOK, IDCANCEL}, buttons));
  const int formats = static_cast<int>(dialog.Formats.size()), pages = static_cast<int>(dialog.Pages.size());
  DialogActions actions;
  actions.OnInit = [=, &dialog](HWND window) {
    const int format = IDC_OPTION1_FIRST + dialog.Format, page = IDC_OPTION2_FIRST + dialog.Page;
    CheckRadioButton(window, IDC_OPTION1_FIRST, IDC_OPTION1_FIRST + formats - 1, format);
    CheckRadioButton(window, IDC_OPTION2_FIRST, IDC_OPTION2_FIRST + pages - 1, page);
    LiftLimit(window, IDC_TEXT1);
    return GetDlgItem(window, format);
  };
  actions.OnPressed = [=, &dialog](HWND window, int id) {
    if (id != IDOK) return id == IDCANCEL;
    const int format = Checked(window, IDC_OPTION1_FIRST, formats),
              page = Checked(window, IDC_OPTION2_FIRST, pages);
    if (dialog.OnButton(format, page, FieldText(window, IDC_TEXT1))) return true;
    const HWND field = GetDlgItem(window, IDC_TEXT1);
    SendMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    return false;
  };
  return {builder.Finish(), actions};
}

DialogForm AboutForm(const AboutDialog& dialog, const ButtonTexts& buttons, const DialogFont& font,
                     HWND owner) {
  DialogBuilder builder(font, ControlText(dialog.Title), 0);
  builder.AddPicture(IDC_PICTURE);
  builder.AddText(IDC_PROMPT, ControlText(dialog.Text));
  builder.AddButtons(ButtonsOf({IDOK}, buttons));
  DialogActions actions;
  actions.OnInit = [owner](HWND window) {
    const auto icon = reinterpret_cast<HICON>(owner ? GetClassLongPtrW(owner, GCLP_HICON) : 0);
    ShowIcon(window, icon ? icon : LoadIconW(nullptr, IDI_APPLICATION));
    return GetDlgItem(window, IDOK);
  };
  actions.OnPressed = [](HWND, int id) { return id == IDOK || id == IDCANCEL; };
  return {builder.Finish(), actions};
}

}  // namespace vaxel
