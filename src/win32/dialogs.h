// The application's dialogs on Windows.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/dialogs.h"
#include "drawing/picture.h"

namespace vaxel {

struct Box;
struct DialogForm;

// What stands on the buttons of our dialogs and boxes; dialogs for files and colours are the system's, and
// speak its language.
struct ButtonTexts {
  std::string Ok = "OK", Cancel = "Cancel", Yes = "&Yes", No = "&No";
};

// All dialogs are modal to the dialog that is open, else to the main window. That window may be disabled, and
// then still is when they have ended; it may be hidden or none, as it is while the program starts.
class DialogsWin32 : public Dialogs {
 public:
  // decoder, which previews need for their pictures, must outlive the object.
  DialogsWin32(HINSTANCE instance, std::function<HWND()> owner, std::function<ButtonTexts()> buttons = {},
               PictureDecoder* decoder = nullptr);

  void ShowMessage(BoxIcon icon, const std::string& title, const std::string& text) override;
  YesNoCancel AskYesNoCancel(const std::string& title, const std::string& text, SafeAnswer safe) override;
  bool AskYesNo(const std::string& title, const std::string& text, SafeAnswer safe) override;
  bool AskOkCancel(const std::string& title, const std::string& text) override;
  std::optional<std::string> AskText(const InputDialog& dialog) override;
  std::vector<std::string> ShowOpen(const FileDialog& dialog) override;
  std::string ShowSave(const FileDialog& dialog) override;
  std::optional<std::uint32_t> ShowColour() override;
  void ShowZoom(const ZoomDialog& dialog) override;
  void ShowReference(const ReferenceDialog& dialog) override;
  void ShowLanguages(const LanguageDialog& dialog) override;
  void ShowSearch(const SearchDialog& dialog) override;
  void ShowExport(const ExportDialog& dialog) override;
  std::optional<PrinterEntry> ShowPrinter(const PrinterChoice& present) override;
  void ShowFonts(const FontsDialog& dialog) override;
  void ShowPreview(const PreviewDialog& dialog) override;
  void ShowTemplates(const TemplatesDialog& dialog) override;
  void ShowAbout(const AboutDialog& dialog) override;

 private:
  HWND Owner() const;
  ButtonTexts Buttons() const { return buttons_ ? buttons_() : ButtonTexts(); }
  // Shows a box and returns the id of the button that ended it.
  int ShowBox(const Box& box);
  int Run(const DialogForm& form);

  HINSTANCE instance_;
  std::function<HWND()> owner_;
  std::function<ButtonTexts()> buttons_;
  PictureDecoder* decoder_;
  std::vector<HWND> open_;  // our own dialogs, the uppermost last
  std::array<COLORREF, 16> customColours_;
  COLORREF lastColour_ = 0;
};

}  // namespace vaxel
