#include "app/app_context.h"

namespace vaxel {

void AppContext::ShowPlace() {
  const EditorPlace place = Editor.Place();
  Window.SetStatus(StatusField::Text1, "L " + std::to_string(place.Line) + "/" + std::to_string(place.Lines));
}

}  // namespace vaxel
