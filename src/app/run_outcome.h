// What the status line says of a run when it is over.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/app_context.h"
#include "interpreter/run.h"

namespace vaxel {

struct RunOutcome {
  RunEnd End = RunEnd::Empty;
  std::chrono::milliseconds Took{};  // without the time in which it waited for the user
  std::size_t Elements = 0;          // that it has drawn, on all pages
  std::uint32_t Line = 0;            // of the main script, where it ended
};

std::string MessageOf(const RunOutcome& outcome, const AppContext& app);

}  // namespace vaxel
