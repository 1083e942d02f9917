#include "app/tool_bar.h"

#include <array>

#include "app/app_context.h"

namespace vaxel {
namespace {

using enum MenuId;

constexpr auto Buttons = std::to_array<ToolRow>({
    {ToolIcon::Run, Mnu_Visualiser, TextId::RunScript},
    {ToolIcon::Stop, Nowhere, TextId::StopRun},
    {ToolIcon::Fit, Mnu_Ajuster},
    {ToolIcon::Print, Mnu_Imprimer},
    {ToolIcon::Export, Mnu_Exporter},
});

}  // namespace

std::span<const ToolRow> ToolRows() {
  return Buttons;
}

std::string ToolText(const AppContext& app, const ToolRow& row) {
  if (row.Item == Nowhere) return app.MenuText(row.Text);
  const MenuRow& item = MenuRowOf(row.Item);
  std::string text = app.MenuText(row.Text == TextId::None ? item.Caption : row.Text);
  std::erase(text, '&');
  const std::string key = KeyText(item);
  return key.empty() ? text : text + " (" + key + ")";
}

}  // namespace vaxel
