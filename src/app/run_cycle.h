// Runs on the screen and on the printer, and what moves and measures the drawing.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "app/graphic_view.h"
#include "drawing/display_list.h"
#include "interpreter/run.h"

namespace vaxel {

class RunCycle {
 public:
  explicit RunCycle(AppContext& app);

  void Visualise();               // Mnu_Visualiser
  void Print();                   // Mnu_Imprimer
  void Zoom(bool withCtrl);       // Mnu_Zoom
  void Reference(bool withCtrl);  // Mnu_RefCurseur
  void Positionner(bool withCtrl);

  // The editor's text has changed and the cursor is in this line now: those that it has left are coloured,
  // its own one when it leaves it or when the script is run.
  void LineChanged(std::size_t line);
  void CursorIn(std::size_t line);
  // Another text, all of it coloured. Its drawing is shown as it is.
  void TextReplaced();

  // The pointer over the graphic area, the wheel and dragging, in pixels from its upper left corner.
  void PointerMoved(double xPx, double yPx);
  void WheelTurned(double xPx, double yPx, double notches);
  void Dragged(double dxPx, double dyPx);
  // The drawing that is shown, for exports; null before the first.
  const DisplayList* Drawing() const { return drawing_.get(); }

 private:
  class BusyWindow;

  RunEnd RunFor(const RunTarget& target, DisplayList& list, std::vector<std::string>& answers);
  RunEnd RunOnScreen(std::vector<std::string>& answers);
  RunEnd RunOnScreen();
  std::optional<DisplayList> RunOnPrinter(std::vector<std::string>& answers);
  void PrintDocument(const DisplayList& drawing);
  void ResetView();
  void ShowMouse();
  void FollowCentre();
  bool AcceptReference(const std::string& text);

  AppContext& app_;
  GraphicView view_;
  std::unique_ptr<DisplayList> drawing_;
  std::set<std::string> notices_;  // told in this session
  std::size_t cursorLine_ = 1;
  bool isLineChanged_ = false;  // the cursor's, since it was last coloured
};

// Two numbers as "##0.#" shows them, two blanks between.
std::string PointerText(double x, double y);

// The number of a dialog's field, which may be an expression; none for what is no number from 0.001 to 1000.
std::optional<double> FieldValue(std::string_view text);

}  // namespace vaxel
