// The numbers by which Windows knows the controls and commands of the main window.
#pragma once

namespace vaxel {

inline constexpr int EditorId = 1001;   // RTB1
inline constexpr int GraphicId = 1002;  // Picture1
// The fields of the status line, in the order of StatusField.
inline constexpr int Text1Id = 1003, Text2Id = 1004, ZoomId = 1005, PageId = 1006, ReadingId = 1007,
                     MessageId = 1008;
inline constexpr int ToolBarId = 1009;

// The commands of MenuId and the recent files are counted from here on.
inline constexpr int FirstCommandId = 100;
inline constexpr int FirstRecentId = 200;
inline constexpr int StopId = 300;  // the tool bar's button that ends a run

inline constexpr int IconId = 1;

}  // namespace vaxel
