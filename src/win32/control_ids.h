// By which numbers the window's controls and commands are known to Windows.
#pragma once

namespace vaxel {

inline constexpr int EditorId = 1001;   // RTB1
inline constexpr int GraphicId = 1002;  // Picture1
inline constexpr int Text1Id = 1003, Text2Id = 1004;

// Of MenuId, and of the recent files, counted from there on.
inline constexpr int FirstCommandId = 100;
inline constexpr int FirstRecentId = 200;

inline constexpr int IconId = 1;

}  // namespace vaxel
