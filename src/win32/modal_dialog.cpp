#include "win32/modal_dialog.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include "win32/input_state.h"

namespace vaxel {
namespace {

// The dialog comes to lie whole on the screen, also where its owner does not.
void Centre(HWND dialog, HWND owner) {
  RECT frame{}, over{};
  GetWindowRect(dialog, &frame);
  if (owner) GetWindowRect(owner, &over);
  const RECT area = WorkAreaNear(owner ? over : frame);
  if (!owner) over = area;
  const LONG width = frame.right - frame.left, height = frame.bottom - frame.top;
  const LONG left = (over.left + over.right - width) / 2, top = (over.top + over.bottom - height) / 2;
  SetWindowPos(dialog, nullptr, std::max(std::min(left, area.right - width), area.left),
               std::max(std::min(top, area.bottom - height), area.top), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

struct RunningDialog {
  const DialogSpec& Spec;
  const DialogActions& Actions;
  HWND Owner;
  std::exception_ptr Thrown;
  bool IsComplete = false;

  BOOL Init(HWND dialog) {
    FillFields(dialog, Spec);
    Centre(dialog, Owner);
    // Nobody would look for it behind another program.
    if (!Owner) SetForegroundWindow(dialog);
    const HWND focus = Actions.OnInit ? Actions.OnInit(dialog) : nullptr;
    if (!focus) return TRUE;
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(focus), TRUE);
    return FALSE;
  }

  void Command(HWND dialog, WPARAM wParam) {
    const int id = LOWORD(wParam);
    if (HIWORD(wParam) == BN_CLICKED && Actions.OnPressed(dialog, id)) EndDialog(dialog, id);
  }

  INT_PTR Handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      const BOOL result = Init(dialog);
      IsComplete = true;
      return result;
    }
    if (Thrown) return FALSE;
    if (IsComplete && Actions.OnMessage) {
      if (const std::optional<INT_PTR> answer = Actions.OnMessage(dialog, message, wParam, lParam))
        return *answer;
    }
    if (message != WM_COMMAND) return FALSE;
    Command(dialog, wParam);
    return TRUE;
  }
};

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
  auto* const running = reinterpret_cast<RunningDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (!running) return FALSE;
  try {
    return running->Handle(dialog, message, wParam, lParam);
  } catch (...) {
    running->Thrown = std::current_exception();
    EndDialog(dialog, IDCANCEL);
    return TRUE;
  }
}

}  // namespace

DialogOwner::DialogOwner(HWND window) : window_(window), wasDisabled_(window && !IsWindowEnabled(window)) {
  if (wasDisabled_) EnableWindow(window_, TRUE);
}

DialogOwner::~DialogOwner() {
  if (wasDisabled_) EnableWindow(window_, FALSE);
}

int RunDialog(HINSTANCE instance, HWND owner, const DialogSpec& spec, const DialogActions& actions) {
  const std::vector<WORD> words = DialogTemplate(spec);
  // Templates begin at a multiple of four bytes; memory that was allocated does.
  const auto* const dialogTemplate = reinterpret_cast<const DLGTEMPLATE*>(words.data());
  const DialogOwner enabled(owner);
  RunningDialog running{spec, actions, owner, nullptr};
  const INT_PTR id = DialogBoxIndirectParamW(instance, dialogTemplate, enabled.Window(), DialogProcedure,
                                             reinterpret_cast<LPARAM>(&running));
  if (running.Thrown) std::rethrow_exception(running.Thrown);
  return id > 0 ? static_cast<int>(id) : IDCANCEL;
}

std::wstring TextOfControl(HWND dialog, int id) {
  const HWND control = GetDlgItem(dialog, id);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)), L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1)));
  return text;
}

}  // namespace vaxel
