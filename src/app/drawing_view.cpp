#include "app/drawing_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/measuring.h"
#include "base/number_text.h"
#include "drawing/page_bounds.h"

namespace vaxel {
namespace {

constexpr std::string_view SheetName = "Feuille", RulersName = "Regles";
// Units of 1/96 inch.
constexpr double FitMargin = 12, LeastMarkDistance = 3;

double PixelsPerUnit(const GraphicArea& area) {
  return MillimetresPerInch / 96 / area.PixelMm;
}

std::string OneDecimal(double value) {
  constexpr double most = 1e15;
  if (!(std::abs(value) < most)) return "0";
  const double tenths = std::round(std::abs(value) * 10);
  if (tenths == 0) return "0";
  std::string text = value < 0 ? "-" : "";
  text += FixedText(std::floor(tenths / 10), 0);
  const int decimal = static_cast<int>(std::fmod(tenths, 10));
  if (decimal != 0) text += "." + std::to_string(decimal);
  return text;
}

bool IsOn(const Settings& settings, std::string_view name) {
  return settings.Values().OwnKey(name) == "1";
}

}  // namespace

std::string PointerText(double x, double y) {
  return OneDecimal(x) + "  " + OneDecimal(y);
}

std::string PercentText(double factor) {
  const double percent = factor * 100;
  return percent < 9.95 ? OneDecimal(percent) : FixedText(std::round(percent), 0);
}

void DrawingView::ReadOptions() {
  showsSheet_ = IsOn(settings_, SheetName);
  showsRulers_ = IsOn(settings_, RulersName);
  app_.Window.SetChecked(MenuId::Mnu_Feuille, showsSheet_);
  app_.Window.SetChecked(MenuId::Mnu_Regles, showsRulers_);
  ShowRulers();
}

void DrawingView::RunEnded(const DrawSurface& surface) {
  state_.GraphicCentre = surface.Centre();
  state_.GraphicScale = surface.Z;
  state_.GraphicWidthMm = surface.Target().WidthMm;
  state_.GraphicHeightMm = surface.Target().HeightMm;
  // The window may have got another size meanwhile.
  AreaChanged();
}

void DrawingView::AreaChanged() {
  const GraphicArea area = app_.Window.Graphic();
  const Point size = Point{area.WidthPx, area.HeightPx} * area.PixelMm;
  const Point growth = size - Point{state_.GraphicWidthMm, state_.GraphicHeightMm};
  state_.GraphicCentre = state_.GraphicCentre + growth * (0.5 / state_.GraphicScale);
  state_.GraphicWidthMm = size.X;
  state_.GraphicHeightMm = size.Y;
  FollowCentre();
  ShowMouse();
}

void DrawingView::FollowCentre() {
  state_.RefX = static_cast<float>(state_.GraphicCentre.X) + state_.RefInX;
  state_.RefY = static_cast<float>(state_.GraphicCentre.Y) + state_.RefInY;
  ShowRulers();
}

std::size_t DrawingView::LastPage() const {
  return drawing_ && !drawing_->Pages().empty() ? drawing_->Pages().size() - 1 : 0;
}

std::size_t DrawingView::ShownPage() const {
  return std::min(chosenPage_.value_or(LastPage()), LastPage());
}

void DrawingView::Show(const DisplayList& drawing, std::vector<PaperOutline> sheets) {
  drawing_ = &drawing;
  sheets_ = std::move(sheets);
  ShowPage();
  ShowStatus();
}

void DrawingView::ShowPage() {
  const std::size_t page = ShownPage();
  // The sheet comes first, as the page is drawn at once.
  app_.Window.SetSheet(page < sheets_.size() ? std::optional(sheets_[page]) : std::nullopt);
  app_.Window.ShowDrawing(*drawing_, page);
  if (OnShown) OnShown();
}

void DrawingView::ShowSheets(std::vector<PaperOutline> sheets) {
  sheets_ = std::move(sheets);
  if (drawing_) ShowPage();
}

void DrawingView::TurnTo(std::size_t page) {
  if (page == ShownPage() || page > LastPage()) return;
  chosenPage_.reset();
  // A longer drawing shows its own end to who was at the end of this one.
  if (page < LastPage()) chosenPage_ = page;
  ShowPage();
  ShowStatus();
}

void DrawingView::NextPage() {
  TurnTo(ShownPage() + 1);
}

void DrawingView::PreviousPage() {
  if (ShownPage() > 0) TurnTo(ShownPage() - 1);
}

void DrawingView::ScriptReplaced() {
  chosenPage_.reset();
  if (!view_.IsDefault()) Reset();
}

void DrawingView::Reset() {
  view_ = {};
  ShowView();
}

void DrawingView::ShowView() {
  app_.Window.SetView(view_);
  ShowRulers();
  ShowStatus();
  ShowMouse();
}

void DrawingView::ShowStatus() {
  const std::string percent = PercentText(state_.ScreenZoom * view_.Scale);
  app_.Window.SetStatus(StatusField::Zoom, app_.Message(TextId::ZoomStatus, percent));
  const std::size_t last = LastPage(), page = ShownPage();
  app_.Window.SetStatus(
      StatusField::Page,
      last == 0 ? std::string()
                : app_.Message(TextId::PageStatus, std::to_string(page + 1), std::to_string(last + 1)));
  app_.Window.SetItemEnabled(MenuId::Mnu_PageSuivante, page < last);
  app_.Window.SetItemEnabled(MenuId::Mnu_PagePrecedente, page > 0);
}

void DrawingView::Fit() {
  const std::optional<Box> bounds =
      drawing_ && !drawing_->Pages().empty() ? BoundsOf(*drawing_, ShownPage()) : std::nullopt;
  if (!bounds) return;
  const GraphicArea area = app_.Window.Graphic();
  const double unit = PixelsPerUnit(area);
  const double ruler = showsRulers_ ? RulerThickness * unit : 0;
  const auto scaleFor = [&](double roomPx, double lengthMm) {
    constexpr double shortest = 1e-6;
    return std::max(1.0, roomPx - ruler - 2 * FitMargin * unit) * area.PixelMm / std::max(shortest, lengthMm);
  };
  view_.Scale =
      std::clamp(std::min(scaleFor(area.WidthPx, bounds->Width()), scaleFor(area.HeightPx, bounds->Height())),
                 GraphicView::MinScale, GraphicView::MaxScale);
  const Page& page = drawing_->Pages()[ShownPage()];
  const Point middle =
      Point{bounds->Left + bounds->Right - page.Width, bounds->Top + bounds->Bottom - page.Height} *
      (0.5 / area.PixelMm);
  // The rulers take their room from two sides.
  view_.Offset = Point{ruler, ruler} * 0.5 - middle * view_.Scale;
  ShowView();
}

void DrawingView::SetShowsSheet(bool isShown) {
  showsSheet_ = isShown;
  app_.Window.SetChecked(MenuId::Mnu_Feuille, isShown);
  settings_.Keep({OwnLine(SheetName, isShown ? "1" : "0")});
}

void DrawingView::ToggleRulers() {
  showsRulers_ = !showsRulers_;
  app_.Window.SetChecked(MenuId::Mnu_Regles, showsRulers_);
  settings_.Keep({OwnLine(RulersName, showsRulers_ ? "1" : "0")});
  ShowRulers();
}

void DrawingView::ShowRulers() {
  app_.Window.SetRulers(showsRulers_ ? std::optional(MakeRulers()) : std::nullopt);
}

// They count as the place of the pointer does.
Rulers DrawingView::MakeRulers() const {
  const GraphicArea area = app_.Window.Graphic();
  const Point corner = view_.ToDrawing(Point{} - area.MiddlePx()) * area.PixelMm;
  const double perPixel = UnitsPerPixel();
  const double distance = LeastMarkDistance * PixelsPerUnit(area);
  const double left = (state_.GraphicWidthMm / 2 + corner.X) / state_.GraphicScale - state_.RefX;
  const double top = (state_.GraphicHeightMm / 2 - corner.Y) / state_.GraphicScale - state_.RefY;
  return {RulerMarks({left, perPixel, area.WidthPx, distance}),
          RulerMarks({top, -perPixel, area.HeightPx, distance})};
}

void DrawingView::PointerMoved(Point pixel) {
  app_.Window.SetPointer(PointerShape::Cross);
  pointer_ = pixel;
  ShowMouse();
}

void DrawingView::ShowMouse() {
  if (!pointer_) return;
  const GraphicArea area = app_.Window.Graphic();
  const Point place = view_.ToDrawing(*pointer_ - area.MiddlePx()) * area.PixelMm;
  state_.MouseX = static_cast<float>((state_.GraphicWidthMm / 2 + place.X) / state_.GraphicScale);
  state_.MouseY = static_cast<float>((state_.GraphicHeightMm / 2 - place.Y) / state_.GraphicScale);
  app_.Window.SetStatus(StatusField::Text2, PointerText(double{state_.MouseX} - state_.RefX,
                                                        double{state_.MouseY} - state_.RefY));
  const Point fromMiddle = Point{place.X, -place.Y} * (1 / state_.GraphicScale);
  if (measuredFrom_) {
    ShowMeasuring(fromMiddle);
  } else {
    ShowReading(fromMiddle);
  }
}

double DrawingView::UnitsPerPixel() const {
  return app_.Window.Graphic().PixelMm / (view_.Scale * state_.GraphicScale);
}

void DrawingView::ShowReading(Point place) {
  const auto reading = ReadNearestScale(scales_, ShownPage(), place);
  app_.Window.SetStatus(StatusField::Reading,
                        reading ? ReadingText(app_, *reading, UnitsPerPixel()) : std::string());
}

// The line begins at its place in the drawing, however that is moved meanwhile.
void DrawingView::ShowMeasuring(Point place) {
  const GraphicArea area = app_.Window.Graphic();
  const auto toPixel = [&](Point units) {
    return area.MiddlePx() + view_.ToPixel(Point{units.X, -units.Y} * (state_.GraphicScale / area.PixelMm));
  };
  const std::string text = MeasureText(app_, place - *measuredFrom_, UnitsPerPixel());
  app_.Window.SetStatus(StatusField::Reading, text);
  app_.Window.ShowMeasuring(MeasuringLine{toPixel(*measuredFrom_), toPixel(place), text});
}

void DrawingView::BeginMeasuring(Point pixel) {
  const GraphicArea area = app_.Window.Graphic();
  const Point place = view_.ToDrawing(pixel - area.MiddlePx()) * (area.PixelMm / state_.GraphicScale);
  measuredFrom_ = Point{place.X, -place.Y};
}

void DrawingView::EndMeasuring() {
  if (!std::exchange(measuredFrom_, std::nullopt)) return;
  app_.Window.ShowMeasuring(std::nullopt);
}

std::optional<PagePlace> DrawingView::ShownPlace() const {
  if (!drawing_ || drawing_->Pages().empty()) return std::nullopt;
  return PlaceOf(view_, drawing_->Pages()[ShownPage()], app_.Window.Graphic());
}

void DrawingView::WheelTurned(Point pixel, double notches) {
  constexpr double factorPerNotch = 1.2;
  view_.ZoomAt(pixel - app_.Window.Graphic().MiddlePx(), std::pow(factorPerNotch, notches));
  pointer_ = pixel;
  ShowView();
}

void DrawingView::Dragged(Point byPixels) {
  view_.Move(byPixels);
  ShowView();
}

}  // namespace vaxel
