#include "win32/dialogs.h"

#include <commdlg.h>

#include <utility>

#include "win32/box_form.h"
#include "win32/dialog_forms.h"
#include "win32/dialog_layout.h"
#include "win32/file_dialogs.h"
#include "win32/print_forms.h"
#include "win32/printer_dialog.h"
#include "win32/template_form.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

int IdOf(SafeAnswer answer) {
  return answer == SafeAnswer::Yes ? IDYES : IDNO;
}

}  // namespace

DialogsWin32::DialogsWin32(HINSTANCE instance, std::function<HWND()> owner,
                           std::function<ButtonTexts()> buttons, PictureDecoder* decoder)
    : instance_(instance), owner_(std::move(owner)), buttons_(std::move(buttons)), decoder_(decoder) {
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

int DialogsWin32::ShowBox(const Box& box) {
  const int answer = Run(BoxForm(box, Buttons(), DialogFont(Owner())));
  return answer == IDCANCEL ? box.Escape : answer;
}

void DialogsWin32::ShowMessage(BoxIcon icon, const std::string& title, const std::string& text) {
  const UINT shown = icon == BoxIcon::Critical ? MB_ICONERROR : MB_ICONINFORMATION;
  ShowBox({shown, title, text, {IDOK}, IDOK, IDOK});
}

YesNoCancel DialogsWin32::AskYesNoCancel(const std::string& title, const std::string& text, SafeAnswer safe) {
  const int answer = ShowBox({MB_ICONQUESTION, title, text, {IDYES, IDNO, IDCANCEL}, IdOf(safe), IDCANCEL});
  return answer == IDYES ? YesNoCancel::Yes : answer == IDNO ? YesNoCancel::No : YesNoCancel::Cancel;
}

bool DialogsWin32::AskYesNo(const std::string& title, const std::string& text, SafeAnswer safe) {
  return ShowBox({MB_ICONQUESTION, title, text, {IDYES, IDNO}, IdOf(safe), IdOf(safe)}) == IDYES;
}

bool DialogsWin32::AskOkCancel(const std::string& title, const std::string& text) {
  return ShowBox({MB_ICONINFORMATION, title, text, {IDOK, IDCANCEL}, IDOK, IDCANCEL}) == IDOK;
}

std::optional<std::string> DialogsWin32::AskText(const InputDialog& dialog) {
  std::string answer;
  if (Run(InputForm(dialog, Buttons(), DialogFont(Owner()), answer)) != IDOK) return std::nullopt;
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
  Run(ZoomForm(dialog, DialogFont(Owner())));
}

void DialogsWin32::ShowReference(const ReferenceDialog& dialog) {
  Run(ReferenceForm(dialog, DialogFont(Owner())));
}

void DialogsWin32::ShowLanguages(const LanguageDialog& dialog) {
  Run(LanguageForm(dialog, DialogFont(Owner())));
}

void DialogsWin32::ShowSearch(const SearchDialog& dialog) {
  Run(SearchForm(dialog, DialogFont(Owner())));
}

void DialogsWin32::ShowExport(const ExportDialog& dialog) {
  Run(ExportForm(dialog, Buttons(), DialogFont(Owner())));
}

std::optional<PrinterEntry> DialogsWin32::ShowPrinter(const PrinterChoice& present) {
  const DialogOwner owner(Owner());
  return AskPrinter(owner.Window(), present);
}

void DialogsWin32::ShowFonts(const FontsDialog& dialog) {
  Run(FontsForm(dialog, DialogFont(Owner())));
}

void DialogsWin32::ShowPreview(const PreviewDialog& dialog) {
  ShownPreview shown{dialog, decoder_, [] {}};
  Run(PreviewForm(shown, DialogFont(Owner())));
}

void DialogsWin32::ShowTemplates(const TemplatesDialog& dialog) {
  ShownTemplates shown{dialog, decoder_, [] {}};
  Run(TemplatesForm(shown, Buttons(), DialogFont(Owner())));
}

void DialogsWin32::ShowAbout(const AboutDialog& dialog) {
  Run(AboutForm(dialog, Buttons(), DialogFont(Owner()), Owner()));
}

}  // namespace vaxel
