// The drawing for other programs: as files and on the clipboard, at true size whatever the window shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/run_cycle.h"
#include "app/settings.h"

namespace vaxel {

enum class ExportFormat : std::uint8_t { Svg, Png, Emf, Pdf };

struct ExportChoices {
  ExportFormat Format = ExportFormat::Svg;
  bool OnPaper = false;  // the page is the printer's sheet, else as large as what is drawn
  double Dpi = 300;      // of PNG files
};

class ExportCommands {
 public:
  // All must outlive it.
  ExportCommands(AppContext& app, Settings& settings, RunCycle& runs, const EditedScript& script)
      : app_(app), settings_(settings), runs_(runs), script_(script) {}

  void Export();       // Mnu_Exporter
  void CopyDrawing();  // Mnu_CopierDessin

 private:
  // False when the user cancelled.
  bool AskChoices();
  bool AcceptChoices(int format, int page, const std::string& dpi);
  void ReadChoices();
  // The name of the file; it is empty when the user cancelled. The format becomes that of its extension.
  std::string AskName();
  void ExportTo(const std::string& fileName);
  // Runs whose pages are framed as those of files are. There is none when there is nothing to write, which
  // the user knows.
  std::optional<FileRun> DrawOnPaper(const std::string& fileName);
  std::optional<FileRun> DrawToBounds();
  std::optional<FileRun> Draw(const RunTarget& target);
  bool MayWrite(const std::vector<std::string>& names, const FileRun& run);
  Result<> WritePages(const std::vector<std::string>& names, const DisplayList& drawing);
  Result<> WritePage(const DisplayList& drawing, std::size_t page, ByteSink& sink);
  bool IsStopped();
  void TellNotWritten(const std::string& fileName, const Failure& why);

  AppContext& app_;
  Settings& settings_;
  RunCycle& runs_;
  const EditedScript& script_;
  std::optional<ExportChoices> choices_;  // once they were read
};

// The number of a field, which may be an expression; what is no usable density gives none.
std::optional<double> DpiOf(std::string_view text);

}  // namespace vaxel
