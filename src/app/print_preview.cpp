#include "app/print_preview.h"

#include <cmath>
#include <utility>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// The number of a field, which may be an expression, between 0 and a bound.
std::optional<double> Entered(const std::string& text, double most) {
  try {
    const Evaluation result = Evaluate(Trim(text));
    if (result.HasValue && result.Complete && result.Value >= 0 && result.Value <= most) return result.Value;
  } catch (const ScriptFault&) {
  }
  return std::nullopt;
}

std::shared_ptr<const DisplayList> Shared(std::optional<DisplayList> list) {
  return list ? std::make_shared<const DisplayList>(std::move(*list)) : nullptr;
}

}  // namespace

bool PrintPreview::Draw() {
  runs_.WhileBusy([this] {
    device_ = desk_.Open();
    drawing_.reset();
    if (device_) drawing_ = Shared(runs_.RunOnPrinter(device_->Target, 1, answers_));
  });
  return drawing_ && !drawing_->Pages().empty();
}

std::optional<SheetOptions> PrintPreview::OptionsOf(const PreviewEntry& entry, std::string& problem) const {
  const std::optional<double> copies = Entered(entry.Copies, double{MaxCopies});
  const std::optional<double> gap = Entered(entry.Gap, MaxGapMm);
  if (!copies || std::floor(*copies) != *copies || !gap) {
    problem = app_.Message(TextId::NotUsable, gap ? entry.Copies : entry.Gap);
    return std::nullopt;
  }
  SheetOptions options;
  options.CropMarks = entry.CropMarks;
  options.Ruler = entry.Ruler;
  options.Label = desk_.DocumentName() + ", " + app_.Platform.Today();
  options.Mirrored = entry.IsMirrored;
  options.Copies = static_cast<std::size_t>(*copies);
  options.GapMm = *gap;
  return options;
}

std::vector<PaperOutline> PrintPreview::OutlinesOf(const DisplayList& sheets) const {
  std::vector<PaperOutline> outlines;
  for (const Page& page : sheets.Pages())
    outlines.push_back(OutlineOf(page, 1, page, device_->SheetOf(page)));
  return outlines;
}

PreviewPages PrintPreview::PagesOf(const PreviewEntry& entry) {
  PreviewPages pages;
  if (const std::optional<SheetOptions> options = OptionsOf(entry, pages.Problem)) {
    if (auto sheets = Shared(desk_.Compose(*device_, *drawing_, *options))) sheets_ = std::move(sheets);
  }
  if (!sheets_) sheets_ = drawing_;
  pages.Drawing = sheets_;
  pages.Sheets = OutlinesOf(*sheets_);
  pages.Printer = desk_.PrinterText(*device_);
  pages.Calibration = desk_.CalibrationText(*device_);
  return pages;
}

// Another paper may have another size, so the script is run anew. Where that fails the old printer stays.
std::optional<PreviewPages> PrintPreview::ChangePrinter(const PreviewEntry& entry) {
  const std::optional<PrinterEntry> chosen = app_.Dialogs.ShowPrinter(runs_.Printer());
  if (!chosen) return std::nullopt;
  const auto device = device_;
  const auto drawing = drawing_;
  desk_.Use(*chosen);
  if (!Draw()) {
    device_ = device;
    drawing_ = drawing;
    desk_.Use({.Printer = device->Printer});
  }
  sheets_.reset();
  return PagesOf(entry);
}

bool PrintPreview::Print() {
  bool isPrinted = false;
  runs_.WhileBusy([&] { isPrinted = desk_.Send(*device_, *sheets_, desk_.DocumentName()); });
  if (isPrinted) desk_.ShowPrinted(*device_);
  return isPrinted;
}

void PrintPreview::Show(PreviewEntry& entry) {
  if (app_.Editor.IsEmpty()) return app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToPrint));
  if (!Draw()) return;
  const auto text = [this](TextId id) { return app_.Message(id); };
  PreviewDialog dialog;
  dialog.Caption = app_.Message(TextId::PreviewCaption, desk_.DocumentName());
  dialog.CropMarksLabel = text(TextId::PreviewCropMarks);
  dialog.RulerLabel = text(TextId::PreviewRuler);
  dialog.MirrorLabel = text(TextId::PreviewMirror);
  dialog.CopiesLabel = text(TextId::PreviewCopies);
  dialog.GapLabel = text(TextId::PreviewGap);
  dialog.PrintButton = text(TextId::PrintPage);
  dialog.PrinterButton = text(TextId::MenuPrinter) + "...";
  dialog.CloseButton = text(TextId::SearchClose);
  dialog.PreviousButton = text(TextId::MenuPreviousPage);
  dialog.NextButton = text(TextId::MenuNextPage);
  dialog.LargerButton = text(TextId::ZoomLarger);
  dialog.SmallerButton = text(TextId::ZoomSmaller);
  dialog.WholeButton = text(TextId::ZoomWhole);
  dialog.PageText = [this](std::size_t page, std::size_t pages) {
    return app_.Message(TextId::PageStatus, std::to_string(page + 1), std::to_string(pages));
  };
  dialog.Entry = entry;
  dialog.Pages = PagesOf(entry);
  dialog.OnEntry = [&](const PreviewEntry& changed) { return PagesOf(entry = changed); };
  dialog.OnPrinter = [this](const PreviewEntry& now) { return ChangePrinter(now); };
  dialog.OnPrint = [this] { return Print(); };
  app_.Dialogs.ShowPreview(dialog);
}

}  // namespace vaxel
