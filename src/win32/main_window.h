// The main window on Windows.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/main_window.h"
#include "win32/aid_panel.h"
#include "win32/editor.h"
#include "win32/graphic_window.h"
#include "win32/menu_bar.h"
#include "win32/offer_list.h"
#include "win32/status_bar.h"
#include "win32/theme.h"
#include "win32/tool_bar_window.h"
#include "winbase/handles.h"

namespace vaxel {

// The main window with its editor, graphic area, status fields and menus. Its messages are decoded here and
// go to the application.
class MainWindowWin32 : public MainWindow, public WritingAidView {
 public:
  // The window is hidden at first. The constructor throws when the system refuses it. decoder is for the
  // drawing's pictures and must outlive the window.
  MainWindowWin32(HINSTANCE instance, PictureDecoder* decoder);
  ~MainWindowWin32() override { Close(); }

  // To be called before anything can happen in the window.
  void Attach(Application& application);
  ScriptEditor& Editor() { return editor_; }
  HWND Window() const { return window_.get(); }
  // Runs the action and returns whether nothing was thrown; what was thrown is told to the user.
  bool Guarded(const std::function<void()>& action);
  // Handles messages until the window has closed; returns the process's exit status.
  int RunMessages();

  void Show() override;
  void SetTitle(std::string_view title) override;
  void SetCaption(MenuId item, std::string_view caption) override;
  void SetChecked(MenuId item, bool isChecked) override { menus_.SetChecked(item, isChecked); }
  void SetItemEnabled(MenuId item, bool isEnabled) override;
  void SetToolText(ToolIcon button, std::string_view text) override { tools_.SetText(button, text); }
  void SetToolBarShown(bool isShown) override;
  void SetToolTip(StatusField field, std::string_view text) override { status_.SetToolTip(field, text); }
  void SetStatus(StatusField field, std::string_view text) override { status_.SetText(field, text); }
  void SetRecentFiles(const std::vector<std::string>& names) override { menus_.SetRecentFiles(names); }
  void SetPointer(PointerShape shape) override;
  void SetWindowEnabled(bool isEnabled) override;
  void ProcessEvents() override;
  void Close() override;
  WindowPlace Place() override;
  void SetPlace(const WindowPlace& place) override;
  void SetPartName(WindowPart part, std::string_view name) override;
  GraphicArea Graphic() override { return graphic_.Area(); }
  ScreenRectangle EditorRectangle() override;
  void MovePointer(ScreenPoint place) override { SetCursorPos(place.X, place.Y); }
  void SetEditorWidth(int width) override;
  void ShowDrawing(const DisplayList& drawing, std::size_t page) override { graphic_.Show(&drawing, page); }
  void ShowDrawingSoFar(const DisplayList& drawing) override { graphic_.ShowSoFar(drawing); }
  void SetView(const GraphicView& view) override { graphic_.SetView(view); }
  void SetSheet(const std::optional<PaperOutline>& sheet) override { graphic_.SetSheet(sheet); }
  void SetRulers(const std::optional<Rulers>& rulers) override { graphic_.SetRulers(rulers); }

  void SetDrawingOld(bool isOld) override { graphic_.SetOld(isOld); }
  void SetHalo(std::vector<OperationOutline> outlines) override { graphic_.SetHalo(std::move(outlines)); }
  void ShowTip(std::string_view text) override { graphic_.ShowTip(text); }
  void ShowMeasuring(const std::optional<MeasuringLine>& line) override { graphic_.ShowMeasuring(line); }
  bool HasInput() override;
  void AwaitPause() override;

  void ShowOffers(const std::vector<Offer>& offers, std::size_t place) override;
  void ChooseOffer(std::size_t index) override { offers_.Choose(index); }
  void HideOffers() override { offers_.Hide(); }
  void SetHelp(const AidHelp& help) override { panel_.SetHelp(help); }
  void SetProblems(const std::vector<std::string>& problems) override { panel_.SetProblems(problems); }
  void MarkLines(const std::vector<std::size_t>& lines) override { editor_.MarkLines(lines); }
  void ChooseProblem(std::size_t index) override { panel_.ChooseProblem(index); }
  void ShowPage(AidPage page) override;
  void SetPageCaptions(const std::string& help, const std::string& problems) override {
    panel_.SetCaptions(help, problems);
  }

  bool IsComplete() const { return application_ && window_; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  // To be called where an exception was caught.
  void Failed();

 private:
  // Posted by the window to itself when it has come to the front.
  static constexpr UINT ActivatedMessage = WM_APP;

  UniqueWindow Create(HINSTANCE instance);
  std::optional<LRESULT> HandleFrame(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> HandleDivider(UINT message, LPARAM lParam);
  std::optional<LRESULT> HandleLook(UINT message, WPARAM wParam);
  void UseTheme(const Theme& theme);
  RECT DividerBox() const;
  void PaintDivider(HDC context) const;
  UINT Dpi() const { return dpi_; }
  int EditorPixels(int clientWidth) const;
  bool IsOverDivider(POINT pixel) const;
  void Layout();
  void ChangeDpi(UINT dpi, const RECT& suggested);
  void Activate(bool isActive);
  void OpenDropped(HDROP drop);
  bool Belongs(HWND window) const { return window == window_.get() || IsChild(window_.get(), window); }
  void Dispatch(MSG& message);
  bool TakesKey(const MSG& message);
  bool TakesAltKey(const MSG& message);
  bool IsForAnotherTime(const MSG& message) const;
  void Number(int id);
  void ShowHint(int id, UINT flags);
  void PressedDuringRun(UINT message);
  bool HasContextMenu(HWND area) const { return area == editor_.Window() || area == graphic_.Window(); }
  void TimerEnds(WPARAM timer);
  bool AsksForContextMenu(const MSG& message);
  void ShowContextMenu(HWND area, POINT place);

  // It stands before the window, whose first messages come while it is made and ask for the application.
  Application* application_ = nullptr;
  UniqueWindow window_;
  UINT dpi_;
  Theme theme_ = SystemTheme();
  UniqueGdi<HBRUSH> background_;
  MenuBar menus_;
  ToolBarWindow tools_;
  EditorWin32 editor_;
  OfferList offers_;
  AidPanel panel_;
  GraphicWindow graphic_;
  StatusBar status_;
  HWND focus_ = nullptr;  // where the keys went when the window was active
  int editorWidth_ = 0;   // 1/96 inch
  int dividerGrip_ = 0;   // pixels from the divider's left edge, while it is dragged
  bool isDividing_ = false;
  bool isBusy_ = false;       // disabled by the application
  bool isStopped_ = false;    // the run, by the tool bar's button
  ULONGLONG busySince_ = 0;   // ticks of the system
  bool isPlacing_ = false;    // the size that is being set is meant as it is
  bool isMaximised_ = false;  // when it is shown
  bool isFailing_ = false;    // the user is being told of a failure
  PointerShape pointer_ = PointerShape::Normal;
};

}  // namespace vaxel
