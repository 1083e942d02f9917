#include "app/run_cycle.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <utility>

#include "app/raised_flag.h"
#include "app/script_file.h"
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

std::string PointerText(double x, double y) {
  return OneDecimal(x) + "  " + OneDecimal(y);
}

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
    cycle.session_.Errors.clear();
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
    state_.GraphicCentre = run.Surface.Centre();
    state_.GraphicScale = run.Surface.Z;
    state_.GraphicWidthMm = target.WidthMm;
    state_.GraphicHeightMm = target.HeightMm;
  }
  bridge.Finish();
  return end;
}

RunEnd RunCycle::RunOnScreen(std::vector<std::string>& answers) {
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
  target.Measurer = app_.Platform.Measurer();
  target.Decoder = app_.Platform.Decoder();
  auto list = std::make_unique<DisplayList>();
  const auto keep = [&] {
    if (list->Pages().empty()) return;
    // The old one lives until the window has let it go; a window that fails meanwhile asks for the new one.
    std::swap(drawing_, list);
    app_.Window.ShowDrawing(*drawing_);
  };
  RunEnd end = RunEnd::Failed;
  try {
    end = RunFor(target, *list, answers);
  } catch (...) {
    keep();  // the window may show it already
    throw;
  }
  keep();
  FollowCentre();
  TellNotices();
  return end;
}

// A notice that the user has seen after the run before is no news: a view of the same script shows it again
// and again.
void RunCycle::TellNotices() {
  constexpr std::size_t most = 20;
  const std::vector<std::string> notices = std::exchange(session_.Notices, {});
  const std::set<std::string> before = std::exchange(session_.Told, {notices.begin(), notices.end()});
  std::string all;
  std::size_t told = 0;
  for (const std::string& notice : notices) {
    if (before.contains(notice) || ++told > most) continue;
    all += (all.empty() ? "" : "\n") + notice;
  }
  if (told > most) all += "\n…";
  if (!all.empty()) app_.Tell(BoxIcon::Information, all);
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
  if (!view_.IsDefault()) ResetView();
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

void RunCycle::TellNotPrinted(const Failure& why) {
  app_.Tell(BoxIcon::Critical, app_.Message(TextId::PrintFailed, printerName_, app_.Message(why)));
}

std::optional<DisplayList> RunCycle::RunOnPrinter(std::vector<std::string>& answers) {
  Result<RunTarget> target = app_.Printers.Target(printerName_);
  if (!target) {
    TellNotPrinted(target.Why());
    return std::nullopt;
  }
  target->Kind = TargetKind::Printer;
  target->Measurer = app_.Platform.Measurer();
  target->Decoder = app_.Platform.Decoder();
  std::optional<DisplayList> list(std::in_place);
  if (RunFor(*target, *list, answers) != RunEnd::Completed) return std::nullopt;
  NoteBeyondSheet(*list);
  return list;
}

void RunCycle::NoteBeyondSheet(const DisplayList& drawing) {
  for (const SheetNotice& notice : SheetNotices(drawing, app_.Strings, app_.LangBase)) {
    session_.Notices.push_back(NoticeAtPlace(app_, script_.CurrentFile, notice.LineNumber, notice.Text));
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
  TellNotices();
  return drawn;
}

void RunCycle::PrintDocument(const DisplayList& drawing) {
  if (session_.AbortRequested) return;
  const std::string script = DocumentNameOf(script_.CurrentFile);
  const std::string documentName = script.empty() ? "Vaxel" : script;
  if (const Result<> printed = app_.Printers.Print(printerName_, documentName, drawing); !printed)
    TellNotPrinted(printed.Why());
}

// What was answered for the paper is not asked again for the screen.
void RunCycle::Print() {
  const BusyWindow busy(*this);
  std::vector<std::string> answers;
  if (const std::optional<DisplayList> drawing = RunOnPrinter(answers)) PrintDocument(*drawing);
  RunOnScreen(answers);
}

void RunCycle::Zoom(bool withCtrl) {
  if (withCtrl) {
    if (IsUsableFactor(state_.NextZoom)) state_.ScreenZoom = state_.NextZoom;
    ResetView();
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
      settings_.SetZmm(FieldValue(zmm).value_or(settings_.Values().Zmm));
      state_.ScreenZoom = FieldValue(factor).value_or(state_.ScreenZoom);
      ResetView();
    };
    app_.Dialogs.ShowZoom(dialog);
  }
  const BusyWindow busy(*this);
  RunOnScreen();
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
  FollowCentre();
  return true;
}

void RunCycle::Reference(bool withCtrl) {
  if (withCtrl) {
    state_.RefInX = state_.RefInY = 0;
    FollowCentre();
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

// The reference point keeps its place in the drawing when another run moves the centre.
void RunCycle::FollowCentre() {
  state_.RefX = static_cast<float>(state_.GraphicCentre.X) + state_.RefInX;
  state_.RefY = static_cast<float>(state_.GraphicCentre.Y) + state_.RefInY;
}

// The offsets are counted from the middle, so that the centre comes to lie at the pointer however often it is
// sent there.
void RunCycle::Positionner(bool withCtrl) {
  if (withCtrl) {
    state_.OffX = state_.OffY = 0;
    ResetView();
  } else {
    state_.OffX = state_.MouseX * state_.GraphicScale - state_.GraphicWidthMm / 2;
    state_.OffY = state_.MouseY * state_.GraphicScale - state_.GraphicHeightMm / 2;
  }
  Visualise();
}

void RunCycle::ResetView() {
  view_ = {};
  app_.Window.SetView(view_);
}

void RunCycle::PointerMoved(double xPx, double yPx) {
  app_.Window.SetPointer(PointerShape::Cross);
  const double pixel = app_.Window.Graphic().PixelMm;
  const Point place = view_.ToDrawing({xPx, yPx});
  state_.MouseX = static_cast<float>(place.X * pixel / state_.GraphicScale);
  state_.MouseY = static_cast<float>((state_.GraphicHeightMm - place.Y * pixel) / state_.GraphicScale);
  ShowMouse();
}

void RunCycle::ShowMouse() {
  app_.Window.SetStatus(StatusField::Text2, PointerText(double{state_.MouseX} - state_.RefX,
                                                        double{state_.MouseY} - state_.RefY));
}

void RunCycle::WheelTurned(double xPx, double yPx, double notches) {
  constexpr double factorPerNotch = 1.2;
  view_.ZoomAt({xPx, yPx}, std::pow(factorPerNotch, notches));
  app_.Window.SetView(view_);
  PointerMoved(xPx, yPx);
}

void RunCycle::Dragged(double dxPx, double dyPx) {
  view_.Move({dxPx, dyPx});
  app_.Window.SetView(view_);
}

}  // namespace vaxel
