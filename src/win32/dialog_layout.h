// How a dialog of our own is laid out from its texts, before a window of it exists.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "winbase/gdi_handles.h"

namespace vaxel {

// The font of dialogs, and the screen on which they appear: that of their owner, or the main one. Sizes are
// in dialog units, which follow the font and with it the screen's resolution.
class DialogFont {
 public:
  static constexpr WORD Points = 9;
  static constexpr wchar_t Face[] = L"Segoe UI";

  explicit DialogFont(HWND owner);
  // The size of a text that is broken at blanks where a line is wider. Ampersands that underline count as
  // nothing.
  SIZE Size(const std::wstring& text, int maxWidth, bool hasAccelerator) const;
  // What the screen has to offer.
  SIZE Screen() const { return screen_; }

 private:
  UniqueDc context_;
  UniqueGdi<HFONT> font_;
  SIZE base_{};  // pixels that are 4 units across and 8 units down
  SIZE screen_{};
};

// Classes of controls as the templates of dialogs name them.
enum class ControlClass : WORD { Button = 0x80, Edit = 0x81, Static = 0x82, ListBox = 0x83 };

struct DialogControl {
  ControlClass Class;
  int Id;
  std::wstring Text;
  RECT Place;  // in dialog units
  DWORD Style, ExtendedStyle = 0;
};

struct DialogSpec {
  std::wstring Caption;
  SIZE Size{};                          // in dialog units, without caption and border
  std::vector<DialogControl> Controls;  // in the order of the Tab key
};

// The same for DialogBoxIndirectParamW, without the texts of edit controls: a control lays a long text out
// again when it is given its font. FillFields sets them afterwards.
std::vector<WORD> DialogTemplate(const DialogSpec& spec);
void FillFields(HWND dialog, const DialogSpec& spec);

// The text as controls take it, which break lines at CR LF and end at NUL.
std::wstring ControlText(const std::string& text);

struct ButtonSpec {
  int Id;
  std::wstring Text;
};

// Puts controls one below the other.
class DialogBuilder {
 public:
  static constexpr int Margin = 7, Gap = 4, WideGap = 7, WidestText = 240;

  // The dialog becomes as wide as its contents, the caption and contentWidth ask for.
  DialogBuilder(const DialogFont& font, const std::wstring& caption, int contentWidth);

  // The picture stands left of all that follows.
  void AddPicture(int id);
  // The text goes over the whole width; what is too long for a screen scrolls, and words that are too long
  // are broken there. An ampersand underlines the letter after it when it stands above the field that the
  // letter goes to.
  void AddText(int id, const std::wstring& text, bool hasAccelerator = false);
  void AddField(int id, const std::wstring& text);
  // The field stands to the right of its label.
  void AddField(int labelId, const std::wstring& label, int labelWidth, int id, const std::wstring& text);
  struct Choice {
    int FrameId, FirstId;
    std::wstring Label;
  };
  // One such group over the whole width, of which all entries can be chosen.
  void AddChoice(const Choice& choice, const std::vector<std::wstring>& entries);
  // Two groups of radio buttons side by side. The last entry is shown disabled.
  void AddChoices(const Choice& left, const Choice& right, const std::vector<std::wstring>& entries);
  void AddCheck(int id, const std::wstring& label, bool isEnabled = true);
  // A line, or several, for texts that come later.
  void AddLine(int id, int lines = 1);
  // A place of this size, to the right of which all that follows stands, but for the last buttons.
  void AddPane(int id, SIZE size);
  // A list as wide as the dialog, or as what stands right of a pane. The dialog draws the entries itself, or
  // they are texts.
  enum class ListEntries { Drawn, Texts };
  void AddList(int id, int height, ListEntries entries = ListEntries::Drawn);
  // Buttons in the middle of a dialog, which share its width.
  void AddButtonRow(const std::vector<ButtonSpec>& buttons);
  // The buttons stand at the right. Enter presses the one with the id, or, when there is none, the first.
  void AddButtons(const std::vector<ButtonSpec>& buttons, int defaultId = 0);

  DialogSpec Finish();

 private:
  void Add(ControlClass controlClass, int id, const std::wstring& text, RECT place, DWORD style,
           DWORD extendedStyle = 0);
  int Below(int height, int gap);
  void AddScrollingText(int id, const std::wstring& text, int height);
  int WidestWord(const std::wstring& text) const;
  int AddGroup(const Choice& choice, const std::vector<std::wstring>& entries, RECT frame,
               bool isLastDisabled);
  int WidthOf(const std::wstring& text) const;

  const DialogFont& font_;
  DialogSpec spec_;
  int left_ = Margin, width_, top_ = Margin, bottom_ = 0;
};

}  // namespace vaxel
