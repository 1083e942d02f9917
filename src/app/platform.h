// What else the application asks of the system that it runs on.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/byte_sink.h"
#include "base/result.h"
#include "drawing/display_list.h"
#include "drawing/draw_surface.h"

namespace vaxel {

class Printers {
 public:
  virtual ~Printers() = default;
  // The name of the current printer; it is empty when there is none.
  virtual std::string CurrentPrinter() = 0;
  // What a run is told of the printer, with its page in portrait.
  virtual Result<RunTarget> Target(const std::string& printer) = 0;
  // Prints all pages at true size as one document and ends it.
  virtual Result<> Print(const std::string& printer, const std::string& documentName,
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
  // Of the language in which the system speaks to its user: "fr" or "fr-CA".
  virtual std::string LanguageCode() = 0;
  // Today's date as the user's short dates are written.
  virtual std::string Today() = 0;
  // The number of this process, and whether a process of some number runs this program.
  virtual std::uint32_t ProcessId() = 0;
  virtual bool IsRunning(std::uint32_t processId) = 0;
  virtual void SetWorkingFolder(const std::string& folder) = 0;
  // Opens the help file, or where there is no viewer for it the manual, at a word, which may be empty. The
  // result says whether something was opened.
  virtual bool OpenHelp(const std::string& helpFile, const std::string& word) = 0;
  // What measures fonts and decodes pictures for a screen or a printer; both may be null.
  virtual TextMeasurer* Measurer() = 0;
  virtual PictureDecoder* Decoder() = 0;
  // These write a page as a file.
  virtual Result<> WritePng(const DisplayList& drawing, std::size_t page, ByteSink& sink) = 0;
  virtual Result<> WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) = 0;
};

}  // namespace vaxel
