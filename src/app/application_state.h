// What the application knows, as long as the process lives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/configuration.h"
#include "base/point.h"
#include "base/text_encoding.h"

namespace vaxel {

inline constexpr std::size_t MostRecentFiles = 9;

struct ApplicationState {
  // "major.minor" and a letter for the revision, or a blank for none.
  std::string VersionText;
  std::string ProgramFolder;  // with its last separator; of the configuration, templates and help files
  std::string PrinterName;    // of the current printer
  std::string DocumentName = "Vaxel";  // under which a print job is spooled

  // The script being edited.
  std::string CurrentFile;  // full path; empty: not yet saved
  bool TextModified = false;
  std::uint64_t UserEdits = 0;     // how often the text was changed by anything but the comments of a run
  bool IsWritingComments = false;  // a run writes its comments into the text
  TextEncoding Encoding = TextEncoding::Utf8;  // in which it was loaded
  std::size_t LoadedHash = 0;                  // of the bytes of the file as they were loaded or saved
  std::string StartupFile;                     // with which the next start begins
  std::string OpenFolder;                      // where the next Open dialog begins
  std::vector<std::string> RecentFiles;        // the newest first, MostRecentFiles at most

  // The view of the drawing.
  double OffX = 0, OffY = 0;  // of the default centre from the middle, mm of the screen, y upward
  double ScreenZoom = 1;
  double NextZoom = 1;      // with which the next zoom view opens
  double Zmm = 1;           // reported millimetres of the screen that show a true one
  Point GraphicCentre;      // of the last run, drawing units from the lower-left corner
  double GraphicScale = 1;  // millimetres of the screen of one drawing unit, in the last run
  double GraphicWidthMm = 0, GraphicHeightMm = 0;  // of the graphic area, in the last run

  // The pointer and the reference point from which its place is counted, in drawing units from the
  // lower-left corner.
  float MouseX = 0, MouseY = 0;
  float RefX = 0, RefY = 0;
  float RefInX = 0, RefInY = 0;  // the reference point as it was entered, from the graphic centre

  bool AbortRequested = false;  // Escape is held down
  bool IsRunning = false;       // a run is under way

  // 1-based numbers of languages, 0: not chosen; the bases are added to the ids of texts.
  std::int16_t LangIndex = 0, LangBase = 0;          // of messages
  std::int16_t HelpLangIndex = 0, HelpLangBase = 0;  // of menus and help
  std::string HelpFile = "Vaxel.hlp";

  bool DoubleClick = false;  // Mnu_DblClick is checked
  double CodeFontSize = 0;   // points; 0: as it is
  std::int16_t Patchs = 0;   // as a number
  PatchSet PatchFlags;       // those in force; number 0 is patch 1

  bool IsEditorShown = true;
  int EditorWidth = 0;  // units of 1/96 inch, while it is shown
};

// The flags that something looks at.
inline constexpr std::size_t PatchTurnedFonts = 0;
inline constexpr std::size_t PatchPrintAtOnce = 1;

}  // namespace vaxel
