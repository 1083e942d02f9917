#include "win32/dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "win32/dialog_forms.h"
#include "win32/dialog_layout.h"
#include "win32/file_dialogs.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// A message box grows with its text, beyond the screen too.
bool FitsMessageBox(std::string_view text) {
  constexpr std::ptrdiff_t mostLines = 30;
  constexpr std::size_t mostBytes = 2000;
  return text.size() <= mostBytes && std::count(text.begin(), text.end(), '\n') < mostLines;
}

}  // namespace

DialogsWin32::DialogsWin32(HINSTANCE instance, std::function<HWND()> owner,
                           std::function<ButtonTexts()> buttons)
    : instance_(instance), owner_(std::move(owner)), buttons_(std::move(buttons)) {
  customColours_.fill(RGB(255, 255, 255));
}

// What a hidden window owns has no place on the task bar.
HWND DialogsWin32::Owner() const {
  if (!open_.empty()) return open_.back();
  const HWND window = owner_ ? owner_() : nullptr;
  return IsWindowVisible(window) ? window : nullptr;
}

int DialogsWin32::Run(const DialogForm& form) {
  DialogActions remembered = form.Actions;
  remembered.OnInit = [&](HWND dialog) {
    open_.push_back(dialog);
    return form.Actions.OnInit(dialog);
  };
  struct Forget {
    std::vector<HWND>& Open;
    std::size_t Count;
    ~Forget() { Open.resize(Count); }
  };
  const HWND owner = Owner();
  const Forget forget{open_, open_.size()};
  return RunDialog(instance_, owner, form.Spec, remembered);
}

int DialogsWin32::ShowBox(UINT kind, const std::string& title, const std::string& text) {
  if (!FitsMessageBox(text)) return Run(BoxForm(kind, title, text, Buttons()));
  const DialogOwner owner(Owner());
  const std::wstring shown = ControlText(text), caption = Widen(title);
  const UINT shownKind = owner.Window() ? kind : kind | MB_TASKMODAL | MB_SETFOREGROUND;
  // Wine closes a box with Yes and No at Escape. No would be an answer that nobody gave.
  int answer = IDCANCEL;
  do {
    answer = MessageBoxW(owner.Window(), shown.c_str(), caption.c_str(), shownKind);
  } while (answer == IDCANCEL && (kind & MB_TYPEMASK) == MB_YESNO);
  return answer;
}

void DialogsWin32::ShowMessage(BoxIcon icon, const std::string& title, const std::string& text) {
  ShowBox(MB_OK | (icon == BoxIcon::Critical ? MB_ICONERROR : MB_ICONINFORMATION), title, text);
}

YesNoCancel DialogsWin32::AskYesNoCancel(const std::string& title, const std::string& text) {
  const int answer = ShowBox(MB_YESNOCANCEL | MB_ICONQUESTION, title, text);
  return answer == IDYES ? YesNoCancel::Yes : answer == IDNO ? YesNoCancel::No : YesNoCancel::Cancel;
}

bool DialogsWin32::AskYesNo(const std::string& title, const std::string& text) {
  return ShowBox(MB_YESNO | MB_ICONQUESTION, title, text) == IDYES;
}

bool DialogsWin32::AskOkCancel(const std::string& title, const std::string& text) {
  return ShowBox(MB_OKCANCEL | MB_ICONINFORMATION, title, text) == IDOK;
}

std::optional<std::string> DialogsWin32::AskText(const InputDialog& dialog) {
  std::string answer;
  if (Run(InputForm(dialog, Buttons(), answer)) != IDOK) return std::nullopt;
  return answer;
}

std::vector<std::string> DialogsWin32::ShowOpen(const FileDialog& dialog) {
  const DialogOwner owner(Owner());
  std::vector<std::string> names;
  for (const std::wstring& name : ChooseFiles(owner.Window(), dialog, FilePurpose::Open)) {
    names.push_back(Narrow(name));
  }
  return names;
}

std::string DialogsWin32::ShowSave(const FileDialog& dialog) {
  const DialogOwner owner(Owner());
  const std::vector<std::wstring> names = ChooseFiles(owner.Window(), dialog, FilePurpose::Save);
  return names.empty() ? std::string() : Narrow(names.front());
}

std::optional<std::uint32_t> DialogsWin32::ShowColour() {
  const DialogOwner owner(Owner());
  CHOOSECOLORW request{};
  request.lStructSize = sizeof(request);
  request.hwndOwner = owner.Window();
  request.rgbResult = lastColour_;
  request.lpCustColors = customColours_.data();
  request.Flags = CC_FULLOPEN | CC_RGBINIT;
  if (!ChooseColorW(&request)) return std::nullopt;
  lastColour_ = request.rgbResult;
  return lastColour_;
}

void DialogsWin32::ShowZoom(const ZoomDialog& dialog) {
  Run(ZoomForm(dialog));
}

void DialogsWin32::ShowReference(const ReferenceDialog& dialog) {
  Run(ReferenceForm(dialog));
}

void DialogsWin32::ShowLanguages(const LanguageDialog& dialog) {
  Run(LanguageForm(dialog));
}

void DialogsWin32::ShowSearch(const SearchDialog& dialog) {
  Run(SearchForm(dialog));
}

void DialogsWin32::ShowExport(const ExportDialog& dialog) {
  Run(ExportForm(dialog, Buttons()));
}

void DialogsWin32::ShowAbout(const AboutDialog& dialog) {
  Run(AboutForm(dialog, Buttons(), Owner()));
}

}  // namespace vaxel
