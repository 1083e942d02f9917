#include "app/run_cycle.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

#include "app/paper_run.h"
#include "app/raised_flag.h"
#include "app/script_file.h"
#include "app/silent_bridge.h"
#include "base/number_text.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"
#include "interpreter/sheet_notices.h"

namespace vaxel {
namespace {

std::string DialogCaption(const AppContext& app, MenuId item, const char* keys) {
  std::string name = app.MenuText(MenuRowOf(item).Caption);
  std::erase(name, '&');
  return "Vaxel   " + name + "   " + keys;
}

// The two numbers of a reference point; whatever follows a number is passed over.
struct ReferenceEntry {
  double X = 0, Y = 0;
  bool FromCorner = false;
};

std::optional<ReferenceEntry> ReadReference(std::string_view text) {
  if (Trim(text).empty()) return ReferenceEntry{};
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  return ReferenceEntry{LeadingNumber(text.substr(0, comma)), LeadingNumber(text.substr(comma + 1)),
                        text.find_first_of("zZ") != std::string_view::npos};
}

// A drawing that is larger or smaller says nothing, and at the end of numbers it cannot be made.
bool IsUsableFactor(double factor) {
  return factor >= 0.001 && factor <= 1000;
}

}  // namespace

std::optional<double> FieldValue(std::string_view text) {
  try {
    const Evaluation result = Evaluate(Trim(text));
    if (result.HasValue && result.Complete && IsUsableFactor(result.Value)) return result.Value;
  } catch (const ScriptFault&) {
  }
  return std::nullopt;
}

// The window takes nothing but Escape while a run is under way.
class RunCycle::BusyWindow {
 public:
  explicit BusyWindow(RunCycle& cycle) : running_(cycle.session_.IsRunning), window_(cycle.app_.Window) {
    ++cycle.timesBusy_;
    cycle.session_.Errors.clear();
    cycle.session_.Problems.clear();
    window_.SetPointer(PointerShape::Hourglass);
    window_.SetWindowEnabled(false);
    window_.ProcessEvents();
  }
  ~BusyWindow() {
    window_.SetPointer(PointerShape::Normal);
    window_.SetWindowEnabled(true);
    // This is still a part of the run: a key that was held down meanwhile must not begin another within this
    // one.
    window_.ProcessEvents();
  }
  BusyWindow(const BusyWindow&) = delete;
  BusyWindow& operator=(const BusyWindow&) = delete;

 private:
  RaisedFlag running_;
  MainWindow& window_;
};

void RunCycle::HandleEvents() {
  const RaisedFlag running(session_.IsRunning);
  app_.Window.SetWindowEnabled(false);
  app_.Window.ProcessEvents();
  app_.Window.SetWindowEnabled(true);
}

// Runs the editor's text afresh and keeps what the view needs of it.
RunEnd RunCycle::RunFor(const RunTarget& target, DisplayList& list, std::vector<std::string>& answers) {
  const bool onScreen = target.Kind == TargetKind::Screen;
  RunBridge bridge(app_, script_, session_, onScreen ? &list : nullptr, answers);
  RunContext run(bridge, AllCommands(), app_.Strings, list);
  bridge.Follow(run);
  run.LangBase = app_.LangBase;
  const RunEnd end = RunScript(run, target, app_.Editor.Text(), script_.CurrentFile);
  if (run.NextZoom) state_.NextZoom = *run.NextZoom;
  if (onScreen && end != RunEnd::Empty) {
    run.Scales.Keep(run.Support);
    shown_.SetScales(run.Scales.All());
    shown_.RunEnded(run.Surface);
    lastOnScreen_ = {end, bridge.Worked(), list.Size(), run.Levels[0].Line.Number};
    lastVariables_ = std::move(run.Levels[0].Variables);
  }
  bridge.Finish();
  return end;
}

RunTarget RunCycle::ScreenTarget() const {
  const GraphicArea area = app_.Window.Graphic();
  RunTarget target;
  target.Kind = TargetKind::Screen;
  target.WidthMm = area.WidthPx * area.PixelMm;
  target.HeightMm = area.HeightPx * area.PixelMm;
  target.PixelMm = area.PixelMm;
  target.Zoom = state_.ScreenZoom;
  target.Zmm = settings_.Values().Zmm;
  target.OffX = state_.OffX;
  target.OffY = state_.OffY;
  target.KeepsPages = true;
  target.Measurer = app_.Platform.Measurer();
  target.Decoder = app_.Platform.Decoder();
  return target;
}

// The old drawing lives until the window has let it go; a window that fails meanwhile asks for the new one.
void RunCycle::ShowDrawn(std::unique_ptr<DisplayList>& drawing, std::string_view text,
                         std::vector<PaperOutline> sheets) {
  drawnText_ = {LineMarks(text), script_.Texts};
  std::swap(drawing_, drawing);
  shown_.Show(*drawing_, std::move(sheets));
}

RunEnd RunCycle::RunOnScreen(std::vector<std::string>& answers) {
  ++screenRuns_;
  auto list = std::make_unique<DisplayList>();
  const auto keep = [&](std::string_view text, std::vector<PaperOutline> sheets) {
    if (!list->Pages().empty()) ShowDrawn(list, text, std::move(sheets));
  };
  RunEnd end = RunEnd::Failed;
  std::vector<PaperOutline> sheets;
  std::string text;
  try {
    end = RunFor(ScreenTarget(), *list, answers);
    lastAnswers_ = answers;
    sheets = FindSheets(*list);
    text = app_.Editor.Text();  // with the comments of the run
  } catch (...) {
    keep({}, {});  // the window may show it already
    app_.Window.SetStatus(StatusField::Message, {});
    throw;
  }
  keep(text, std::move(sheets));
  app_.Window.SetDrawingOld(false);
  app_.Window.SetStatus(StatusField::Message, MessageOf(lastOnScreen_, app_));
  return end;
}

std::optional<std::string> RunCycle::ValueOf(std::string_view name) const {
  const std::string* const value = lastVariables_.Find(name);
  return value ? std::optional(*value) : std::nullopt;
}

void RunCycle::ShowMessage() const {
  app_.Window.SetStatus(StatusField::Message, MessageOf(lastOnScreen_, app_));
}

RunCycle::LiveEnd RunCycle::DrawLive(std::chrono::milliseconds patience) {
  const RaisedFlag running(session_.IsRunning);
  const std::vector<Problem> before = std::exchange(session_.Problems, {});
  auto list = std::make_unique<DisplayList>();
  SilentBridge bridge(app_, script_, session_, lastAnswers_,
                      {patience, true, [this] { return app_.Window.HasInput(); }});
  RunContext run(bridge, AllCommands(), app_.Strings, *list);
  bridge.Follow(run);
  run.LangBase = app_.LangBase;
  const std::string text = app_.Editor.Text();
  const RunEnd end = RunScript(run, ScreenTarget(), text, script_.CurrentFile);
  if (bridge.WasEnded() || bridge.WasTooLong()) {
    session_.Problems = before;
    return bridge.WasEnded() ? LiveEnd::Interrupted : LiveEnd::TooLong;
  }
  const bool isDrawn = end == RunEnd::Completed || end == RunEnd::Aborted;
  app_.Window.SetDrawingOld(!isDrawn && end != RunEnd::Empty);
  if (end == RunEnd::Empty) return LiveEnd::Drawn;
  lastOnScreen_ = {end, bridge.Worked(), list->Size(), run.Levels[0].Line.Number};
  lastVariables_ = std::move(run.Levels[0].Variables);
  if (!isDrawn || list->Pages().empty()) return isDrawn ? LiveEnd::Drawn : LiveEnd::Failed;
  if (run.NextZoom) state_.NextZoom = *run.NextZoom;
  run.Scales.Keep(run.Support);
  shown_.SetScales(run.Scales.All());
  shown_.RunEnded(run.Surface);
  ShowDrawn(list, text, FindSheets(*list));
  return LiveEnd::Drawn;
}

// Where printing puts the drawing is known when it is drawn for paper, too: where that takes no time.
std::vector<PaperOutline> RunCycle::FindSheets(const DisplayList& drawing) {
  constexpr auto quick = std::chrono::milliseconds(200);
  if (!shown_.ShowsSheet() || printer_.Name.empty()) return {};
  const bool mayRun = lastOnScreen_.End == RunEnd::Completed && lastOnScreen_.Took < quick;
  return PaperRun(app_, script_, session_, printer_, lastAnswers_)
      .Sheets(drawing, state_.GraphicScale, mayRun);
}

void RunCycle::ToggleSheet() {
  shown_.SetShowsSheet(!shown_.ShowsSheet());
  if (drawing_) shown_.ShowSheets(FindSheets(*drawing_));
}

void RunCycle::ShowTrueSize() {
  state_.ScreenZoom = 1;
  shown_.Reset();
  Visualise();
}

bool RunCycle::HasNews() {
  std::set<std::string> notices;
  for (const Problem& problem : session_.Problems) {
    if (problem.What == Problem::Kind::Notice)
      notices.insert(problem.File + ":" + std::to_string(problem.Line) + ":" + problem.Message);
  }
  const bool isNews = !std::ranges::includes(told_, notices);
  told_ = std::move(notices);
  return isNews;
}

RunEnd RunCycle::RunOnScreen() {
  std::vector<std::string> answers;
  return RunOnScreen(answers);
}

// What was pasted, or brought back by undoing, reaches from the line where the cursor was to where it is.
void RunCycle::LineChanged(std::size_t line) {
  constexpr std::size_t mostSingly = 200;
  const std::size_t before = std::exchange(cursorLine_, line);
  isLineChanged_ = true;
  // Lines that were deleted are no more.
  const std::size_t last = std::min(std::max(line, before), app_.Editor.Place().Lines);
  const std::size_t first = std::min(line, before);
  if (last - first > mostSingly) return app_.Editor.ColourAll();
  for (std::size_t left = first; left <= last; ++left) {
    if (left != line) app_.Editor.ColourLine(left);
  }
}

void RunCycle::TextReplaced() {
  cursorLine_ = 1;
  isLineChanged_ = false;
  shown_.ScriptReplaced();
}

void RunCycle::CursorIn(std::size_t line) {
  if (line == cursorLine_) return;
  if (std::exchange(isLineChanged_, false)) app_.Editor.ColourLine(cursorLine_);
  cursorLine_ = line;
}

void RunCycle::Visualise() {
  const BusyWindow busy(*this);
  if (std::exchange(isLineChanged_, false)) app_.Editor.ColourLine(cursorLine_);
  RunOnScreen();
}

void RunCycle::UsePrinter(PrinterChoice printer) {
  printer_ = std::move(printer);
  if (drawing_) shown_.ShowSheets(FindSheets(*drawing_));
}

Result<RunTarget> RunCycle::PrinterTarget() const {
  Result<RunTarget> target = app_.Printers.Target(printer_);
  if (!target) return target;
  target->Kind = TargetKind::Printer;
  target->Measurer = app_.Platform.Measurer();
  target->Decoder = app_.Platform.Decoder();
  // What a display list can hold is what a drawing can be on.
  constexpr double most = MaxCoordinate / 2, mostPixel = 10;
  const auto isSize = [](double millimetres, double limit) {
    return millimetres > 0 && millimetres <= limit;
  };
  if (isSize(target->WidthMm, most) && isSize(target->HeightMm, most) && isSize(target->PixelMm, mostPixel))
    return target;
  return Failure{.Text = TextId::PrinterImpossible,
                 .Words = NumberText(target->WidthMm) + " × " + NumberText(target->HeightMm)};
}

std::optional<DisplayList> RunCycle::RunOnPrinter(const RunTarget& printer, double zoom,
                                                  std::vector<std::string>& answers) {
  RunTarget target = printer;
  target.Zoom = zoom;
  std::optional<DisplayList> list(std::in_place);
  if (RunFor(target, *list, answers) != RunEnd::Completed) return std::nullopt;
  return list;
}

void RunCycle::NoteBeyondSheet(const DisplayList& drawing) {
  for (const SheetNotice& notice : SheetNotices(drawing, app_.Strings, app_.LangBase)) {
    session_.Problems.push_back(
        {Problem::Kind::Notice, notice.Text, script_.CurrentFile, notice.LineNumber, notice.LineNumber});
  }
}

void RunCycle::WhileBusy(const std::function<void()>& work) {
  const BusyWindow busy(*this);
  work();
}

std::optional<FileRun> RunCycle::RunForFile(RunTarget target) {
  target.IsPixelDevice = false;
  target.KeepsPages = true;
  target.Measurer = app_.Platform.Measurer();
  target.Decoder = app_.Platform.Decoder();
  std::vector<std::string> answers;
  std::optional<FileRun> drawn(std::in_place);
  RunBridge bridge(app_, script_, session_, nullptr, answers);
  RunContext run(bridge, AllCommands(), app_.Strings, drawn->Drawing);
  bridge.Follow(run);
  run.LangBase = app_.LangBase;
  const RunEnd end = RunScript(run, target, app_.Editor.Text(), script_.CurrentFile);
  drawn->FilesRead = bridge.FilesRead();
  if (end != RunEnd::Completed) {
    drawn.reset();
  } else if (target.Kind == TargetKind::Printer) {
    NoteBeyondSheet(drawn->Drawing);
  }
  return drawn;
}

void RunCycle::Zoom(bool withCtrl) {
  if (withCtrl) {
    if (IsUsableFactor(state_.NextZoom)) state_.ScreenZoom = state_.NextZoom;
    shown_.Reset();
  } else {
    const auto shown = [](double value) { return value == 0 ? std::string("1") : NumberText(value); };
    ZoomDialog dialog;
    dialog.Caption = DialogCaption(app_, MenuId::Mnu_Zoom, "(F7, Ctrl-F7)");
    dialog.FactorLabel = app_.Message(TextId::ZoomFactor);
    dialog.FactorText = shown(state_.ScreenZoom);
    dialog.ZmmLabel = app_.Message(TextId::MmCorrection);
    dialog.ZmmText = shown(settings_.Values().Zmm);
    dialog.Button = app_.Message(TextId::ValidateZoom);
    dialog.OnButton = [this](const std::string& factor, const std::string& zmm) {
      return AcceptZoom(factor, zmm);
    };
    app_.Dialogs.ShowZoom(dialog);
  }
  const BusyWindow busy(*this);
  RunOnScreen();
}

// Both are taken or none: an entry that is refused leaves the values in force.
std::optional<ZoomField> RunCycle::AcceptZoom(const std::string& factor, const std::string& zmm) {
  const std::optional<double> newZmm = FieldValue(zmm), newFactor = FieldValue(factor);
  if (!newZmm || !newFactor) {
    app_.TellNotUsable(newZmm ? factor : zmm);
    return newZmm ? ZoomField::Factor : ZoomField::Zmm;
  }
  settings_.SetZmm(*newZmm);
  state_.ScreenZoom = *newFactor;
  shown_.Reset();
  return std::nullopt;
}

bool RunCycle::AcceptReference(const std::string& text) {
  const std::optional<ReferenceEntry> entry = ReadReference(text);
  if (!entry) {
    app_.Tell(BoxIcon::Information, app_.Message(TextId::ReferenceHint));
    return false;
  }
  const Point centre = entry->FromCorner ? state_.GraphicCentre : Point{};
  state_.RefInX = static_cast<float>(entry->X - centre.X);
  state_.RefInY = static_cast<float>(entry->Y - centre.Y);
  shown_.FollowCentre();
  return true;
}

void RunCycle::Reference(bool withCtrl) {
  if (withCtrl) {
    state_.RefInX = state_.RefInY = 0;
    shown_.FollowCentre();
    return;
  }
  ReferenceDialog dialog;
  dialog.Caption = DialogCaption(app_, MenuId::Mnu_RefCurseur, "(F8, Ctrl-F8)");
  dialog.Label = app_.Message(TextId::ReferenceLabel);
  dialog.Text = FloatText(state_.RefInX) + "," + FloatText(state_.RefInY);
  dialog.Button = app_.Message(TextId::ValidateReference);
  dialog.OnButton = [this](const std::string& text) { return AcceptReference(text); };
  app_.Dialogs.ShowReference(dialog);
}

// The offsets are counted from the middle, so that the centre comes to lie at the pointer however often it is
// sent there.
void RunCycle::Positionner(bool withCtrl) {
  if (withCtrl) {
    state_.OffX = state_.OffY = 0;
    shown_.Reset();
  } else {
    state_.OffX = state_.MouseX * state_.GraphicScale - state_.GraphicWidthMm / 2;
    state_.OffY = state_.MouseY * state_.GraphicScale - state_.GraphicHeightMm / 2;
  }
  Visualise();
}

}  // namespace vaxel
