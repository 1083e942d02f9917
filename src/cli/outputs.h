// The outputs of vaxel-render: which files they become, and their writing.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "cli/machine.h"
#include "cli/options.h"
#include "drawing/display_list.h"

namespace vaxel {

using Drawings = std::map<TargetKind, DisplayList>;

// One file that is to be written.
struct PlannedFile {
  const OutputRequest* Output = nullptr;  // of the options, which must live as long
  std::size_t Page = 0;                   // that it holds, from 0, in the formats that hold one
  std::string Name;                       // "-": standard output
};

// The files of all outputs. What is not drawn yet has one page.
std::vector<PlannedFile> PlanFiles(const RenderOptions& options, const Drawings& drawings);

// The files that must stay as they are.
struct Inputs {
  std::string Script;  // "-": standard input
  std::set<std::string> Others;
};

// Tells of the first file that would destroy what the script is read from or what it reads, or another file
// of the plan.
bool RefusesPlan(const std::vector<PlannedFile>& plan, const Inputs& inputs, const UserTexts& texts);

// Writes all of the files or none: they take their places together, when each is complete. Only a program
// that is killed between two of these moves, and a disk that refuses one, leave a part of them. What goes to
// standard output or to a device cannot be taken back.
ExitStatus WriteFiles(const RenderOptions& options, const std::vector<PlannedFile>& plan,
                      const Drawings& drawings, Machine& machine);

}  // namespace vaxel
