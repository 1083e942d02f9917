// What else the application asks of the system that it runs on.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "base/byte_sink.h"
#include "drawing/display_list.h"
#include "drawing/draw_surface.h"

namespace vaxel {

class Printers {
 public:
  virtual ~Printers() = default;
  // The current printer; empty when there is none.
  virtual std::string CurrentPrinter() = 0;
  // Its page in portrait; none, with the reason, when it cannot be asked.
  virtual std::optional<RunTarget> Target(const std::string& printer, std::string& error) = 0;
  // Prints all pages at true size as one document and ends it. The reason when that failed, else "".
  virtual std::string Print(const std::string& printer, const std::string& documentName,
                            const DisplayList& drawing) = 0;
};

class Platform {
 public:
  virtual ~Platform() = default;
  virtual std::chrono::steady_clock::time_point Now() = 0;
  virtual bool IsCtrlDown() = 0;
  virtual bool IsNtFamily() = 0;
  // "Windows 10 …", for the About box.
  virtual std::string SystemDescription() = 0;
  // Today's date as the user's short dates are written.
  virtual std::string Today() = 0;
  // Of this process, and whether a process of that number runs this program.
  virtual std::uint32_t ProcessId() = 0;
  virtual bool IsRunning(std::uint32_t processId) = 0;
  virtual void SetWorkingFolder(const std::string& folder) = 0;
  // Opens the help file, or where there is no viewer for it the manual, at a word (may be empty). Whether
  // something was opened.
  virtual bool OpenHelp(const std::string& helpFile, const std::string& word) = 0;
  // Fonts and pictures for a screen or a printer; may be null.
  virtual TextMeasurer* Measurer() = 0;
  virtual PictureDecoder* Decoder() = 0;
  // A page as a file. The reason when that failed, else "".
  virtual std::string WritePng(const DisplayList& drawing, std::size_t page, ByteSink& sink) = 0;
  virtual std::string WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) = 0;
};

}  // namespace vaxel
