#include "app/recent_files.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace vaxel {
namespace {

void AddUnlessThere(std::vector<std::string>& names, const std::string& name) {
  const auto isIt = [&](const std::string& other) { return EqualIgnoringCase(name, other); };
  if (names.size() < MostRecentFiles && std::none_of(names.begin(), names.end(), isIt)) names.push_back(name);
}

}  // namespace

void RecentFiles::Begin() {
  names_ = settings_.RecentFiles();
  app_.Window.SetRecentFiles(names_);
}

void RecentFiles::Remember(const std::string& fileName) {
  const std::vector<std::string> kept = settings_.ReadRecentFiles();
  std::vector<std::string> names = {fileName};
  for (const std::string& name : kept) AddUnlessThere(names, name);
  // They are lacking there when they could not be written.
  for (const std::string& name : names_) AddUnlessThere(names, name);
  names_ = std::move(names);
  app_.Window.SetRecentFiles(names_);
  if (names_ != kept) settings_.WriteRecentFiles(names_);
}

}  // namespace vaxel
