#include "app/line_link.h"

#include <algorithm>
#include <utility>

#include "app/script_file.h"
#include "base/text.h"
#include "interpreter/line_reader.h"

namespace vaxel {
namespace {

// How near the pointer must be to a stroke, 1/96 inch.
constexpr double Reach = 4;
// Of a drawing of more operations the halo waits until the user pauses: they are all looked through for it.
constexpr std::size_t FoundAtOnce = 100'000;
constexpr std::size_t MostOutlines = 2000;
// A command is not looked for over more lines than that.
constexpr std::size_t LongestCommand = 500;
constexpr std::size_t TipLength = 120;  // bytes of a line

}  // namespace

bool LineLink::BelongsTogether() const {
  return runs_.Drawing() && runs_.TextOfDrawing().Texts == script_.Texts;
}

const LineMap& LineLink::Map() {
  if (std::exchange(isMapOld_, false))
    map_ = LineMap(runs_.TextOfDrawing().Lines, LineMarks(app_.Editor.Text()));
  return map_;
}

std::string LineLink::LineText(std::size_t line) const {
  return app_.Editor.TextOf(app_.Editor.RangeOfLines(line, line));
}

// What goes over several lines is drawn by the first of them.
std::size_t LineLink::FirstLineOf(std::size_t line) const {
  for (std::size_t steps = 0; line > 1 && steps < LongestCommand; ++steps, --line) {
    if (!IsContinued(LineText(line - 1))) break;
  }
  return line;
}

std::optional<FoundOperation> LineLink::ElementAt(Point pixel) const {
  const auto place = runs_.Shown().ShownPlace();
  if (!BelongsTogether() || !place) return std::nullopt;
  const double unit = MillimetresPerInch / 96 / app_.Window.Graphic().PixelMm;
  return OperationAt(*runs_.Drawing(), runs_.ShownPage(), place->ToMillimetres(pixel),
                     Reach * unit / place->PixelsPerMm);
}

void LineLink::PointerRested(Point pixel) {
  const auto found = ElementAt(pixel);
  const auto line = found ? Map().InText(found->SourceLine) : std::nullopt;
  if (!line || *line > app_.Editor.Place().Lines) return app_.Window.ShowTip({});
  std::string tip =
      app_.Message(TextId::LineOfElement, std::to_string(*line), Shorten(Trim(LineText(*line)), TipLength));
  if (const auto included = runs_.Drawing()->IncludedAt(found->Index)) {
    const std::string name(NameWithoutFolder(included->File));
    tip += "\n" + app_.Message(TextId::IncludedElement, name, std::to_string(included->Line));
  }
  app_.Window.ShowTip(tip);
}

void LineLink::GoToLine(std::size_t line) {
  app_.Editor.GoToLine(std::min(line, app_.Editor.Place().Lines));
  if (settings_.IsEditorShown()) app_.Editor.TakeKeys();
}

void LineLink::OpenAt(const IncludedPlace& place) {
  const auto before = script_.Texts;
  files_.OpenFile(place.File);
  if (script_.Texts != before) GoToLine(place.Line);
}

void LineLink::Clicked(Point pixel, bool withCtrl) {
  const auto found = ElementAt(pixel);
  if (!found) return;
  app_.Window.ShowTip({});
  const auto included = withCtrl ? runs_.Drawing()->IncludedAt(found->Index) : std::nullopt;
  if (included) return OpenAt(*included);
  const auto line = Map().InText(found->SourceLine);
  if (line) return GoToLine(*line);
  app_.Window.SetStatus(StatusField::Message, app_.Message(TextId::ElementLineGone));
}

void LineLink::TextChanged() {
  // The drawing that comes of the change comes with its own halo.
  isMapOld_ = isHaloDue_ = true;
}

void LineLink::CursorMoved() {
  const std::size_t line = settings_.IsEditorShown() ? app_.Editor.Place().Line : 0;
  const bool isSameText = std::exchange(haloTexts_, script_.Texts) == script_.Texts;
  const bool isSameLine = std::exchange(haloLine_, line) == line;
  if ((isSameText && isSameLine) || !runs_.Drawing()) return;
  if (!isMapOld_ && runs_.Drawing()->Size() <= FoundAtOnce) return ShowHalo();
  isHaloDue_ = true;
  app_.Window.AwaitPause();
}

void LineLink::Paused() {
  if (isHaloDue_) ShowHalo();
}

void LineLink::DrawingShown() {
  isMapOld_ = true;
  ShowHalo();
}

// Most of the time there is none, and none is to be shown.
void LineLink::SetHalo(std::vector<OperationOutline> outlines) {
  if (std::exchange(hasHalo_, !outlines.empty()) || hasHalo_) app_.Window.SetHalo(std::move(outlines));
}

void LineLink::ShowHalo() {
  isHaloDue_ = false;
  haloLine_ = settings_.IsEditorShown() ? app_.Editor.Place().Line : 0;
  haloTexts_ = script_.Texts;
  if (haloLine_ == 0 || !BelongsTogether()) return SetHalo({});
  const auto drawn = Map().InDrawing(FirstLineOf(haloLine_));
  if (!drawn) return SetHalo({});
  SetHalo(
      OutlinesOfLine(*runs_.Drawing(), runs_.ShownPage(), static_cast<std::uint32_t>(*drawn), MostOutlines));
}

}  // namespace vaxel
