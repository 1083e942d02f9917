#include "tests/win32/dialog_driver.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

namespace vaxel {

ShownDialog AwaitDialog(const std::string& caption) {
  std::optional<ShownDialog> found;
  Await("a dialog", [&] { return (found = FindDialog(GetCurrentProcessId(), caption)).has_value(); });
  return *found;
}

void Drive(const std::function<void()>& show, const std::function<void(const ShownDialog&)>& drive) {
  std::atomic<bool> isShown = true;
  std::thread driver([&] {
    try {
      drive(AwaitDialog());
      Await("the end of the dialog", [&] { return !isShown; });
    } catch (const DriveFailure& failure) {
      ADD_FAILURE() << failure.what();
    }
    while (isShown) {
      if (const auto open = FindDialog(GetCurrentProcessId())) EndDialog(open->Window(), IDCANCEL);
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  });
  show();
  isShown = false;
  driver.join();
}

}  // namespace vaxel
