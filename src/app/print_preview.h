// The pages as they will come out, and printing them from there.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/print_desk.h"
#include "app/run_cycle.h"

namespace vaxel {

class PrintPreview {
 public:
  // All must outlive it.
  PrintPreview(AppContext& app, RunCycle& runs, PrintDesk& desk) : app_(app), runs_(runs), desk_(desk) {}

  // Runs the script for the printer and shows what comes of it. The entry is proposed, and then what the user
  // has left.
  void Show(PreviewEntry& entry);

 private:
  bool Draw();
  // Makes the sheets of an entry. One that is wrong leaves them and says why.
  PreviewPages PagesOf(const PreviewEntry& entry);
  std::optional<SheetOptions> OptionsOf(const PreviewEntry& entry, std::string& problem) const;
  std::vector<PaperOutline> OutlinesOf(const DisplayList& sheets) const;
  std::optional<PreviewPages> ChangePrinter(const PreviewEntry& entry);
  bool Print();

  AppContext& app_;
  RunCycle& runs_;
  PrintDesk& desk_;
  std::optional<PrintDevice> device_;
  std::shared_ptr<const DisplayList> drawing_, sheets_;
  std::vector<std::string> answers_;
};

}  // namespace vaxel
