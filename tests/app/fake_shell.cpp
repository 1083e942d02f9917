#include "tests/app/fake_shell.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <utility>

#include "base/files.h"
#include "base/number_text.h"
#include "base/output_file.h"
#include "render/list_renderer.h"

namespace vaxel::test {

void FakeWindow::SetItemEnabled(MenuId item, bool isEnabled) {
  if (isEnabled) {
    Greyed.erase(item);
  } else {
    Greyed.insert(item);
  }
}

void FakeWindow::SetPointer(PointerShape shape) {
  if (shape != PointerShape::Cross) log_.push_back(shape == PointerShape::Hourglass ? "hourglass" : "arrow");
}

void FakeWindow::SetWindowEnabled(bool isEnabled) {
  IsEnabled = isEnabled;
  log_.push_back(isEnabled ? "enable" : "disable");
}

void FakeWindow::ShowDrawing(const DisplayList& drawing, std::size_t page) {
  shown_ = &drawing;
  Page = page;
  log_.push_back("show " + std::to_string(drawing.Size()));
  if (OnShow) OnShow(drawing);
}

void FakeWindow::Resize(Application& application, double widthPx, double heightPx) {
  Area.WidthPx = widthPx;
  Area.HeightPx = heightPx;
  application.GraphicAreaChanged();
}

void FakeWindow::Paint() {
  if (shown_) PaintedOperations = shown_->Size();
}

void FakeWindow::ProcessEvents() {
  log_.push_back("events");
  Paint();
  if (OnEvents) OnEvents();
}

void FakeEditor::SetText(std::string_view text) {
  if (IsFull) throw std::bad_alloc();
  Content = text;
  Line = 1;
  log_.push_back("text " + std::to_string(text.size()));
}

void FakeEditor::ReplaceSelection(std::string_view text) {
  Content += text;
  Line = Place().Lines;
  Selected = {Content.size(), Content.size()};
  Owner->EditorChanged();
}

void FakeEditor::ReplaceLines(std::size_t first, const std::vector<std::string>& lines) {
  const EditorRange range = RangeOfLines(first, first + lines.size() - 1);
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
  Content.replace(range.Begin, range.End - range.Begin, text);
  ++Replacements;
  Owner->EditorChanged();
}

EditorPlace FakeEditor::Place() {
  return {Line, static_cast<std::size_t>(std::count_if(Content.begin(), Content.end(),
                                                       [](char c) { return c == '\n' || c == '\v'; })) +
                    1};
}

void FakeEditor::GoToLine(std::size_t line) {
  Line = line;
  const std::size_t begin = RangeOfLines(line, line).Begin;
  Selected = {begin, begin};
}

EditorRange FakeEditor::RangeOfLines(std::size_t first, std::size_t last) {
  std::size_t begin = 0;
  for (std::size_t i = 1; i < first; ++i) begin = Content.find('\n', begin) + 1;
  std::size_t end = begin;
  for (std::size_t i = first; i < last; ++i) end = Content.find('\n', end) + 1;
  return {begin, std::min(Content.find('\n', end), Content.size())};
}

std::size_t FakeEditor::LineAt(std::size_t place) {
  return static_cast<std::size_t>(
             std::count(Content.begin(), Content.begin() + static_cast<std::ptrdiff_t>(place), '\n')) +
         1;
}

void FakeEditor::Undo() {
  log_.emplace_back("undo");
  if (undoable_.empty()) return;
  Content = undoable_.back().Content;
  Selected = undoable_.back().Selected;
  undoable_.pop_back();
  Line = LineAt(Selected.Begin);
  Owner->EditorChanged();
}

void FakeEditor::Replace(EditorRange range, std::string_view text) {
  undoable_.push_back({Content, Selected});
  Content.replace(range.Begin, range.End - range.Begin, text);
  Selected = {range.Begin + text.size(), range.Begin + text.size()};
  ++Replacements;
  Line = LineAt(Selected.Begin);
  Owner->EditorChanged();
}

void FakeEditor::Type(std::string_view text) {
  Line = Place().Lines;
  Owner->CursorMoved();
  ReplaceSelection(text);
}

// "safe" is what Enter gives.
std::string FakeDialogs::Next(SafeAnswer safe) {
  std::string answer = Next();
  if (answer == "safe") return safe == SafeAnswer::Yes ? "yes" : "no";
  return answer;
}

std::string FakeDialogs::Next() {
  if (Answers.empty()) {
    ADD_FAILURE() << "a question without an answer";
    return "cancel";
  }
  std::string answer = std::move(Answers.front());
  Answers.pop_front();
  return answer;
}

void FakeDialogs::ShowMessage(BoxIcon icon, const std::string&, const std::string& text) {
  log_.push_back((icon == BoxIcon::Critical ? "critical " : "message ") + text);
}

YesNoCancel FakeDialogs::AskYesNoCancel(const std::string&, const std::string& text, SafeAnswer safe) {
  log_.push_back("question " + text);
  const std::string answer = Next(safe);
  return answer == "yes" ? YesNoCancel::Yes : answer == "no" ? YesNoCancel::No : YesNoCancel::Cancel;
}

bool FakeDialogs::AskYesNo(const std::string&, const std::string& text, SafeAnswer safe) {
  log_.push_back("question " + text);
  return Next(safe) == "yes";
}

bool FakeDialogs::AskOkCancel(const std::string& title, const std::string&) {
  log_.push_back("box " + title);
  return Next() == "ok";
}

std::optional<std::string> FakeDialogs::AskText(const InputDialog& dialog) {
  log_.push_back("input " + dialog.Prompt + " [" + dialog.Proposal + "]");
  if (OnAsk) OnAsk();
  std::string answer = Next();
  while (answer != "cancel" && dialog.OnOk && !dialog.OnOk(answer)) answer = Next();
  if (answer == "cancel") return std::nullopt;
  return answer;
}

std::vector<std::string> FakeDialogs::ShowOpen(const FileDialog& dialog) {
  log_.emplace_back("open dialog");
  FileDialogs.push_back(dialog);
  return std::exchange(Files, {});
}

std::string FakeDialogs::ShowSave(const FileDialog& dialog) {
  log_.emplace_back("save dialog");
  FileDialogs.push_back(dialog);
  const std::vector<std::string> files = std::exchange(Files, {});
  return files.empty() ? std::string() : files.front();
}

void FakeDialogs::ShowZoom(const ZoomDialog& dialog) {
  log_.emplace_back("zoom dialog");
  if (OnZoom) OnZoom(dialog);
}

void FakeDialogs::ShowReference(const ReferenceDialog& dialog) {
  log_.emplace_back("reference dialog");
  if (OnReference) OnReference(dialog);
}

void FakeDialogs::ShowExport(const ExportDialog& dialog) {
  log_.emplace_back("export dialog");
  if (OnExport) return OnExport(dialog);
  dialog.OnButton(dialog.Format, dialog.Page, dialog.DpiText);
}

void FakeDialogs::ShowLanguages(const LanguageDialog& dialog) {
  log_.emplace_back("language dialog");
  if (OnLanguages) OnLanguages(dialog);
}

std::optional<PrinterEntry> FakeDialogs::ShowPrinter(const PrinterChoice& present) {
  log_.push_back("choose printer " + present.Name);
  return PrinterChosen;
}

void FakeDialogs::ShowFonts(const FontsDialog& dialog) {
  log_.push_back("fonts " + std::to_string(dialog.Names.size()));
  if (OnFonts) OnFonts(dialog);
}

void FakeDialogs::ShowPreview(const PreviewDialog& dialog) {
  log_.push_back("preview " + std::to_string(dialog.Pages.Drawing->Pages().size()) + " pages, " +
                 dialog.Pages.Calibration);
  if (OnPreview) OnPreview(dialog);
}

Result<RunTarget> FakePrinters::Target(const PrinterChoice& printer) {
  if (!TargetFailure.empty()) return Failure{.Words = TargetFailure};
  RunTarget target;
  target.WidthMm = WidthMm;
  target.HeightMm = HeightMm;
  target.IsTurned = printer.IsLandscape;
  target.PixelMm = 25.4 / 600;
  return target;
}

Result<> FakePrinters::Print(const PrintOrder& order, const DisplayList& drawing) {
  log_.push_back("print " + order.DocumentName + " on " + order.Printer.Name + ", " +
                 std::to_string(order.Pages.size()) + " pages, " + std::to_string(drawing.Size()) +
                 " operations");
  Order = order;
  Printed = ComposeSheets(drawing, {});
  if (!PrintFailure.empty()) return Failure{.Words = PrintFailure};
  return {};
}

// Margins that differ on all sides around the 200 × 287 mm that can be printed on.
Result<PrinterSheet> FakePrinters::Sheet(const PrinterChoice&, bool isLandscape) {
  return isLandscape ? PrinterSheet{SheetMm.Y, SheetMm.X, 7, 4, HasColour}
                     : PrinterSheet{SheetMm.X, SheetMm.Y, 6, 3, HasColour};
}

Result<> FakePrinters::PrintToFile(const FilePrint& print, const DisplayList& drawing) {
  log_.push_back("print " + print.DocumentName + " on " + print.Printer + " into a file, " +
                 std::to_string(drawing.Pages().size()) + " pages");
  if (!PrintFailure.empty()) return Failure{.Words = PrintFailure};
  OutputFile file(print.FileName);
  file.Write(PdfBytes);
  return file.Commit();
}

bool FakePlatform::OpenHelp(const std::string& helpFile, const std::string& word) {
  log_.push_back("help " + helpFile + " " + word);
  return HasHelp;
}

// The files are lists.
Result<> FakePlatform::WritePng(const DisplayList& drawing, std::size_t page, double dpi, ByteSink& sink) {
  sink.Write("png " + NumberText(dpi) + "\n");
  ListRenderer renderer(sink);
  PlayPage(drawing, page, renderer);
  return {};
}

Result<> FakePlatform::WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) {
  if (!EmfFailure.empty()) return Failure{.Words = EmfFailure};
  sink.Write("emf\n");
  ListRenderer renderer(sink);
  PlayPage(drawing, page, renderer);
  return {};
}

bool FakePlatform::CopyPicture(const std::string& emf, const std::string& png) {
  if (HasClipboard) log_.push_back("copy " + emf + png);
  return HasClipboard;
}

void FakeShell::Restart() {
  Editor.Content.clear();
  Editor.Line = 1;
  Window.Forget();
  App.emplace(Shell{Window, Editor, Boxes, Printer, System, Aid});
  Editor.Owner = &*App;
}

bool FakeShell::Start(const std::string& script) {
  return App->Start({0, 3, 2, NameOf(folder_.Path()), "", script});
}

void FakeShell::StartWith(std::string_view script) {
  Write("dial.dat", script);
  Write("Vaxel.cfg",
        "'Fichier de configuration du Programme Vaxel V0.3b\r\nLangue = English\r\n"
        "LangueAide = English\r\nFichierDat = dial.dat\r\n");
  ASSERT_TRUE(Start());
  Happened.clear();
}

void FakeShell::CommandWithFiles(MenuId item, std::vector<std::string> files) {
  Boxes.Files = std::move(files);
  App->Command(item);
}

void FakeShell::CommandWithAnswers(MenuId item, std::deque<std::string> answers) {
  Boxes.Answers = std::move(answers);
  App->Command(item);
}

Log FakeShell::Take(const std::vector<std::string>& beginnings) {
  Log taken = std::exchange(Happened, {});
  if (beginnings.empty()) return taken;
  std::erase_if(taken, [&](const std::string& line) {
    return std::none_of(beginnings.begin(), beginnings.end(),
                        [&](const std::string& beginning) { return line.starts_with(beginning); });
  });
  return taken;
}

}  // namespace vaxel::test
