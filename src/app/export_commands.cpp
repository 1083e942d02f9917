#include "app/export_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/pdf_file.h"
#include "app/script_file.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/output_file.h"
#include "base/text.h"
#include "drawing/page_bounds.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"
#include "render/svg_renderer.h"

namespace vaxel {
namespace {

// So much is left free around a drawing whose page is as large as itself.
constexpr double BoundsMarginMm = 1;
constexpr double LeastDpi = 36, MostDpi = 2400;
// Of pictures on the clipboard, for which nobody is asked.
constexpr double CopyDpi = 300;

constexpr std::string_view FormatName = "FormatExport", PageName = "PageExport", DpiName = "PointsExport";
constexpr std::string_view PaperWord = "papier", DrawingWord = "dessin";

struct FormatRow {
  std::string_view Extension;
  TextId Files;
  bool HoldsPages;  // all of them in one file
};

// In the order of ExportFormat.
constexpr auto Formats = std::to_array<FormatRow>({{"svg", TextId::SvgFiles, false},
                                                   {"png", TextId::PngFiles, false},
                                                   {"emf", TextId::EmfFiles, false},
                                                   {"pdf", TextId::PdfFiles, true}});

const FormatRow& RowOf(ExportFormat format) {
  return Formats[static_cast<std::size_t>(format)];
}

std::optional<ExportFormat> FormatWithExtension(std::string_view extension) {
  for (std::size_t i = 0; i < Formats.size(); ++i) {
    if (EqualIgnoringCase(Formats[i].Extension, extension)) return static_cast<ExportFormat>(i);
  }
  return std::nullopt;
}

std::optional<ExportFormat> FormatOfFile(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::nullopt : FormatWithExtension(name.substr(dot + 1));
}

std::vector<std::string> NamesOfFiles(const std::string& fileName, ExportFormat format, std::size_t pages) {
  std::vector<std::string> names;
  for (std::size_t page = 0; page < (RowOf(format).HoldsPages ? 1 : pages); ++page) {
    names.push_back(PageFileName(fileName, page));
  }
  return names;
}

void FrameToBounds(DisplayList& drawing) {
  for (std::size_t page = 0; page < drawing.Pages().size(); ++page) {
    std::optional<Box> bounds = BoundsOf(drawing, page);
    if (!bounds) continue;  // an empty page stays as it is
    bounds->Grow(BoundsMarginMm);
    drawing.FramePage(page, {bounds->Left, bounds->Top}, bounds->Width(), bounds->Height());
  }
}

class Memory : public ByteSink {
 public:
  void Write(std::string_view bytes) override { Bytes += bytes; }
  std::string Bytes{};
};

}  // namespace

std::optional<double> DpiOf(std::string_view text) {
  try {
    const Evaluation result = Evaluate(Trim(text));
    const bool isUsable = result.HasValue && result.Complete;
    if (isUsable && result.Value >= LeastDpi && result.Value <= MostDpi) return result.Value;
  } catch (const ScriptFault&) {
  }
  return std::nullopt;
}

void ExportCommands::ReadChoices() {
  const Configuration& kept = settings_.Values();
  ExportChoices choices;
  choices.Format = FormatWithExtension(kept.OwnKey(FormatName).value_or("")).value_or(choices.Format);
  choices.OnPaper = EqualIgnoringCase(kept.OwnKey(PageName).value_or(""), PaperWord);
  choices.Dpi = DpiOf(kept.OwnKey(DpiName).value_or("")).value_or(choices.Dpi);
  choices_ = choices;
}

bool ExportCommands::AcceptChoices(int format, int page, const std::string& dpi) {
  const std::optional<double> density = DpiOf(dpi);
  if (!density) {
    app_.Tell(BoxIcon::Information, app_.Message(TextId::NotUsable, dpi));
    return false;
  }
  choices_ = {static_cast<ExportFormat>(format), page == 1, *density};
  settings_.Keep({OwnLine(FormatName, RowOf(choices_->Format).Extension),
                  OwnLine(PageName, choices_->OnPaper ? PaperWord : DrawingWord),
                  OwnLine(DpiName, NumberText(*density))});
  return true;
}

bool ExportCommands::AskChoices() {
  if (!choices_) ReadChoices();
  bool isAccepted = false;
  ExportDialog dialog;
  dialog.Caption = "Vaxel   " + app_.Message(TextId::ExportCaption);
  dialog.FormatLabel = app_.Message(TextId::ExportFormat);
  for (const FormatRow& row : Formats) dialog.Formats.push_back(app_.Message(row.Files));
  dialog.Format = static_cast<int>(choices_->Format);
  dialog.PageLabel = app_.Message(TextId::ExportPage);
  dialog.Pages = {app_.Message(TextId::ExportDrawing), app_.Message(TextId::ExportPaper)};
  dialog.Page = choices_->OnPaper ? 1 : 0;
  dialog.DpiLabel = app_.Message(TextId::ExportDpi);
  dialog.DpiText = NumberText(choices_->Dpi);
  dialog.OnButton = [&](int format, int page, const std::string& dpi) {
    return isAccepted = AcceptChoices(format, page, dpi);
  };
  app_.Dialogs.ShowExport(dialog);
  return isAccepted;
}

std::string ExportCommands::AskName() {
  const FormatRow& row = RowOf(choices_->Format);
  const std::string extension(row.Extension);
  FileDialog dialog;
  dialog.DefaultExtension = extension;
  dialog.Filter = app_.Message(row.Files) + " (*." + extension + ")|*." + extension + "|";
  dialog.Folder = FolderOf(script_.CurrentFile);
  dialog.FileName = DocumentNameOf(script_.CurrentFile);
  std::string name = app_.Dialogs.ShowSave(dialog);
  if (name.empty()) return name;
  if (const std::optional<ExportFormat> named = FormatOfFile(name)) {
    choices_->Format = *named;
    return name;
  }
  // A picture under the extension of something else, of a script for one, would be neither. The dialog has
  // not asked about this name.
  name += "." + extension;
  std::error_code ignored;
  const bool isThere = std::filesystem::exists(PathOf(name), ignored);
  const bool mayWrite = !isThere || app_.AskYesNo(app_.Message(TextId::ReplaceFile, name), SafeAnswer::No);
  return mayWrite ? name : std::string();
}

std::optional<FileRun> ExportCommands::Draw(const RunTarget& target) {
  std::optional<FileRun> run = runs_.RunForFile(target);
  if (run && run->Drawing.Size() == 0) {
    app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToExport));
    run.reset();
  }
  return run;
}

// The area is the window's, so that what counts from its corners lies as it does there.
std::optional<FileRun> ExportCommands::DrawToBounds() {
  const GraphicArea area = app_.Window.Graphic();
  RunTarget target;
  target.WidthMm = area.WidthPx * area.PixelMm;
  target.HeightMm = area.HeightPx * area.PixelMm;
  std::optional<FileRun> run = Draw(target);
  if (run) FrameToBounds(run->Drawing);
  return run;
}

std::optional<FileRun> ExportCommands::DrawOnPaper(const std::string& fileName) {
  const PrinterChoice& printer = runs_.Printer();
  Result<RunTarget> target = app_.Printers.Target(printer);
  const Result<PrinterSheet> portrait = app_.Printers.Sheet(printer, false);
  const Result<PrinterSheet> landscape = app_.Printers.Sheet(printer, true);
  if (!target || !portrait || !landscape) {
    const Failure why = !target ? target.Why() : !portrait ? portrait.Why() : landscape.Why();
    TellNotWritten(fileName, why);
    return std::nullopt;
  }
  target->Kind = TargetKind::Printer;
  std::optional<FileRun> run = Draw(*target);
  for (std::size_t page = 0; run && page < run->Drawing.Pages().size(); ++page) {
    const bool isTurned = std::abs(run->Drawing.Pages()[page].Width - target->WidthMm) > 0.01;
    const PrinterSheet& sheet = isTurned ? *landscape : *portrait;
    run->Drawing.FramePage(page, {-sheet.LeftMm, -sheet.TopMm}, sheet.WidthMm, sheet.HeightMm);
  }
  return run;
}

bool ExportCommands::MayWrite(const std::vector<std::string>& names, const FileRun& run) {
  const auto refuses = [&](const std::string& name, const std::string& input, TextId reason) {
    if (input.empty() || !AreSameFile(PathOf(name), PathOf(input))) return false;
    app_.Tell(BoxIcon::Critical, app_.Message(reason, name));
    return true;
  };
  for (const std::string& name : names) {
    if (refuses(name, script_.CurrentFile, TextId::ExportOverScript)) return false;
    for (const std::string& input : run.FilesRead) {
      if (refuses(name, input, TextId::ExportOverInput)) return false;
    }
  }
  // The dialog has asked about the first.
  std::string present;
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (FileExists(names[i])) present += names[i] + "\n";
  }
  return present.empty() || app_.AskYesNo(app_.Message(TextId::ReplaceFiles, present), SafeAnswer::No);
}

bool ExportCommands::IsStopped() {
  app_.Window.ProcessEvents();
  return runs_.IsAbortRequested();
}

void ExportCommands::TellNotWritten(const std::string& fileName, const Failure& why) {
  app_.Tell(BoxIcon::Critical, app_.Message(TextId::CannotWrite, fileName, app_.Message(why)));
}

Result<> ExportCommands::WritePage(const DisplayList& drawing, std::size_t page, ByteSink& sink) {
  if (choices_->Format == ExportFormat::Png)
    return app_.Platform.WritePng(drawing, page, choices_->Dpi, sink);
  if (choices_->Format == ExportFormat::Emf) return app_.Platform.WriteEmf(drawing, page, sink);
  SvgRenderer renderer(sink);
  PlayPage(drawing, page, renderer);
  return {};
}

// All pages are complete before the first file takes its place.
Result<> ExportCommands::WritePages(const std::vector<std::string>& names, const DisplayList& drawing) {
  std::vector<std::unique_ptr<OutputFile>> files;
  for (std::size_t page = 0; page < names.size(); ++page) {
    if (IsStopped()) return Failure{.Text = TextId::ExportStopped};
    files.push_back(std::make_unique<OutputFile>(names[page], Lasting::Redrawable));
    if (Result<> written = WritePage(drawing, page, *files.back()); !written) return written;
    if (Result<> finished = files.back()->Finish(); !finished) return finished;
  }
  for (const std::unique_ptr<OutputFile>& file : files) {
    if (Result<> committed = file->Commit(); !committed) return committed;
  }
  SweepTemporaryFiles(names);
  return {};
}

void ExportCommands::ExportTo(const std::string& fileName) {
  const std::optional<FileRun> run = choices_->OnPaper ? DrawOnPaper(fileName) : DrawToBounds();
  if (!run) return;
  const DisplayList& drawing = run->Drawing;
  const std::vector<std::string> names = NamesOfFiles(fileName, choices_->Format, drawing.Pages().size());
  if (!MayWrite(names, *run)) return;
  const std::string title = DocumentNameOf(script_.CurrentFile);
  const PdfFile pdf{fileName, title.empty() ? "Vaxel" : title};
  const Result<> written = choices_->Format == ExportFormat::Pdf
                               ? WritePdf(app_, drawing, pdf, [this] { return IsStopped(); })
                               : WritePages(names, drawing);
  if (!written) TellNotWritten(fileName, written.Why());
}

void ExportCommands::Export() {
  if (app_.Editor.IsEmpty()) return app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToExport));
  if (!AskChoices()) return;
  const std::string name = AskName();
  if (name.empty()) return;
  if (choices_->Format == ExportFormat::Pdf && app_.Printers.PdfPrinter().empty())
    return app_.Tell(BoxIcon::Critical, app_.Message(TextId::NoPdfPrinter));
  runs_.WhileBusy([&] { ExportTo(name); });
}

void ExportCommands::CopyDrawing() {
  if (app_.Editor.IsEmpty()) return app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToExport));
  // Counted from the end: the window need not have kept all pages.
  const DisplayList* const shown = runs_.Drawing();
  const std::size_t fromEnd = shown ? shown->Pages().size() - runs_.ShownPage() : 1;
  runs_.WhileBusy([&] {
    const std::optional<FileRun> run = DrawToBounds();
    if (!run) return;
    const std::size_t pages = run->Drawing.Pages().size(), page = pages - std::min(pages, fromEnd);
    Memory emf, png;
    if (const Result<> made = app_.Platform.WriteEmf(run->Drawing, page, emf); !made)
      return app_.Tell(BoxIcon::Critical, app_.Message(made.Why()));
    // A drawing can be too large for pixels alone.
    if (!app_.Platform.WritePng(run->Drawing, page, CopyDpi, png)) png.Bytes.clear();
    if (!app_.Platform.CopyPicture(emf.Bytes, png.Bytes))
      app_.Tell(BoxIcon::Critical, app_.Message(TextId::ClipboardUnusable));
  });
}

}  // namespace vaxel
