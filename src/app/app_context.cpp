#include "app/app_context.h"

#include <utility>

namespace vaxel {
namespace {

constexpr std::string_view Credit = "mm × mm";

}  // namespace

void AppContext::WriteLines(const std::vector<ConfigurationLine>& lines) {
  if (!Config) return;
  const std::string error = Config->WriteKeys(lines);
  if (error.empty() || std::exchange(IsConfigFailureTold, true)) return;
  Tell(BoxIcon::Information, Message(text_id::ConfigNotWritten, Config->Name() + " (" + error + ")"));
}

void AppContext::UpdateTitle() {
  Window.SetTitle("Vaxel  V" + State.VersionText + "  (" + std::string(Credit) + ")   " +
                  Message(text_id::FileWord) + ": " + State.CurrentFile);
}

void AppContext::ShowPlace() {
  const EditorPlace place = Editor.Place();
  Window.SetStatus(StatusField::Text1, "L " + std::to_string(place.Line) + "/" + std::to_string(place.Lines));
}

}  // namespace vaxel
