#include "cli/outputs.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text.h"
#include "render/cairo_module.h"
#include "render/list_renderer.h"
#include "render/svg_renderer.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

constexpr double PngDpi = 300;

// Writes one page, or the whole list in the formats that hold several.
WriteResult WriteFormat(const RenderOptions& options, const OutputRequest& output, const DisplayList& list,
                        std::size_t page, Machine& machine, ByteSink& sink) {
  const PlayWatch goOn = [&](std::size_t) { return machine.Host.Watch.Signal() == RunSignal::GoOn; };
  switch (output.Format) {
    case OutputFormat::Svg: {
      SvgRenderer renderer(sink);
      PlayPage(list, page, renderer, goOn);
      return {};
    }
    case OutputFormat::List: {
      ListRenderer renderer(sink);
      PlayAll(list, renderer, goOn);
      return {};
    }
    case OutputFormat::Pdf:
    case OutputFormat::Png:
      break;
  }
  const Result<const CairoFunctions*> cairo = LoadCairo();
  if (!cairo) return {cairo.Why()};
  if (output.Format == OutputFormat::Pdf)
    return (*cairo)->WritePdf(list, {Title(options), SourceDate()}, &machine.Decoder, sink);
  return (*cairo)->WritePng(list, page, options.Dpi.value_or(PngDpi), &machine.Decoder, sink);
}

// Whether writing to one name would change what is read from the other. "-" stands for the standard streams.
bool WouldOverwrite(const std::string& output, const std::string& input) {
  if (output == "-") return input != "-" && IsOpenAs(stdout, PathOf(input));
  return input == "-" ? IsOpenAs(stdin, PathOf(output)) : AreSameFile(PathOf(output), PathOf(input));
}

// A name under which two outputs would meet; it is empty for a device, which takes several.
std::string PlaceOf(const std::string& name) {
  if (name == "-") return name;
  std::error_code ignored;
  const std::filesystem::path target = TargetOf(name);
  const std::filesystem::file_status status = std::filesystem::status(target, ignored);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) return {};
#ifdef _WIN32
  return UpperCase(NameOf(target));
#else
  return NameOf(target);
#endif
}

// Tells of the first two outputs that would write one file.
bool RefusesSameFile(const std::vector<PlannedFile>& plan, const UserTexts& texts) {
  std::map<std::string, const PlannedFile*> places;
  const bool usesStandard =
      std::any_of(plan.begin(), plan.end(), [](const PlannedFile& file) { return file.Name == "-"; });
  for (const PlannedFile& file : plan) {
    std::string place = PlaceOf(file.Name);
    if (place.empty()) continue;
    if (usesStandard && file.Name != "-" && IsOpenAs(stdout, PathOf(file.Name))) place = "-";
    const auto [known, isNew] = places.try_emplace(std::move(place), &file);
    if (isNew) continue;
    Complain(texts.Fill(TextId::CliSameOutput, known->second->Output->FileName, file.Output->FileName));
    return true;
  }
  return false;
}

// Why nothing more is to be written, which is told where that was not done yet.
ExitStatus EndsEarly(const Machine& machine) {
  const RunSignal signal = machine.Host.Watch.Signal();
  if (signal == RunSignal::Abort) return ExitStatus::Interrupted;
  if (signal == RunSignal::TimeUp) Complain(std::string(machine.Texts.Get(TextId::TimeUp)));
  const bool isRefused = signal == RunSignal::TimeUp || machine.Host.HasRefused();
  return isRefused ? ExitStatus::ScriptFailed : ExitStatus::Drawn;
}

ExitStatus TellNotWritten(const std::string& name, const Failure& why, const UserTexts& texts) {
  const std::string shown = DisplayName(name, texts.Get(TextId::CliStandardOutput));
  Complain(texts.Fill(TextId::CliCannotWrite, shown, texts.Get(why)));
  return ExitStatus::FileFailed;
}

// Outputs that are being made.
class Writing {
 public:
  explicit Writing(Machine& machine) : machine_(machine) {
    machine.Host.Watch.BeginWriting([&machine] { Complain(std::string(machine.Texts.Get(TextId::TimeUp))); });
  }
  ~Writing() { machine_.Host.Watch.EndWriting(); }
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

  // Makes one file, beside its place.
  ExitStatus Make(const RenderOptions& options, const PlannedFile& planned, const DisplayList& list) {
    files_.push_back({&planned, std::make_unique<OutputFile>(planned.Name, Lasting::Redrawable)});
    OutputFile& file = *files_.back().File;
    WriteResult result = WriteFormat(options, *planned.Output, list, planned.Page, machine_, file);
    for (const FontReplacement& font : result.Replaced) {
      machine_.Host.ShowNotice(
          "", 0,
          machine_.Texts.Strings().Text(machine_.Texts.Base(), TextId::FontReplaced, font.Wanted, font.Used));
    }
    if (const ExitStatus end = EndsEarly(machine_); end != ExitStatus::Drawn) return end;
    if (result.Outcome) result.Outcome = file.Finish();
    if (!result.Outcome) return TellNotWritten(planned.Name, result.Outcome.Why(), machine_.Texts);
    return ExitStatus::Drawn;
  }

  // Puts all of them in their places. No signal comes between two of them.
  ExitStatus PutInPlace() {
    machine_.Host.Watch.EndWriting();
    const SignalsHeld held;
    if (const ExitStatus end = EndsEarly(machine_); end != ExitStatus::Drawn) return end;
    for (const Made& made : files_) {
      if (files_.size() > 1) made.File->KeepOld();
    }
    for (std::size_t i = 0; i < files_.size(); ++i) {
      const Result<> committed = files_[i].File->Commit();
      if (committed) continue;
      TakeBack(i);
      return TellNotWritten(files_[i].Planned->Name, committed.Why(), machine_.Texts);
    }
    return ExitStatus::Drawn;
  }

 private:
  struct Made {
    const PlannedFile* Planned;
    std::unique_ptr<OutputFile> File;
  };

  // The first files, which are in their places already, when a later one cannot be.
  void TakeBack(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      if (!files_[i].File->TakeBack())
        Complain(machine_.Texts.Fill(TextId::OutputStays, files_[i].Planned->Name));
    }
  }

  Machine& machine_;
  std::vector<Made> files_;
};

}  // namespace

std::vector<PlannedFile> PlanFiles(const RenderOptions& options, const Drawings& drawings) {
  std::vector<PlannedFile> plan;
  for (const OutputRequest& output : options.Outputs) {
    const bool holdsPages = output.Format == OutputFormat::Pdf || output.Format == OutputFormat::List;
    const auto drawing = drawings.find(output.Target);
    const std::size_t files = holdsPages || drawing == drawings.end() ? 1 : drawing->second.Pages().size();
    for (std::size_t page = 0; page < files; ++page) {
      const bool isStandard = output.FileName == "-";
      plan.push_back({&output, page, isStandard ? "-" : PageFileName(output.FileName, page)});
    }
  }
  return plan;
}

bool RefusesPlan(const std::vector<PlannedFile>& plan, const Inputs& inputs, const UserTexts& texts) {
  const auto refuses = [&](const PlannedFile& file, const std::string& input, TextId reason) {
    if (!WouldOverwrite(file.Name, input)) return false;
    const std::string shown = DisplayName(input, texts.Get(TextId::CliStandardInput));
    Complain(texts.Fill(reason, file.Output->FileName, shown));
    return true;
  };
  for (std::size_t i = 0; i < plan.size(); ++i) {
    const PlannedFile& file = plan[i];
    if (refuses(file, inputs.Script, TextId::CliOverwritesScript)) return true;
    for (const std::string& input : inputs.Others) {
      // A file of the name "-" is none of the standard streams.
      if (refuses(file, input == "-" ? "./-" : input, TextId::CliOverwritesInput)) return true;
    }
    if (file.Name != "-" || file.Page == 0) continue;
    const auto pages = std::count_if(plan.begin(), plan.end(),
                                     [&](const PlannedFile& other) { return other.Output == file.Output; });
    Complain(texts.Fill(TextId::CliSeveralPages, std::to_string(pages)));
    return true;
  }
  return RefusesSameFile(plan, texts);
}

ExitStatus WriteFiles(const RenderOptions& options, const std::vector<PlannedFile>& plan,
                      const Drawings& drawings, Machine& machine) {
  // What cannot be taken back comes last.
  std::vector<const PlannedFile*> order;
  for (const PlannedFile& file : plan) order.push_back(&file);
  std::stable_partition(order.begin(), order.end(),
                        [](const PlannedFile* file) { return file->Name != "-"; });
  Writing writing(machine);
  if (const ExitStatus end = EndsEarly(machine); end != ExitStatus::Drawn) return end;
  for (const PlannedFile* const file : order) {
    const ExitStatus status = writing.Make(options, *file, drawings.at(file->Output->Target));
    if (status != ExitStatus::Drawn) return status;
  }
  const ExitStatus status = writing.PutInPlace();
  std::vector<std::string> names;
  for (const PlannedFile* const file : order) {
    if (file->Name != "-") names.push_back(file->Name);
  }
  if (status == ExitStatus::Drawn) SweepTemporaryFiles(names);
  return status;
}

}  // namespace vaxel
