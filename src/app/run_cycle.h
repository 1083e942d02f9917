// Runs on the screen and on the printer, and what moves and measures the drawing.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"
#include "app/drawing_view.h"
#include "app/edited_script.h"
#include "app/line_map.h"
#include "app/run_bridge.h"
#include "app/run_outcome.h"
#include "app/settings.h"
#include "app/view_state.h"
#include "drawing/display_list.h"
#include "interpreter/run.h"
#include "interpreter/variables.h"

namespace vaxel {

// What a run for files has drawn.
struct FileRun {
  DisplayList Drawing;
  std::set<std::string> FilesRead;  // by the script, with their folders
};

class RunCycle {
 public:
  // All must outlive it.
  RunCycle(AppContext& app, Settings& settings, const EditedScript& script)
      : app_(app), settings_(settings), script_(script) {}

  // The printer for what is printed from now on.
  void UsePrinter(PrinterChoice printer);
  const PrinterChoice& Printer() const { return printer_; }
  const std::string& PrinterName() const { return printer_.Name; }
  // What a run is told of it. It fails when there is no such printer, and when what its driver says of its
  // paper makes no sense.
  Result<RunTarget> PrinterTarget() const;

  void Visualise();               // Mnu_Visualiser
  void Zoom(bool withCtrl);       // Mnu_Zoom
  void Reference(bool withCtrl);  // Mnu_RefCurseur
  void Positionner(bool withCtrl);
  // Runs the script while it is written, without a box, a question or a comment. What fails leaves the
  // drawing of before; so does a key, and a run that takes longer than patience.
  enum class LiveEnd : std::uint8_t { Drawn, Failed, Interrupted, TooLong };
  LiveEnd DrawLive(std::chrono::milliseconds patience);
  // Writes what the last run onto the screen came to into the status line.
  void ShowMessage() const;
  // How many runs onto the screen were asked for, and how many times there were runs at all.
  std::size_t ScreenRuns() const { return screenRuns_; }
  std::size_t TimesBusy() const { return timesBusy_; }
  // What the last runs that belong together have found wrong.
  const std::vector<Problem>& Problems() const { return session_.Problems; }
  // Whether there are notices among it that were not there when this was asked last: a view of the same
  // script finds the same again and again.
  bool HasNews();
  // What a variable of the script was worth at the end of the last run onto the screen.
  std::optional<std::string> ValueOf(std::string_view name) const;
  void ShowTrueSize();  // Mnu_TailleReelle
  void ToggleSheet();   // Mnu_Feuille

  // Escape is held down, or not any more: a run ends when it asks.
  void RequestAbort(bool isRequested) { session_.AbortRequested = isRequested; }
  bool IsAbortRequested() const { return session_.AbortRequested; }
  bool IsRunning() const { return session_.IsRunning; }
  bool IsWritingComments() const { return session_.IsWritingComments; }
  // Does something as a part of a run: the window takes nothing but Escape meanwhile.
  void WhileBusy(const std::function<void()>& work);
  // Runs the script for files; to be called while busy. The view, the window's drawing and the text stay as
  // they are. There is none when the run did not reach its end, which an empty script does not either; else
  // the user was told why.
  std::optional<FileRun> RunForFile(RunTarget target);
  // Runs the script for the printer, at a zoom above 0; to be called while busy. There is none when the run
  // did not reach its end, or the printer is not to be had; the user was told why, unless he has ended it.
  std::optional<DisplayList> RunOnPrinter(const RunTarget& printer, double zoom,
                                          std::vector<std::string>& answers);
  // Runs it for the screen again; what the script asks for is taken from the answers as far as they go.
  void RunOnScreenAgain(std::vector<std::string> answers) { RunOnScreen(answers); }
  // Handles the events that are pending, as a run does: what the user does meanwhile begins nothing.
  void HandleEvents();

  // The editor's text has changed and the cursor is in this line now: those that it has left are coloured,
  // its own one when it leaves it or when the script is run.
  void LineChanged(std::size_t line);
  void CursorIn(std::size_t line);
  // The editor has another text, all of it coloured. The drawing is neither enlarged nor moved any more.
  void TextReplaced();

  // What the pointer and the wheel do over the graphic area, in pixels from its upper left corner.
  void PointerMoved(double xPx, double yPx) { shown_.PointerMoved({xPx, yPx}); }
  void WheelTurned(double xPx, double yPx, double notches) { shown_.WheelTurned({xPx, yPx}, notches); }
  void Dragged(double dxPx, double dyPx) { shown_.Dragged({dxPx, dyPx}); }
  // The drawing that is shown; it is null before the first.
  const DisplayList* Drawing() const { return drawing_.get(); }
  // The text that it was made of.
  const DrawnText& TextOfDrawing() const { return drawnText_; }
  // The page of it that is shown, from 0.
  std::size_t ShownPage() const { return shown_.ShownPage(); }
  DrawingView& Shown() { return shown_; }
  const DrawingView& Shown() const { return shown_; }
  const ViewState& View() const { return state_; }

 private:
  class BusyWindow;

  RunEnd RunFor(const RunTarget& target, DisplayList& list, std::vector<std::string>& answers);
  RunEnd RunOnScreen(std::vector<std::string>& answers);
  RunEnd RunOnScreen();
  void NoteBeyondSheet(const DisplayList& drawing);
  RunTarget ScreenTarget() const;
  void ShowDrawn(std::unique_ptr<DisplayList>& drawing, std::string_view text,
                 std::vector<PaperOutline> sheets);
  std::vector<PaperOutline> FindSheets(const DisplayList& drawing);
  std::optional<ZoomField> AcceptZoom(const std::string& factor, const std::string& zmm);
  bool AcceptReference(const std::string& text);

  AppContext& app_;
  Settings& settings_;
  const EditedScript& script_;
  RunSession session_;
  ViewState state_;
  DrawingView shown_{app_, settings_, state_};
  PrinterChoice printer_;
  std::unique_ptr<DisplayList> drawing_;
  DrawnText drawnText_;
  RunOutcome lastOnScreen_;
  std::vector<std::string> lastAnswers_;
  VariableTable lastVariables_;
  std::set<std::string> told_;  // the notices
  std::size_t screenRuns_ = 0, timesBusy_ = 0;
  std::size_t cursorLine_ = 1;
  bool isLineChanged_ = false;  // the cursor's, since it was last coloured
};

// The number of a dialog's field, which may be an expression; what is no number from 0.001 to 1000 gives
// none.
std::optional<double> FieldValue(std::string_view text);

}  // namespace vaxel
