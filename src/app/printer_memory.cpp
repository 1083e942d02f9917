#include "app/printer_memory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"

namespace vaxel {
namespace {

constexpr std::string_view PrinterKey = "Imprimante", PaperKey = "PapierImprimante";
constexpr std::string_view OrientationKey = "OrientationImprimante", CalibrationKey = "Calibrage";
constexpr std::string_view LandscapeWord = "Paysage", PortraitWord = "Portrait";
constexpr std::size_t MostCalibrations = 99;
constexpr char FieldMark = '|';

// The first parts of a text, the last of them with all that is left.
template <std::size_t Count>
std::array<std::string, Count> Parts(std::string_view text, char separator) {
  std::array<std::string, Count> parts;
  for (std::size_t i = 0; i < Count; ++i) {
    const std::size_t end = i + 1 < Count ? text.find(separator) : std::string_view::npos;
    parts[i] = Trim(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return parts;
}

std::string CalibrationKeyOf(std::size_t index) {
  return std::string(CalibrationKey) + std::to_string(index + 1);
}

// "1.0032|0.9987|2026-11-22|210x297|Printer": the name comes last, as it may hold anything.
std::string TextOf(const KeptCalibration& kept) {
  std::string text;
  for (const std::string& part :
       {NumberText(kept.Factors.X), NumberText(kept.Factors.Y), kept.Date, kept.Paper}) {
    text += part + FieldMark;
  }
  return text + kept.Printer;
}

std::optional<KeptCalibration> ReadCalibration(std::string_view text) {
  auto [x, y, date, paper, printer] = Parts<5>(text, FieldMark);
  const Calibration factors{LeadingNumber(x), LeadingNumber(y)};
  if (!IsPlausible(factors) || paper.empty() || printer.empty()) return std::nullopt;
  return KeptCalibration{std::move(printer), std::move(paper), factors, std::move(date)};
}

std::string WholeMillimetres(double length) {
  return FixedText(std::round(length), 0);
}

// "256 100 150": the number of the paper and, of one without a number, its size.
PrinterChoice ReadPaper(std::string_view text) {
  const auto [number, width, height] = Parts<3>(text, ' ');
  constexpr double mostNumbers = 32767, mostMillimetres = 3276;
  const auto within = [](const std::string& part, double most) {
    return std::clamp(LeadingNumber(part), 0.0, most);
  };
  PrinterChoice choice;
  choice.Paper = static_cast<int>(within(number, mostNumbers));
  choice.PaperWidthMm = within(width, mostMillimetres);
  choice.PaperHeightMm = within(height, mostMillimetres);
  return choice;
}

}  // namespace

std::string PaperNameOf(const PrinterSheet& sheet) {
  const auto [shorter, longer] = std::minmax(sheet.WidthMm, sheet.HeightMm);
  return WholeMillimetres(shorter) + "x" + WholeMillimetres(longer);
}

std::string FactorsText(const Calibration& factors) {
  return "x " + FixedText(factors.X, 4) + ", y " + FixedText(factors.Y, 4);
}

void PrinterMemory::Read() {
  const Configuration& kept = settings_.Values();
  calibrations_.clear();
  for (std::size_t i = 0; i < MostCalibrations; ++i) {
    const std::optional<std::string> line = kept.OwnKey(CalibrationKeyOf(i));
    if (!line) break;
    // One that is wrong leaves its place, which the next one takes.
    calibrations_.push_back(ReadCalibration(*line).value_or(KeptCalibration{}));
  }
  lastPrinter_.reset();
  const std::string name = kept.OwnKey(PrinterKey).value_or("");
  if (name.empty()) return;
  lastPrinter_ = ReadPaper(kept.OwnKey(PaperKey).value_or(""));
  lastPrinter_->Name = name;
  lastPrinter_->IsLandscape = EqualIgnoringCase(kept.OwnKey(OrientationKey).value_or(""), LandscapeWord);
}

void PrinterMemory::Keep(const PrinterChoice& printer) {
  lastPrinter_ = printer;
  std::string paper = std::to_string(printer.Paper);
  if (printer.PaperWidthMm > 0)
    paper += " " + NumberText(printer.PaperWidthMm) + " " + NumberText(printer.PaperHeightMm);
  settings_.Keep({OwnLine(PrinterKey, printer.Name), OwnLine(PaperKey, paper),
                  OwnLine(OrientationKey, printer.IsLandscape ? LandscapeWord : PortraitWord)});
}

const KeptCalibration* PrinterMemory::Find(const std::string& printer, const std::string& paper) const {
  const auto found = std::ranges::find_if(calibrations_, [&](const KeptCalibration& kept) {
    return kept.Printer == printer && kept.Paper == paper;
  });
  const bool isThere = found != calibrations_.end() && found->Factors != Calibration{};
  return isThere ? &*found : nullptr;
}

void PrinterMemory::Keep(const KeptCalibration& calibration) {
  auto place = std::ranges::find_if(calibrations_, [&](const KeptCalibration& kept) {
    return kept.Printer == calibration.Printer && kept.Paper == calibration.Paper;
  });
  if (place == calibrations_.end())
    place = std::ranges::find(calibrations_, std::string(), &KeptCalibration::Printer);
  if (place == calibrations_.end()) {
    // The one that is kept longest makes room.
    if (calibrations_.size() == MostCalibrations) calibrations_.erase(calibrations_.begin());
    calibrations_.emplace_back();
    place = calibrations_.end() - 1;
  }
  *place = calibration;
  std::vector<ConfigurationLine> lines;
  for (std::size_t i = 0; i < calibrations_.size(); ++i) {
    lines.push_back(OwnLine(CalibrationKeyOf(i), TextOf(calibrations_[i])));
  }
  settings_.Keep(lines);
}

}  // namespace vaxel
