// What else the application asks of the system that it runs on.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "base/byte_sink.h"
#include "base/result.h"
#include "drawing/display_list.h"
#include "drawing/draw_surface.h"
#include "render/printer_choice.h"

namespace vaxel {

// The sheet of a printer around the area that it can print on, in millimetres.
struct PrinterSheet {
  double WidthMm = 0, HeightMm = 0;
  double LeftMm = 0, TopMm = 0;  // of that area, from the sheet's upper-left corner
  bool HasColour = true;         // the printer has
};

struct PrintOrder {
  PrinterChoice Printer;
  std::string DocumentName;
  std::vector<std::size_t> Pages;  // those to be printed, from 0, in their order
};

// Printing into a file that the program names.
struct FilePrint {
  std::string Printer, DocumentName, FileName;
};

class Printers {
 public:
  virtual ~Printers() = default;
  // The name of the current printer; it is empty when there is none.
  virtual std::string CurrentPrinter() = 0;
  // Whether there is a printer of this name, without asking the printer.
  virtual bool HasPrinter(const std::string& name) = 0;
  // What a run is told of the printer.
  virtual Result<RunTarget> Target(const PrinterChoice& printer) = 0;
  // Prints pages at true size as one document; the user's calling it off is a failure without a reason.
  virtual Result<> Print(const PrintOrder& order, const DisplayList& drawing) = 0;
  // The sheet in portrait, or in landscape.
  virtual Result<PrinterSheet> Sheet(const PrinterChoice& printer, bool isLandscape) = 0;
  // The names of the fonts that the printer has or takes, sorted. There are none without the printer.
  virtual std::vector<std::string> Fonts(const PrinterChoice& printer) = 0;
  // The name of the printer whose documents are PDF files; it is empty when there is none.
  virtual std::string PdfPrinter() = 0;
  // Has a printer write all pages at true size into a file, each in the middle of a sheet of the paper that
  // suits them best. The file may be complete only some time later.
  virtual Result<> PrintToFile(const FilePrint& print, const DisplayList& drawing) = 0;
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
  // The folder for what programs keep for this user, with its last separator; it need not be there yet. It is
  // empty where the system names none.
  virtual std::string UserDataFolder() = 0;
  // Whether files can be made in the folder.
  virtual bool CanWriteIn(const std::string& folder) = 0;
  // The local time as the names of files can hold it, "2026-11-22 14.05".
  virtual std::string TimeForNames() = 0;
  // Opens the help file, or where there is no viewer for it the manual, at a word, which may be empty. The
  // result says whether something was opened.
  virtual bool OpenHelp(const std::string& helpFile, const std::string& word) = 0;
  // The names of the fonts that scripts can use, sorted.
  virtual std::vector<std::string> FontNames() = 0;
  // What measures fonts and decodes pictures for a screen or a printer; both may be null.
  virtual TextMeasurer* Measurer() = 0;
  virtual PictureDecoder* Decoder() = 0;
  // These write a page as a file.
  virtual Result<> WritePng(const DisplayList& drawing, std::size_t page, double dpi, ByteSink& sink) = 0;
  virtual Result<> WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) = 0;
  // Puts one picture on the clipboard, as the bytes of an EMF file and, unless they are empty, of a PNG file.
  // The result says whether that could be done.
  virtual bool CopyPicture(const std::string& emf, const std::string& png) = 0;
};

}  // namespace vaxel
