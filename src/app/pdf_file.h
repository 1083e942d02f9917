// PDF files, which the system's own PDF printer writes.
#pragma once

#include <functional>
#include <string>

#include "app/app_context.h"
#include "base/result.h"
#include "drawing/display_list.h"

namespace vaxel {

struct PdfFile {
  std::string Name;          // of the file, which is replaced when a whole one is there
  std::string DocumentName;  // its title
};

// Prints all pages into one file and waits until it is complete: the system goes on writing when the program
// has handed over the last page. isStopped is asked meanwhile, and lets the user end the waiting.
Result<> WritePdf(AppContext& app, const DisplayList& drawing, const PdfFile& file,
                  const std::function<bool()>& isStopped);

}  // namespace vaxel
