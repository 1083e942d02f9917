// What the main window offers the application, apart from its editor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/graphic_view.h"
#include "app/menu_table.h"
#include "app/paper_outline.h"
#include "app/rulers.h"
#include "app/tool_bar.h"
#include "base/point.h"
#include "drawing/display_list.h"
#include "drawing/operation_search.h"

namespace vaxel {

enum class PointerShape : std::uint8_t { Normal, Hourglass, Cross };

// The fields of the status line, from the left: Text1 and Text2 tell the cursor's line and the pointer's
// place, the others how large the drawing is shown, which page of it, what is measured at the pointer, and
// what came of the last run.
enum class StatusField : std::uint8_t { Text1, Text2, Zoom, Page, Reading, Message };
inline constexpr std::size_t StatusFields = 6;

// What is being measured: a line between two places of the graphic area, in its pixels, and its figures.
struct MeasuringLine {
  Point From, To;
  std::string Text;
};

// What screen readers tell apart.
enum class WindowPart : std::uint8_t { Editor, Margin, Drawing, Aid, Offers };

// Screen coordinates in pixels, y downward.
struct ScreenPoint {
  int X = 0, Y = 0;
};
struct ScreenRectangle {
  int Left = 0, Top = 0, Right = 0, Bottom = 0;
};

// The window when it is not maximised, in screen pixels, and whether it is.
struct WindowPlace {
  ScreenRectangle Frame;
  bool IsMaximised = false;
};

class MainWindow {
 public:
  virtual ~MainWindow() = default;

  // To be called at start-up, once it is known what the window looks like; until then it is hidden.
  virtual void Show() = 0;
  virtual void SetTitle(std::string_view title) = 0;
  virtual void SetCaption(MenuId item, std::string_view caption) = 0;
  virtual void SetChecked(MenuId item, bool isChecked) = 0;
  virtual void SetItemEnabled(MenuId item, bool isEnabled) = 0;
  virtual void SetToolText(ToolIcon button, std::string_view text) = 0;
  virtual void SetToolBarShown(bool isShown) = 0;
  virtual void SetToolTip(StatusField field, std::string_view text) = 0;
  // What screen readers call a part.
  virtual void SetPartName(WindowPart part, std::string_view name) = 0;
  virtual void SetStatus(StatusField field, std::string_view text) = 0;
  virtual void SetRecentFiles(const std::vector<std::string>& names) = 0;

  virtual void SetPointer(PointerShape shape) = 0;
  // A disabled window takes no keys and no mouse, save Escape.
  virtual void SetWindowEnabled(bool isEnabled) = 0;
  // Handles the events that are pending now, and returns.
  virtual void ProcessEvents() = 0;
  // Closes the window without asking the application again.
  virtual void Close() = 0;
  virtual WindowPlace Place() = 0;
  // A place outside all screens is brought back onto one.
  virtual void SetPlace(const WindowPlace& place) = 0;

  virtual GraphicArea Graphic() = 0;
  // Where on the screen the editor is, or the graphic area when the editor is hidden.
  virtual ScreenRectangle EditorRectangle() = 0;
  virtual void MovePointer(ScreenPoint place) = 0;
  // Sets the width of the editor in units of 1/96 inch; 0 hides it.
  virtual void SetEditorWidth(int width) = 0;

  // Shows a page of the drawing, from 0, at once. The drawing lives until another is shown.
  virtual void ShowDrawing(const DisplayList& drawing, std::size_t page) = 0;
  // Shows the last page while a run is under way: the drawing grows, and what would take long may be left
  // out.
  virtual void ShowDrawingSoFar(const DisplayList& drawing) = 0;
  // Whether the drawing is that of an older text: it is shown paler.
  virtual void SetDrawingOld(bool isOld) = 0;
  // Marks elements of the page that is shown, in the window alone. Places are millimetres of the page.
  virtual void SetHalo(std::vector<OperationOutline> outlines) = 0;
  // Shows a text beside the pointer until that moves; an empty one hides it.
  virtual void ShowTip(std::string_view text) = 0;
  virtual void ShowMeasuring(const std::optional<MeasuringLine>& line) = 0;
  // Whether the user has pressed a key or a button that was not handled yet.
  virtual bool HasInput() = 0;
  // Asks for Application::TypingPaused once the user has not typed for a moment.
  virtual void AwaitPause() = 0;
  // Shows the drawing enlarged and moved.
  virtual void SetView(const GraphicView& view) = 0;
  // The sheet of paper that is shown behind the page, and the rulers at the edges of the graphic area.
  virtual void SetSheet(const std::optional<PaperOutline>& sheet) = 0;
  virtual void SetRulers(const std::optional<Rulers>& rulers) = 0;
};

}  // namespace vaxel
