// The variables that tell of the run's own state: %ZOOM, %DATE and the like.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "interpreter/variables.h"

namespace vaxel {

struct RunContext;

bool IsSystemVariable(std::string_view name);
// Their names in upper case.
std::span<const std::string_view> SystemVariableNames();

// The values as they are now, with the current script level's file. The context must outlive the object.
class RunVariables : public SystemVariables {
 public:
  explicit RunVariables(const RunContext& run) : run_(run) {}

  std::optional<std::string> Find(std::string_view name) const override;

 private:
  const RunContext& run_;
};

}  // namespace vaxel
