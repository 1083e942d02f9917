#include "app/run_bridge.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/raised_flag.h"
#include "app/script_file.h"
#include "base/files.h"
#include "base/text.h"
#include "interpreter/line_reader.h"

namespace vaxel {
namespace {

// A window that answers within this time seems to answer at once, and handling events costs far more than
// a line of a script.
constexpr auto BetweenEvents = std::chrono::milliseconds(15);
// Nobody waits longer than this before an empty window.
constexpr auto BetweenPictures = std::chrono::milliseconds(200);
// Who waits longer wants to know what for, and how to end it.
constexpr auto Long = std::chrono::milliseconds(500);

// Lines of a text in the order of their numbers, which count from 1, found in one passage through it.
class LinesInOrder {
 public:
  explicit LinesInOrder(std::string_view text) : rest_(text) {}
  // The line must not come before the one that was asked for last. It is empty after the last one.
  std::string_view Line(std::uint32_t number) {
    for (; number_ < number; ++number_) {
      const std::size_t end = rest_.find('\n');
      rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
    }
    return rest_.substr(0, rest_.find('\n'));
  }

 private:
  std::string_view rest_;
  std::uint32_t number_ = 1;
};

// A comment without its blanks and with "#" for every number. One pixel and several are the same.
std::string ShapeOf(std::string_view comment) {
  std::string shape;
  for (std::size_t i = 0; i < comment.size(); ++i) {
    const bool isSign =
        (comment[i] == '-' || comment[i] == '+') && i + 1 < comment.size() && IsDigit(comment[i + 1]);
    if (comment[i] == ' ' || (comment[i] == 's' && shape.ends_with("#pixel"))) continue;
    if (!isSign && !IsDigit(comment[i])) {
      shape += comment[i];
      continue;
    }
    const std::size_t end = comment.find_first_not_of("0123456789.E+-", i + 1);
    i = std::min(end, comment.size()) - 1;
    shape += '#';
  }
  return shape;
}

}  // namespace

RunBridge::RunBridge(AppContext& app, const EditedScript& script, RunSession& session,
                     const DisplayList* growing, std::vector<std::string>& answers)
    : app_(app),
      script_(script),
      session_(session),
      growing_(growing),
      answers_(answers),
      lastEvents_(app.Platform.Now()),
      lastShown_(lastEvents_),
      started_(lastEvents_) {}

// The time in which it lives is the user's.
class RunBridge::Waiting {
 public:
  explicit Waiting(RunBridge& bridge) : bridge_(bridge), start_(bridge.app_.Platform.Now()) {}
  ~Waiting() { bridge_.waited_ += bridge_.app_.Platform.Now() - start_; }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  RunBridge& bridge_;
  std::chrono::steady_clock::time_point start_;
};

std::chrono::milliseconds RunBridge::Worked() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(app_.Platform.Now() - started_ - waited_);
}

void RunBridge::TellThatItTakesLong() {
  isLong_ = true;
  app_.Window.SetStatus(StatusField::Message, app_.Message(TextId::DrawingNow));
}

void RunBridge::ShowSoFar() {
  if (growing_ && !growing_->Pages().empty()) app_.Window.ShowDrawingSoFar(*growing_);
  lastShown_ = app_.Platform.Now();
}

// The first call, when the surface is set up, always lets the window handle its events.
RunSignal RunBridge::ProcessPendingEvents() {
  const auto now = app_.Platform.Now();
  if (!hadEvents_ || now - lastEvents_ >= BetweenEvents) {
    hadEvents_ = true;
    if (now - lastShown_ >= BetweenPictures) ShowSoFar();
    if (!isLong_ && now - started_ - waited_ >= Long) TellThatItTakesLong();
    app_.Window.ProcessEvents();
    lastEvents_ = app_.Platform.Now();
  }
  return session_.AbortRequested ? RunSignal::Abort : RunSignal::GoOn;
}

// A script that includes itself is read from the disk, where its lines may be others than in the editor.
bool RunBridge::IsOfEditor(std::string_view fileName) const {
  return fileName == script_.CurrentFile && (!run_ || run_->InMainScript());
}

// A script that fails on paper fails on the screen, too: once is enough.
void RunBridge::ShowError(const ErrorReport& report) {
  ShowSoFar();
  app_.Window.ProcessEvents();
  const Waiting waiting(*this);
  const std::string name = report.FileName.empty() ? app_.Message(TextId::UnsavedScript)
                                                   : std::string(NameWithoutFolder(report.FileName));
  const std::string line = app_.Message(TextId::LineOfError, std::to_string(report.LineNumber), name);
  KeepProblem(Problem::Kind::Error, report.FileName, report.LineNumber, report.Text);
  const std::string text = report.LineNumber > 0 ? report.Text + "\n\n" + line : report.Text;
  if (session_.Errors.insert(text).second) {
    app_.Window.SetPointer(PointerShape::Normal);
    app_.Tell(BoxIcon::Critical, text);
    app_.Window.SetPointer(PointerShape::Hourglass);
  }
  if (IsOfEditor(report.FileName) && report.LineNumber > 0) {
    app_.Editor.GoToLine(report.LineNumber);
  }
}

void RunBridge::WriteComment(std::string_view fileName, std::uint32_t lineNumber, std::string_view comment) {
  if (IsOfEditor(fileName)) {
    comments_[lineNumber] = comment;
  } else {
    KeepProblem(Problem::Kind::Notice, fileName, lineNumber, Trim(comment));
  }
}

void RunBridge::ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) {
  KeepProblem(Problem::Kind::Notice, fileName, lineNumber, text);
}

// Of an included script the line that includes it is the editor's.
void RunBridge::KeepProblem(Problem::Kind kind, std::string_view fileName, std::uint32_t line,
                            std::string_view text) {
  if (!keepsProblems_ || session_.Problems.size() >= ProblemList::Most) return;
  const std::uint32_t included = run_ ? run_->Levels[0].Line.Number : 0;
  const std::string_view firstLine = text.substr(0, text.find('\n'));
  session_.Problems.push_back(
      {kind, std::string(firstLine), std::string(fileName), line, IsOfEditor(fileName) ? line : included});
}

bool RunBridge::Confirm(BoxKind, std::string_view, std::uint32_t, std::string_view title,
                        std::string_view text) {
  ShowSoFar();
  const Waiting waiting(*this);
  const std::string boxTitle = title.empty() ? "Vaxel" : std::string(title);
  return app_.Dialogs.AskOkCancel(boxTitle, std::string(text));
}

Answer RunBridge::Ask(std::string_view, std::uint32_t, std::string_view prompt, std::string_view proposal) {
  if (asked_ < answers_.size()) return {Answer::Kind::Given, answers_[asked_++]};
  ShowSoFar();
  const Waiting waiting(*this);
  auto text = app_.Dialogs.AskText({"Vaxel", std::string(prompt), std::string(proposal)});
  if (!text) return {Answer::Kind::Cancelled};
  ++asked_;
  answers_.push_back(*text);
  return {Answer::Kind::Given, std::move(*text)};
}

std::string RunBridge::FullFileName(std::string_view fileName) {
  if (fileName.empty()) return {};
  std::error_code failed;
  const std::filesystem::path full = std::filesystem::absolute(PathOf(fileName), failed);
  return failed ? std::string(fileName) : NameOf(full.lexically_normal());
}

ScriptFiles RunBridge::Files() const {
  FileRights rights;
  rights.Network = app_.MayUseNetwork;
  return {script_.CurrentFile, std::move(rights)};
}

std::string RunBridge::FindFile(std::string_view scriptName, std::string_view name) {
  return Files().Find(scriptName, name);
}

Result<std::string> RunBridge::ReadFile(std::string_view fileName, std::size_t maxBytes) {
  filesRead_.emplace(fileName);
  return Files().Read(fileName, maxBytes);
}

// Comments that stand close to each other are one step to undo; to put thousands of lines anew for two
// comments takes the editor's control too long.
void RunBridge::Finish() {
  constexpr std::uint32_t mostAtOnce = 500;
  if (comments_.empty()) return;
  const RaisedFlag writing(session_.IsWritingComments);
  const std::string text = app_.Editor.Text();
  // Controls end lines at a few more characters. The numbers then mean other lines there, which would be
  // lost.
  const bool areSameLines = CountOf(text, "\n") + 1 == app_.Editor.Place().Lines;
  LinesInOrder lines(text);
  std::uint32_t first = 0;
  std::vector<std::string> changed;  // from the first line to the last that gets a comment
  const auto write = [&] {
    if (!changed.empty()) app_.Editor.ReplaceLines(first, std::exchange(changed, {}));
  };
  for (const auto& [number, comment] : comments_) {
    if (!areSameLines) {
      KeepProblem(Problem::Kind::Notice, script_.CurrentFile, number, Trim(comment));
      continue;
    }
    if (!changed.empty() && number - first >= mostAtOnce) write();
    if (!changed.empty()) {
      for (auto between = first + static_cast<std::uint32_t>(changed.size()); between < number; ++between)
        changed.emplace_back(lines.Line(between));
    }
    const std::string_view line = lines.Line(number);
    std::string commented = WithComment(line, comment);
    if (changed.empty() && commented == line) continue;
    if (changed.empty()) first = number;
    changed.push_back(std::move(commented));
  }
  write();
}

std::string WithComment(std::string_view line, std::string_view comment) {
  // Nothing may follow the mark of a continuation.
  if (IsContinued(line)) return std::string(line);
  const std::size_t apostrophe = line.rfind('\'');
  std::string_view kept = line;
  // The user's own comments stay, also when they are numbers.
  if (apostrophe != std::string_view::npos && ShapeOf(line.substr(apostrophe)) == ShapeOf(comment)) {
    kept = line.substr(0, apostrophe);
    while (kept.ends_with(' ')) kept.remove_suffix(1);
  }
  return std::string(kept).append(comment);
}

}  // namespace vaxel
