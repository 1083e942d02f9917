#include "app/print_commands.h"

#include <algorithm>
#include <utility>

#include "app/code_pages.h"
#include "app/print_preview.h"
#include "base/number_text.h"
#include "base/text.h"
#include "drawing/drawing_fault.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// The number of an entry, which may be an expression.
std::optional<double> EntryValue(std::string_view text) {
  try {
    const Evaluation result = Evaluate(Trim(text));
    if (result.HasValue && result.Complete) return result.Value;
  } catch (const ScriptFault&) {
  }
  return std::nullopt;
}

std::string Plain(std::string caption) {
  std::erase(caption, '&');
  return caption;
}

// The first name that begins with what was typed, else the first that holds it.
std::size_t FindName(const std::vector<std::string>& names, std::string_view typed) {
  const std::string wanted = UpperCase(typed);
  std::size_t holding = names.size();
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::size_t place = UpperCase(names[i]).find(wanted);
    if (place == 0) return i;
    if (place != std::string::npos) holding = std::min(holding, i);
  }
  return holding < names.size() ? holding : 0;
}

}  // namespace

std::optional<double> PrinterZoomOf(std::string_view text) {
  const std::optional<double> value = EntryValue(text);
  return value == 0.0 ? 1.0 : FieldValue(text);
}

void PrintCommands::Begin() {
  PrinterMemory& memory = desk_.Memory();
  memory.Read();
  const std::optional<PrinterChoice>& last = memory.LastPrinter();
  if (last && app_.Printers.HasPrinter(last->Name)) runs_.UsePrinter(*last);
}

void PrintCommands::ChoosePrinter() {
  const std::optional<PrinterEntry> entry = app_.Dialogs.ShowPrinter(runs_.Printer());
  if (!entry) return;
  desk_.Use(*entry);
  if (settings_.Values().PatchFlags[PatchPrintsAtOnce]) Print();
}

// What was answered for the paper is not asked again for the screen.
void PrintCommands::PrintAt(double zoom) {
  runs_.WhileBusy([&] {
    std::vector<std::string> answers;
    bool isPrinted = false;
    const std::optional<PrintDevice> device = desk_.Open();
    if (device) {
      std::optional<DisplayList> drawing = runs_.RunOnPrinter(device->Target, zoom, answers);
      const auto sheets = drawing ? desk_.Compose(*device, std::move(*drawing)) : std::nullopt;
      isPrinted = sheets && desk_.Send(*device, *sheets, desk_.DocumentName());
    }
    runs_.RunOnScreenAgain(answers);
    if (isPrinted) desk_.ShowPrinted(*device);
  });
}

void PrintCommands::Print() {
  PrintAt(1);
}

void PrintCommands::PrintWithZoom() {
  InputDialog dialog;
  dialog.Title = "Vaxel";
  dialog.Prompt = app_.Message(TextId::PrintZoomFactor);
  dialog.Proposal = NumberText(printerZoom_);
  dialog.OnOk = [this](const std::string& text) {
    if (PrinterZoomOf(text)) return true;
    app_.TellNotUsable(text);
    return false;
  };
  const std::optional<std::string> answer = app_.Dialogs.AskText(dialog);
  const std::optional<double> zoom = answer ? PrinterZoomOf(*answer) : std::nullopt;
  if (!zoom) return;
  printerZoom_ = *zoom;
  PrintAt(*zoom);
}

void PrintCommands::SendCode(const PrintDevice& device) {
  CodeLayout layout;
  layout.WidthMm = device.Target.IsTurned ? device.Target.HeightMm : device.Target.WidthMm;
  layout.HeightMm = device.Target.IsTurned ? device.Target.WidthMm : device.Target.HeightMm;
  layout.Face.Name = app_.Editor.FontName();
  const double points = settings_.Values().CodeFontSize;
  layout.Points = points > 0 ? points : UsualCodeFontSize;
  layout.HasColour = device.Upright.HasColour;
  layout.FileName = script_.CurrentFile.empty() ? app_.Message(TextId::NewScript) : script_.CurrentFile;
  layout.Date = app_.Platform.Today();
  layout.Foot = [this](std::size_t page, std::size_t pages) {
    return app_.Message(TextId::CodePageFoot, std::to_string(page), std::to_string(pages));
  };
  layout.Measurer = app_.Platform.Measurer();
  DisplayList pages;
  try {
    pages = CodePages(app_.Editor.Text(), layout);
  } catch (const DrawingFault&) {
    return app_.Tell(BoxIcon::Critical, app_.Message(TextId::CodeTooLong));
  }
  const std::optional<DisplayList> sheets = desk_.Compose(device, std::move(pages));
  if (sheets && desk_.Send(device, *sheets, desk_.DocumentName())) desk_.ShowPrinted(device);
}

void PrintCommands::PrintCode() {
  if (app_.Editor.IsEmpty()) return app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToPrint));
  runs_.WhileBusy([this] {
    if (const std::optional<PrintDevice> device = desk_.Open()) SendCode(*device);
  });
}

void PrintCommands::ListFonts() {
  FontsDialog dialog;
  dialog.Names = app_.Printers.Fonts(runs_.Printer());
  if (dialog.Names.empty())
    return app_.Tell(BoxIcon::Information, app_.Message(TextId::NoFonts, runs_.PrinterName()));
  dialog.Caption = "Vaxel   " + app_.Message(TextId::PrinterFonts, runs_.PrinterName());
  dialog.FindLabel = app_.Message(TextId::FontSearch);
  dialog.Button = app_.Message(TextId::FontInsert);
  dialog.CloseButton = app_.Message(TextId::SearchClose);
  dialog.Sample = "0123456789 \u03A9 \u00B5 \u00B0";
  dialog.OnFind = [&dialog](const std::string& typed) { return FindName(dialog.Names, typed); };
  dialog.OnChosen = [this, &dialog](std::size_t name) {
    app_.Editor.ReplaceSelection("Police = " + dialog.Names[name]);
  };
  app_.Dialogs.ShowFonts(dialog);
}

void PrintCommands::Preview() {
  PrintPreview preview(app_, runs_, desk_);
  preview.Show(previewEntry_);
}

CalibrationSheet PrintCommands::MakeSheet(const PrintDevice& device) const {
  const std::vector<std::string> notes = {desk_.PrinterText(device),
                                          desk_.CalibrationText(device) + " (" + app_.Platform.Today() + ")"};
  return MakeCalibrationSheet(device.Target.WidthMm, device.Target.HeightMm, notes, app_.Platform.Measurer());
}

bool PrintCommands::PrintCalibrationSheet(const PrintDevice& device, const CalibrationSheet& sheet) {
  bool isPrinted = false;
  runs_.WhileBusy([&] {
    const std::optional<DisplayList> sheets = desk_.Compose(device, sheet.Drawing, {});
    isPrinted = sheets && desk_.Send(device, *sheets, app_.Message(TextId::CalibrationName));
    if (isPrinted) desk_.ShowPrinted(device);
  });
  return isPrinted;
}

// The sheet was printed with the factor in force, which what was measured then corrects.
std::optional<double> PrintCommands::AskFactor(TextId prompt, double nominalMm, double inForce) {
  const auto factorOf = [=](const std::string& text) -> std::optional<double> {
    const std::optional<double> measured = EntryValue(text);
    const std::optional<double> factor = measured ? CalibrationFactor(nominalMm, *measured) : std::nullopt;
    if (!factor || !IsPlausible({*factor * inForce, 1})) return std::nullopt;
    return *factor * inForce;
  };
  const std::string nominal = NumberText(nominalMm);
  InputDialog dialog;
  dialog.Title = Plain(app_.Message(TextId::CalibrationName));
  dialog.Prompt = app_.Message(prompt, nominal);
  dialog.Proposal = nominal;
  dialog.OnOk = [&](const std::string& text) {
    if (factorOf(text)) return true;
    app_.Tell(BoxIcon::Information, app_.Message(TextId::CalibrationUnlikely, text, nominal));
    return false;
  };
  const std::optional<std::string> answer = app_.Dialogs.AskText(dialog);
  return answer ? factorOf(*answer) : std::nullopt;
}

void PrintCommands::Calibrate() {
  std::optional<PrintDevice> device = desk_.Open();
  if (!device) return;
  // It is measured as it stands upright, whatever way pages lie otherwise.
  device->Target.IsTurned = device->Printer.IsLandscape = false;
  const CalibrationSheet sheet = MakeSheet(*device);
  if (sheet.NominalX == 0 || sheet.NominalY == 0)
    return desk_.TellNotPrinted({.Text = TextId::PaperTooSmall});
  const std::string start =
      app_.Message(TextId::CalibrationStart, desk_.PrinterText(*device), desk_.CalibrationText(*device));
  if (!app_.Dialogs.AskOkCancel("Vaxel", start) || !PrintCalibrationSheet(*device, sheet)) return;
  const Calibration inForce = device->Calibrated ? device->Calibrated->Factors : Calibration{};
  const auto x = AskFactor(TextId::CalibrationAcross, sheet.NominalX, inForce.X);
  const auto y = x ? AskFactor(TextId::CalibrationUp, sheet.NominalY, inForce.Y) : std::nullopt;
  if (!y) return;
  constexpr std::size_t dateLength = 10;
  desk_.Memory().Keep(KeptCalibration{device->Printer.Name,
                                      PaperNameOf(device->Upright),
                                      {*x, *y},
                                      app_.Platform.TimeForNames().substr(0, dateLength)});
  std::optional<PrintDevice> calibrated = desk_.Open();
  if (!calibrated) return;
  calibrated->Target.IsTurned = calibrated->Printer.IsLandscape = false;
  const std::string kept = app_.Message(TextId::CalibrationKept, desk_.PrinterText(*calibrated),
                                        desk_.CalibrationText(*calibrated));
  if (app_.AskYesNo(kept, SafeAnswer::No)) PrintCalibrationSheet(*calibrated, MakeSheet(*calibrated));
}

}  // namespace vaxel
