// The dialogs that the application shows. Each takes its texts and gives back what the user entered; what
// that means is decided in the application.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/paper_outline.h"
#include "drawing/display_list.h"
#include "render/printer_choice.h"

namespace vaxel {

enum class BoxIcon : std::uint8_t { Information, Critical };

enum class YesNoCancel : std::uint8_t { Yes, No, Cancel };

// The answer to a question that loses nothing. Enter gives it, and Escape where there is no Cancel: who does
// not read must not lose anything by it.
enum class SafeAnswer : std::uint8_t { Yes, No };

// A common file dialog. One that opens takes files that are there, one that saves asks before it takes such a
// file. The filter is a list of descriptions and patterns, each followed by "|".
struct FileDialog {
  std::string Filter;
  std::string Folder;            // where it starts; empty: where it likes
  std::string FileName;          // proposed
  std::string DefaultExtension;  // put after a name without one
  bool TakesSeveral = false;     // files at once, where it opens
};

// OnOk says whether the dialog closes; else it stays with the entry selected. Without OnOk it closes.
struct InputDialog {
  std::string Title, Prompt, Proposal;
  std::function<bool(const std::string& text)> OnOk = nullptr;
};

enum class ZoomField : std::uint8_t { Factor, Zmm };

// Form4. OnButton takes both fields as they stand. The dialog closes, unless it names the field whose entry
// is to be typed anew.
struct ZoomDialog {
  std::string Caption;
  std::string FactorLabel, FactorText;  // Text1
  std::string ZmmLabel, ZmmText;        // Text2
  std::string Button;
  std::function<std::optional<ZoomField>(const std::string& factor, const std::string& zmm)> OnButton;
};

// Form5. OnButton says whether the dialog closes.
struct ReferenceDialog {
  std::string Caption, Label, Text, Button;
  std::function<bool(const std::string& text)> OnButton;
};

// Form3: Option1 and Option2, an entry per language. What is chosen is told at once, from 1, and stays chosen
// when OnButton follows.
struct LanguageDialog {
  std::string Caption, MessagesLabel, HelpLabel, Button;
  std::vector<std::string> Languages;
  std::string LastEntry, LastEntryHint;  // an entry that cannot be chosen
  int Messages = 0, Help = 0;            // chosen at the beginning, from 1; 0: none
  std::function<void(int)> OnMessages, OnHelp;
  std::function<void()> OnButton;
};

// What is looked for in the script, and what shall stand there instead.
struct SearchEntry {
  std::string Wanted, Replacement;
  bool MatchesCase = false, WholeWords = false;
  bool InSelection = false;  // of the text that was selected when the dialog opened
};

// Finding and replacing. The dialog stays while its buttons work and shows what they say.
struct SearchDialog {
  using Action = std::function<std::string(const SearchEntry& entry)>;
  struct Button {
    std::string Caption;
    Action OnPressed;
  };

  std::string Caption;
  std::string WantedLabel, ReplacementLabel, CaseLabel, WordsLabel, SelectionLabel;
  SearchEntry Entry;  // proposed
  bool HasSelection = false;
  std::vector<Button> Buttons;  // the first one is what Enter presses
  std::string CloseButton;
};

// How a drawing is exported. OnButton takes the numbers of the entries that are chosen, from 0, and the
// field as it stands, and says whether the dialog closes.
struct ExportDialog {
  std::string Caption;
  std::string FormatLabel, PageLabel;
  std::vector<std::string> Formats, Pages;
  int Format = 0, Page = 0;  // chosen at the beginning
  std::string DpiLabel, DpiText;
  std::function<bool(int format, int page, const std::string& dpi)> OnButton;
};

// What a user says to the system's printer dialog.
struct PrinterEntry {
  PrinterChoice Printer;
  std::size_t Copies = 1;
  bool Collates = false;            // a whole document after the other
  std::size_t First = 0, Last = 0;  // the pages that are wanted, from 1; 0: all
};

// The fonts of a printer. OnFind tells the number of the name that fits what was typed, OnChosen takes the
// number of one that was clicked twice or whose button was pressed; the dialog then closes.
struct FontsDialog {
  std::string Caption, FindLabel, Button, CloseButton;
  std::string Sample;              // shown in each font behind its name
  std::vector<std::string> Names;  // at least one
  std::function<std::size_t(const std::string& typed)> OnFind;
  std::function<void(std::size_t name)> OnChosen;
};

// The fields of a preview as they stand.
struct PreviewEntry {
  bool CropMarks = false, Ruler = false, IsMirrored = false;
  std::string Copies = "1", Gap = "5";
};

// What a preview shows: the pages as they come out, in millimetres of the area that can be printed on.
struct PreviewPages {
  std::shared_ptr<const DisplayList> Drawing;  // with at least one page
  std::vector<PaperOutline> Sheets;            // one a page
  std::string Printer, Calibration;            // as they are told
  std::string Problem;                         // what is wrong with the entry; empty: nothing
};

// OnEntry makes the pages anew for another entry, OnPrinter asks for another printer first, and OnPrint
// prints what is shown. The dialog closes when that says so.
struct PreviewDialog {
  std::string Caption;
  std::string CropMarksLabel, RulerLabel, MirrorLabel, CopiesLabel, GapLabel;
  std::string PrintButton, PrinterButton, CloseButton;
  std::string PreviousButton, NextButton, LargerButton, SmallerButton, WholeButton;
  // "Page 2/3" of a page's number, from 0, and how many there are.
  std::function<std::string(std::size_t page, std::size_t pages)> PageText;
  PreviewEntry Entry;
  PreviewPages Pages;
  std::function<PreviewPages(const PreviewEntry& entry)> OnEntry;
  std::function<std::optional<PreviewPages>(const PreviewEntry& entry)> OnPrinter;
  std::function<bool()> OnPrint;
};

// Templates of new scripts by their names, of which there is at least one. OnShow draws one, with a sheet a
// page that fits the drawing closely, and what is wrong with it as the problem. OnChosen takes the number of
// the one that was clicked twice or whose button was pressed; the dialog then closes.
struct TemplatesDialog {
  std::string Caption, Label, Button;
  std::vector<std::string> Names;
  std::function<PreviewPages(std::size_t place)> OnShow;
  std::function<void(std::size_t place)> OnChosen;
};

struct AboutDialog {
  std::string Title, Text;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual void ShowMessage(BoxIcon icon, const std::string& title, const std::string& text) = 0;
  virtual YesNoCancel AskYesNoCancel(const std::string& title, const std::string& text, SafeAnswer safe) = 0;
  virtual bool AskYesNo(const std::string& title, const std::string& text, SafeAnswer safe) = 0;
  virtual bool AskOkCancel(const std::string& title, const std::string& text) = 0;
  // The text that was entered; there is none when the dialog was cancelled.
  virtual std::optional<std::string> AskText(const InputDialog& dialog) = 0;
  // The chosen names with their folders; there are none when the dialog was cancelled.
  virtual std::vector<std::string> ShowOpen(const FileDialog& dialog) = 0;
  virtual std::string ShowSave(const FileDialog& dialog) = 0;
  // The colour with red in the low byte; there is none when the dialog was cancelled.
  virtual std::optional<std::uint32_t> ShowColour() = 0;
  virtual void ShowZoom(const ZoomDialog& dialog) = 0;
  virtual void ShowReference(const ReferenceDialog& dialog) = 0;
  virtual void ShowLanguages(const LanguageDialog& dialog) = 0;
  virtual void ShowSearch(const SearchDialog& dialog) = 0;
  virtual void ShowExport(const ExportDialog& dialog) = 0;
  // The system's dialog; there is nothing when it was cancelled.
  virtual std::optional<PrinterEntry> ShowPrinter(const PrinterChoice& present) = 0;
  virtual void ShowFonts(const FontsDialog& dialog) = 0;
  virtual void ShowPreview(const PreviewDialog& dialog) = 0;
  virtual void ShowTemplates(const TemplatesDialog& dialog) = 0;
  virtual void ShowAbout(const AboutDialog& dialog) = 0;
};

}  // namespace vaxel
