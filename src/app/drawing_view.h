// What the window shows of the drawing: which page, where and how large, and what the pointer points at.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/app_context.h"
#include "app/graphic_view.h"
#include "app/paper_outline.h"
#include "app/rulers.h"
#include "app/settings.h"
#include "app/view_state.h"
#include "drawing/display_list.h"
#include "drawing/draw_surface.h"
#include "scale/drawn_scales.h"

namespace vaxel {

class DrawingView {
 public:
  // All must outlive it.
  DrawingView(AppContext& app, Settings& settings, ViewState& state)
      : app_(app), settings_(settings), state_(state) {}

  // To be called when the settings have been read.
  void ReadOptions();
  // A run on the screen is over: it has drawn on this surface.
  void RunEnded(const DrawSurface& surface);
  // Shows a drawing, which must live until another is shown. The page stays where there is such a page; it is
  // the last one unless the user has turned to another. sheets: those of its first pages, on which no others
  // follow where they are not known.
  void Show(const DisplayList& drawing, std::vector<PaperOutline> sheets);
  // The scales of the drawing that is shown next.
  void SetScales(std::vector<DrawnScale> scales) { scales_ = std::move(scales); }
  // Is called when another drawing, or another page of it, is shown.
  std::function<void()> OnShown;
  void ShowSheets(std::vector<PaperOutline> sheets);
  // The graphic area has another size.
  void AreaChanged();
  // The editor has another text: its drawing is shown as its run has made it.
  void ScriptReplaced();
  // Names what the fields of the status line show, in the language of messages.
  void ShowStatus();
  // The reference point keeps its place in the drawing, which has moved, or is another one.
  void FollowCentre();

  // What the pointer and the wheel do over the graphic area, in pixels from its upper left corner.
  void PointerMoved(Point pixel);
  void WheelTurned(Point pixel, double notches);
  void Dragged(Point byPixels);
  // From here on the way to the pointer is measured, until the end.
  void BeginMeasuring(Point pixel);
  void EndMeasuring();
  // Where the page that is shown lies; none before a drawing is shown.
  std::optional<PagePlace> ShownPlace() const;
  const DisplayList* Drawing() const { return drawing_; }

  void Fit();           // Mnu_Ajuster
  void NextPage();      // Mnu_PageSuivante
  void PreviousPage();  // Mnu_PagePrecedente
  void ToggleRulers();  // Mnu_Regles
  void Reset();         // to the view in which the drawing is as large as its run has made it
  // Whether the sheet is to be shown behind the drawing (Mnu_Feuille).
  bool ShowsSheet() const { return showsSheet_; }
  void SetShowsSheet(bool isShown);

  // The page that is shown, from 0.
  std::size_t ShownPage() const;
  bool HasNextPage() const { return drawing_ && ShownPage() < LastPage(); }
  bool HasPreviousPage() const { return drawing_ && ShownPage() > 0; }

 private:
  std::size_t LastPage() const;
  void TurnTo(std::size_t page);
  void ShowView();
  void ShowRulers();
  void ShowPage();
  void ShowMouse();
  void ShowReading(Point place);
  void ShowMeasuring(Point place);
  double UnitsPerPixel() const;
  Rulers MakeRulers() const;

  AppContext& app_;
  Settings& settings_;
  ViewState& state_;
  GraphicView view_;
  const DisplayList* drawing_ = nullptr;
  std::vector<PaperOutline> sheets_;
  std::optional<std::size_t> chosenPage_;  // none: the last one
  std::optional<Point> pointer_;           // where it was last, in pixels of the area
  std::vector<DrawnScale> scales_;
  // In drawing units from the middle of the page.
  std::optional<Point> measuredFrom_;
  bool showsRulers_ = false, showsSheet_ = false;
};

// Two numbers as "##0.#" shows them, two blanks between.
std::string PointerText(double x, double y);

// So many per cent in figures: whole ones, or below 10 with a decimal.
std::string PercentText(double factor);

}  // namespace vaxel
