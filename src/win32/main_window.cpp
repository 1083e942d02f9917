#include "win32/main_window.h"

#include <ole2.h>
#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "app/raised_flag.h"
#include "win32/control_ids.h"
#include "win32/input_state.h"
#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr wchar_t MainClass[] = L"Vaxel";
constexpr UINT_PTR TickTimer = 1;
constexpr UINT TickMilliseconds = 2000;
// A user who has not typed for so long waits for what comes of it.
constexpr UINT_PTR TypingPauseTimer = 2;
constexpr UINT PauseMilliseconds = 250;
// Units of 1/96 inch.
constexpr int DividerWidth = 6, LeastGraphicWidth = 80;
constexpr int LeastWidth = 420, LeastHeight = 280;
constexpr int UsualWidth = 1180, UsualHeight = 780;

// The box, moved, and made smaller where it must be, to lie within the area.
RECT MovedInto(const RECT& area, const RECT& box) {
  const LONG width = std::min(box.right - box.left, area.right - area.left);
  const LONG height = std::min(box.bottom - box.top, area.bottom - area.top);
  const LONG left = std::clamp(box.left, area.left, area.right - width);
  const LONG top = std::clamp(box.top, area.top, area.bottom - height);
  return {left, top, left + width, top + height};
}

void SetFrame(HWND window, const RECT& frame) {
  SetWindowPos(window, nullptr, frame.left, frame.top, frame.right - frame.left, frame.bottom - frame.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

UniqueWindow MainWindowWin32::Create(HINSTANCE instance) {
  const HICON icon = LoadIconW(instance, MAKEINTRESOURCEW(IconId));
  RegisterWindowClass<MainWindowWin32>(instance, MainClass, icon,
                                       reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1}));
  UniqueWindow window(CreateWindowExW(WS_EX_ACCEPTFILES, MainClass, L"Vaxel",
                                      WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, this));
  if (!window) throw std::runtime_error("the window could not be made");
  return window;
}

MainWindowWin32::MainWindowWin32(HINSTANCE instance, PictureDecoder* decoder)
    : window_(Create(instance)),
      dpi_(GetDpiForWindow(window_.get())),
      tools_(instance, window_.get()),
      editor_(instance, window_.get(), [this] { Failed(); }),
      offers_(instance, window_.get(), [this] { Failed(); }),
      panel_(instance, window_.get(), [this] { Failed(); }),
      graphic_(instance, window_.get(), decoder, [this] { Failed(); }),
      status_(instance, window_.get()) {
  SetMenu(window_.get(), menus_.Handle());
  UseTheme(theme_);
  RECT frame{};
  GetWindowRect(window_.get(), &frame);
  frame.right = frame.left + ToPixels(UsualWidth, Dpi());
  frame.bottom = frame.top + ToPixels(UsualHeight, Dpi());
  SetFrame(window_.get(), MovedInto(WorkAreaNear(frame), frame));
}

void MainWindowWin32::Attach(Application& application) {
  application_ = &application;
  editor_.Attach(application);
  graphic_.Attach(application);
  focus_ = editor_.Window();
  offers_.OnTaken = [this](std::size_t index) { application_->Aid().TakeOffer(index); };
  panel_.OnProblem = [this](std::size_t index) { application_->ProblemClicked(index); };
  panel_.OnPage = [this](AidPage page) { application_->Aid().ShowPage(page); };
  Layout();
  SetTimer(window_.get(), TickTimer, TickMilliseconds, nullptr);
}

bool MainWindowWin32::Guarded(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (...) {
    Failed();
    return false;
  }
}

void MainWindowWin32::Failed() {
  // What fails at every painting or at every tick of the timer would tell of itself without end.
  if (isFailing_) return;
  const RaisedFlag telling(isFailing_);
  try {
    // The drawing of a run that was broken off is gone.
    graphic_.Show(application_->Runs().Drawing(), application_->Runs().ShownPage());
    application_->TellException();
  } catch (...) {
    // There is not even room to tell it.
    MessageBeep(MB_ICONERROR);
  }
}

void MainWindowWin32::Show() {
  ShowWindow(window_.get(), isMaximised_ ? SW_SHOWMAXIMIZED : SW_SHOWDEFAULT);
  UpdateWindow(window_.get());
}

void MainWindowWin32::Close() {
  const HWND window = window_.release();
  if (!window) return;
  // What was copied from the text is handed out by the control's library, which goes before the clipboard
  // does.
  OleFlushClipboard();
  SetMenu(window, nullptr);
  DestroyWindow(window);
  PostQuitMessage(0);
}

void MainWindowWin32::SetTitle(std::string_view title) {
  SetWindowTextW(window_.get(), Widen(title).c_str());
}

void MainWindowWin32::SetCaption(MenuId item, std::string_view caption) {
  menus_.SetCaption(item, caption);
  if (MenuRowOf(item).Place == MenuId::Bar) DrawMenuBar(window_.get());
}

void MainWindowWin32::SetItemEnabled(MenuId item, bool isEnabled) {
  menus_.SetItemEnabled(item, isEnabled);
  tools_.SetItemEnabled(item, isEnabled);
  if (MenuRowOf(item).Place == MenuId::Bar) DrawMenuBar(window_.get());
}

void MainWindowWin32::SetToolBarShown(bool isShown) {
  tools_.Show(isShown);
  Layout();
}

WindowPlace MainWindowWin32::Place() {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  GetWindowPlacement(window_.get(), &placement);
  RECT frame = placement.rcNormalPosition;
  // It counts from the corner of the work area.
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromRect(&frame, MONITOR_DEFAULTTONEAREST), &monitor);
  OffsetRect(&frame, monitor.rcWork.left - monitor.rcMonitor.left,
             monitor.rcWork.top - monitor.rcMonitor.top);
  const bool isMaximised =
      placement.showCmd == SW_SHOWMAXIMIZED ||
      (placement.showCmd == SW_SHOWMINIMIZED && (placement.flags & WPF_RESTORETOMAXIMIZED) != 0);
  return {{static_cast<int>(frame.left), static_cast<int>(frame.top), static_cast<int>(frame.right),
           static_cast<int>(frame.bottom)},
          isMaximised};
}

void MainWindowWin32::SetPlace(const WindowPlace& place) {
  const RECT frame = {place.Frame.Left, place.Frame.Top, place.Frame.Right, place.Frame.Bottom};
  isMaximised_ = place.IsMaximised;
  isPlacing_ = true;
  SetFrame(window_.get(), MovedInto(WorkAreaNear(frame), frame));
  isPlacing_ = false;
}

ScreenRectangle MainWindowWin32::EditorRectangle() {
  RECT box{};
  GetWindowRect(editorWidth_ > 0 ? editor_.Window() : graphic_.Window(), &box);
  return {static_cast<int>(box.left), static_cast<int>(box.top), static_cast<int>(box.right),
          static_cast<int>(box.bottom)};
}

void MainWindowWin32::SetEditorWidth(int width) {
  editorWidth_ = width;
  // The keys must not go to what is hidden.
  if (width <= 0 && GetFocus() == editor_.Window()) SetFocus(graphic_.Window());
  editor_.SetVisible(width > 0);
  if (width <= 0 && panel_.Height() > 0) application_->Aid().ShowPage(AidPage::None);
  Layout();
}

int MainWindowWin32::EditorPixels(int clientWidth) const {
  if (editorWidth_ <= 0) return 0;
  const int widest = clientWidth - ToPixels(DividerWidth + LeastGraphicWidth, Dpi());
  return std::max(0, std::min(ToPixels(editorWidth_, Dpi()), widest));
}

// It is empty when there is nothing to divide.
RECT MainWindowWin32::DividerBox() const {
  if (editorWidth_ <= 0) return {};
  RECT client{};
  GetClientRect(window_.get(), &client);
  const int left = EditorPixels(client.right);
  return {left, tools_.Height(), left + ToPixels(DividerWidth, Dpi()), client.bottom - status_.Height()};
}

bool MainWindowWin32::IsOverDivider(POINT pixel) const {
  const RECT box = DividerBox();
  return PtInRect(&box, pixel) != FALSE;
}

void MainWindowWin32::Layout() {
  RECT client{};
  GetClientRect(window_.get(), &client);
  const int top = tools_.Height();
  const int height = std::max(0L, client.bottom - status_.Height() - top);
  const int editor = EditorPixels(client.right);
  const int graphic = editor > 0 ? editor + ToPixels(DividerWidth, Dpi()) : 0;
  const int panel = std::min(panel_.Height(), height / 2);
  // All move at once, so that none is seen over another.
  HDWP moves = editor_.Place(BeginDeferWindowPos(4), {0, top, editor, top + height - panel});
  if (moves) {
    moves = DeferWindowPos(moves, panel_.Window(), nullptr, 0, top + height - panel, editor, panel,
                           SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (moves) {
    moves = DeferWindowPos(moves, graphic_.Window(), nullptr, graphic, top,
                           std::max(0L, client.right - graphic), height, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (moves) EndDeferWindowPos(moves);
  tools_.Place(client.right);
  status_.Place(top + height, client.right);
  const RECT divider = DividerBox();
  InvalidateRect(window_.get(), &divider, TRUE);
}

void MainWindowWin32::ChangeDpi(UINT dpi, const RECT& suggested) {
  dpi_ = dpi;
  tools_.SetDpi(Dpi());
  status_.SetDpi(Dpi());
  editor_.SetDpi(Dpi());
  panel_.SetDpi(Dpi());
  if (!isPlacing_) SetFrame(window_.get(), suggested);
  Layout();
  application_->ScreenChanged();
}

bool MainWindowWin32::HasInput() {
  return HIWORD(GetQueueStatus(QS_KEY | QS_MOUSEBUTTON)) != 0;
}

void MainWindowWin32::AwaitPause() {
  SetTimer(window_.get(), TypingPauseTimer, PauseMilliseconds, nullptr);
}

void MainWindowWin32::TimerEnds(WPARAM timer) {
  if (timer == TickTimer) return application_->Tick();
  // A dialog, or a run, is no pause.
  if (timer != TypingPauseTimer || !IsWindowEnabled(window_.get())) return;
  KillTimer(window_.get(), TypingPauseTimer);
  application_->TypingPaused();
}

void MainWindowWin32::ShowOffers(const std::vector<Offer>& offers, std::size_t place) {
  offers_.Show(offers, editor_.LineBox(place));
}

void MainWindowWin32::ShowPage(AidPage page) {
  // The keys must not go to what is hidden.
  if (page == AidPage::None && IsChild(panel_.Window(), GetFocus())) SetFocus(editor_.Window());
  panel_.ShowPage(page);
  Layout();
}

// Of an item whose caption says little.
void MainWindowWin32::ShowHint(int id, UINT flags) {
  const int item = id - FirstCommandId;
  const bool isItem =
      (flags & (MF_POPUP | MF_SEPARATOR)) == 0 && item >= 0 && item < static_cast<int>(MenuItems);
  if (!isItem) return;
  const std::string hint = application_->Hint(static_cast<MenuId>(item));
  if (!hint.empty()) status_.SetText(StatusField::Message, hint);
}

void MainWindowWin32::OpenDropped(HDROP drop) {
  const UINT length = DragQueryFileW(drop, 0, nullptr, 0);
  std::wstring name(length, L'\0');
  DragQueryFileW(drop, 0, name.data(), length + 1);
  DragFinish(drop);
  if (!name.empty() && IsWindowEnabled(window_.get())) application_->OpenDropped(Narrow(name));
}

void MainWindowWin32::Number(int id) {
  // A dialog is open, or a run is under way.
  if (!IsWindowEnabled(window_.get())) return;
  constexpr auto items = static_cast<int>(MenuItems);
  if (id >= FirstRecentId) {
    application_->OpenRecent(static_cast<std::size_t>(id - FirstRecentId));
  } else if (id >= FirstCommandId && id < FirstCommandId + items) {
    application_->Command(static_cast<MenuId>(id - FirstCommandId));
  }
}

std::optional<LRESULT> MainWindowWin32::HandleDivider(UINT message, LPARAM lParam) {
  const POINT pixel = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
    case WM_SETCURSOR: {
      POINT pointer{};
      GetCursorPos(&pointer);
      ScreenToClient(window_.get(), &pointer);
      if (LOWORD(lParam) != HTCLIENT || isBusy_ || !IsOverDivider(pointer)) return std::nullopt;
      SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
      return TRUE;
    }
    case WM_LBUTTONDOWN: {
      RECT client{};
      GetClientRect(window_.get(), &client);
      isDividing_ = IsOverDivider(pixel);
      dividerGrip_ = pixel.x - EditorPixels(client.right);
      if (isDividing_) SetCapture(window_.get());
      return 0;
    }
    case WM_MOUSEMOVE:
      if (isDividing_) application_->EditorWidthChanged(FromPixels(pixel.x - dividerGrip_, Dpi()));
      return 0;
    case WM_LBUTTONUP:
      if (isDividing_) ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      isDividing_ = false;
      return 0;
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> MainWindowWin32::HandleFrame(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) Layout();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {ToPixels(LeastWidth, Dpi()),
                                                               ToPixels(LeastHeight, Dpi())};
      return 0;
    case WM_ENABLE:
      // The end of a drag would be lost on a disabled window: without a button the drawing would go on
      // moving.
      if (!wParam) ReleaseCapture();
      return 0;
    case WM_DPICHANGED:
      ChangeDpi(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETCURSOR:
      if (isBusy_) {
        PressedDuringRun(HIWORD(lParam));
        return TRUE;
      }
      return HandleDivider(message, lParam);
    default:
      if (const std::optional<LRESULT> result = HandleLook(message, wParam)) return result;
      return HandleDivider(message, lParam);
  }
}

std::optional<LRESULT> MainWindowWin32::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (lParam == 0 || reinterpret_cast<HWND>(lParam) == tools_.Window()) {
        Number(LOWORD(wParam));
      } else if (LOWORD(wParam) == EditorId && HIWORD(wParam) == EN_CHANGE) {
        editor_.TextChanged();
      }
      return 0;
    case WM_CONTEXTMENU: {
      const HWND area = reinterpret_cast<HWND>(wParam);
      if (!HasContextMenu(area)) return std::nullopt;
      ShowContextMenu(area, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return 0;
    }
    case WM_MENUSELECT:
      ShowHint(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_NOTIFY:
      if (wParam == ToolBarId) return tools_.Notified(*reinterpret_cast<const NMHDR*>(lParam));
      if (wParam == EditorId && reinterpret_cast<const NMHDR*>(lParam)->code == EN_SELCHANGE) {
        editor_.SelectionChanged();
        return 0;
      }
      return std::nullopt;
    case WM_TIMER:
      TimerEnds(wParam);
      return 0;
    case WM_DROPFILES:
      OpenDropped(reinterpret_cast<HDROP>(wParam));
      return 0;
    case WM_ACTIVATE:
      Activate(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case ActivatedMessage:
      if (IsWindowEnabled(window_.get())) application_->Activated();
      return 0;
    case WM_CLOSE:
      if (IsWindowEnabled(window_.get()) && application_->Quit()) Close();
      return 0;
    case WM_QUERYENDSESSION:
      application_->SessionEnds();
      return TRUE;
    case WM_ENDSESSION:
      if (wParam) application_->SessionHasEnded();
      return 0;
    default:
      return HandleFrame(message, wParam, lParam);
  }
}

}  // namespace vaxel
