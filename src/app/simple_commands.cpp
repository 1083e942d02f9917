#include "app/simple_commands.h"

#include <cstdint>
#include <optional>

#include "interpreter/colour_value.h"

namespace vaxel {

void CentreCursor(AppContext& app) {
  const ScreenRectangle area = app.Window.EditorRectangle();
  app.Window.MovePointer({(area.Left + area.Right) / 2, (area.Top + area.Bottom) / 2});
}

void InsertColour(AppContext& app) {
  const std::optional<std::uint32_t> colour = app.Dialogs.ShowColour();
  if (colour) app.Editor.ReplaceSelection(ColourText(*colour));
}

void ShowAbout(AppContext& app) {
  app.Dialogs.ShowAbout({"Vaxel", "Vaxel\n" + app.Message(TextId::AboutText) + "\n\n" +
                                      app.Message(TextId::AboutVersion, app.VersionText) + "\n" +
                                      app.Message(TextId::AboutSystem, app.Platform.SystemDescription())});
}

void ShowHelp(AppContext& app, const std::string& helpFile, const std::string& word) {
  if (!app.Platform.OpenHelp(helpFile, word))
    app.Tell(BoxIcon::Information, app.Message(TextId::NoHelp, helpFile));
}

}  // namespace vaxel
