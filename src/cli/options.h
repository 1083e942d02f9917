// What vaxel-render is asked to do, and the status that it ends with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/user_texts.h"
#include "drawing/draw_surface.h"
#include "drawing/sheet_layout.h"
#include "interpreter/script_files.h"

namespace vaxel {

enum class OutputFormat : std::uint8_t { Svg, Pdf, Png, List };

struct OutputRequest {
  std::string FileName;  // "-": standard output
  OutputFormat Format = OutputFormat::Svg;
  TargetKind Target = TargetKind::Screen;
};

struct SizeMm {
  double Width = 0, Height = 0;
};

// What vaxel-render was asked to do.
struct RenderOptions {
  std::string Script;  // a file's name; "-": standard input
  std::vector<OutputRequest> Outputs;
  SizeMm Area{200, 200};  // of the screen
  SizeMm Page{210, 297};  // of the paper, in portrait
  double Zoom = 1;
  double Zmm = 1;
  std::optional<double> Dpi;
  SheetOptions Sheets;  // of PDF files, still without a label; when they add something all outputs are such
  std::vector<std::pair<std::string, std::string>> Variables;  // "%Name" and its value
  std::vector<std::string> Answers;                            // to the script's questions, in order
  bool GoOnAtDepth = false;  // a file that is included too deep is left out, instead of ending the run
  std::optional<double> MaxSeconds;
  bool Strict = false;  // notices are errors
  FileRights Rights;    // of the script
};

// How the program ends.
enum class ExitStatus : std::uint8_t {
  Drawn = 0,
  ScriptFailed = 1,
  WrongUsage = 2,
  FileFailed = 3,
  Interrupted = 130
};

// The options of a command line without the program's name, in UTF-8. There are none when there is nothing to
// draw, and status is then what to end with; what was asked for (help, the version) or what is wrong has then
// been printed.
std::optional<RenderOptions> ReadOptions(std::vector<std::string> arguments, const UserTexts& texts,
                                         ExitStatus& status);

}  // namespace vaxel
