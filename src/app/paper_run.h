// A run for paper of which nobody notices anything.
#pragma once

#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/paper_outline.h"
#include "app/run_bridge.h"

namespace vaxel {

class PaperRun {
 public:
  // All must outlive it. answers: those that the script's questions have got.
  PaperRun(AppContext& app, const EditedScript& script, RunSession& session, PrinterChoice printer,
           std::vector<std::string> answers)
      : app_(app),
        script_(script),
        session_(session),
        printer_(std::move(printer)),
        answers_(std::move(answers)) {}

  // The sheets around the pages of a drawing on the screen, of which scale millimetres show one of paper:
  // where printing would put the drawing. With mayRun the script is run for that, without a question, a box
  // or a comment; else, and when that takes long or fails, the drawing's centre is taken to lie in the middle
  // of the printer's page. There are none without a printer.
  std::vector<PaperOutline> Sheets(const DisplayList& shown, double scale, bool mayRun);

 private:
  std::vector<Page> PrintedPages(RunTarget target);

  AppContext& app_;
  const EditedScript& script_;
  RunSession& session_;
  PrinterChoice printer_;
  std::vector<std::string> answers_;
};

}  // namespace vaxel
