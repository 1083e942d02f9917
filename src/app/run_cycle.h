// Runs on the screen and on the printer, and what moves and measures the drawing.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/graphic_view.h"
#include "app/run_bridge.h"
#include "app/settings.h"
#include "app/view_state.h"
#include "drawing/display_list.h"
#include "interpreter/run.h"

namespace vaxel {

class RunCycle {
 public:
  // All must outlive it.
  RunCycle(AppContext& app, Settings& settings, const EditedScript& script)
      : app_(app), settings_(settings), script_(script) {}

  // Names the printer for what is printed from now on.
  void UsePrinter(std::string name) { printerName_ = std::move(name); }

  void Visualise();               // Mnu_Visualiser
  void Print();                   // Mnu_Imprimer
  void Zoom(bool withCtrl);       // Mnu_Zoom
  void Reference(bool withCtrl);  // Mnu_RefCurseur
  void Positionner(bool withCtrl);

  // Escape is held down, or not any more: a run ends when it asks.
  void RequestAbort(bool isRequested) { session_.AbortRequested = isRequested; }
  bool IsAbortRequested() const { return session_.AbortRequested; }
  bool IsRunning() const { return session_.IsRunning; }
  bool IsWritingComments() const { return session_.IsWritingComments; }
  // Handles the events that are pending, as a run does: what the user does meanwhile begins nothing.
  void HandleEvents();

  // The editor's text has changed and the cursor is in this line now: those that it has left are coloured,
  // its own one when it leaves it or when the script is run.
  void LineChanged(std::size_t line);
  void CursorIn(std::size_t line);
  // The editor has another text, all of it coloured. The drawing is neither enlarged nor moved any more.
  void TextReplaced();

  // What the pointer and the wheel do over the graphic area, in pixels from its upper left corner.
  void PointerMoved(double xPx, double yPx);
  void WheelTurned(double xPx, double yPx, double notches);
  void Dragged(double dxPx, double dyPx);
  // The drawing that is shown, for exports; it is null before the first.
  const DisplayList* Drawing() const { return drawing_.get(); }
  const ViewState& View() const { return state_; }

 private:
  class BusyWindow;

  RunEnd RunFor(const RunTarget& target, DisplayList& list, std::vector<std::string>& answers);
  RunEnd RunOnScreen(std::vector<std::string>& answers);
  RunEnd RunOnScreen();
  std::optional<DisplayList> RunOnPrinter(std::vector<std::string>& answers);
  void TellNotices();
  void PrintDocument(const DisplayList& drawing);
  void TellNotPrinted(const Failure& why);
  void ResetView();
  void ShowMouse();
  void FollowCentre();
  std::optional<ZoomField> AcceptZoom(const std::string& factor, const std::string& zmm);
  bool AcceptReference(const std::string& text);

  AppContext& app_;
  Settings& settings_;
  const EditedScript& script_;
  RunSession session_;
  ViewState state_;
  GraphicView view_;
  std::string printerName_;
  std::unique_ptr<DisplayList> drawing_;
  std::size_t cursorLine_ = 1;
  bool isLineChanged_ = false;  // the cursor's, since it was last coloured
};

// Two numbers as "##0.#" shows them, two blanks between.
std::string PointerText(double x, double y);

// The number of a dialog's field, which may be an expression; what is no number from 0.001 to 1000 gives
// none.
std::optional<double> FieldValue(std::string_view text);

}  // namespace vaxel
