// The scripts that were opened or saved last, which the menu offers and the settings keep.
#pragma once

#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/settings.h"

namespace vaxel {

class RecentFiles {
 public:
  // Both must outlive it.
  RecentFiles(AppContext& app, Settings& settings) : app_(app), settings_(settings) {}

  // Takes those of the settings. To be called at start-up, once the settings are read.
  void Begin();
  // Puts a name first and writes the list at once: a program that is ended keeps it, and one that runs beside
  // this one does not lose its own names.
  void Remember(const std::string& fileName);
  // The newest first, MostRecentFiles at most.
  const std::vector<std::string>& Names() const { return names_; }

 private:
  AppContext& app_;
  Settings& settings_;
  std::vector<std::string> names_;
};

}  // namespace vaxel
