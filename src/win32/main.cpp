#include <windows.h>
// These need what windows.h declares.
#include <objbase.h>
#include <shellapi.h>

#include <exception>
#include <memory>
#include <string>

#include "app/application.h"
#include "win32/dialogs.h"
#include "win32/main_window.h"
#include "win32/platform.h"
#include "win32/printers.h"
#include "winbase/safe_process.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

class ComScope {
 public:
  ComScope() : result_(OleInitialize(nullptr)) {}
  ~ComScope() {
    if (SUCCEEDED(result_)) OleUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  HRESULT result_;
};

// The first parameter; it is empty when there is none.
std::string ScriptOfCommandLine() {
  int count = 0;
  struct Free {
    void operator()(wchar_t** list) const { LocalFree(list); }
  };
  const std::unique_ptr<wchar_t*, Free> parameters(CommandLineToArgvW(GetCommandLineW(), &count));
  return parameters && count > 1 ? Narrow(parameters.get()[1]) : std::string();
}

int Run(HINSTANCE instance) {
  const ComScope com;
  Application* running = nullptr;
  const auto nudgesRightAngles = [&running] {
    return running && running->Options().Values().PatchFlags[PatchTurnedFonts];
  };
  PlatformWin32 platform(nudgesRightAngles);
  PrintersWin32 printers(*platform.Decoder(), nudgesRightAngles);
  MainWindowWin32 window(instance, platform.Decoder());
  const auto buttons = [&running] {
    const auto text = [&running](TextId id) { return running->Message(id); };
    return running ? ButtonTexts{text(TextId::Ok), text(TextId::Cancel), text(TextId::Yes), text(TextId::No)}
                   : ButtonTexts{};
  };
  DialogsWin32 dialogs(
      instance, [&window] { return window.Window(); }, buttons, platform.Decoder());
  Application application({window, window.Editor(), dialogs, printers, platform, window});
  running = &application;
  window.Attach(application);

  const StartOptions options = {VAXEL_MAJOR,     VAXEL_MINOR,     VAXEL_REVISION,
                                WorkingFolder(), ProgramFolder(), ScriptOfCommandLine()};
  bool isStarted = false;
  const bool hasFailed = !window.Guarded([&] { isStarted = application.Start(options); });
  // One that is open already stays so: a script that cannot be drawn can be changed, and would otherwise keep
  // the program from starting the next time too.
  const bool isOpen = isStarted || (hasFailed && IsWindowVisible(window.Window()));
  return isOpen ? window.RunMessages() : 1;
}

}  // namespace
}  // namespace vaxel

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
  vaxel::GuardProcess();
  try {
    return vaxel::Run(instance);
  } catch (const std::exception& failure) {
    // Nothing is there yet that could tell it in the user's language.
    vaxel::DialogsWin32(instance, nullptr).ShowMessage(vaxel::BoxIcon::Critical, "Vaxel", failure.what());
    return 1;
  }
}
