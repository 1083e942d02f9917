// The script editor on Windows.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/script_editor.h"
#include "win32/editor_colours.h"
#include "win32/editor_margin.h"
#include "win32/rich_text.h"
#include "win32/text_tip.h"
#include "win32/theme.h"
#include "win32/window_class.h"
#include "winbase/handles.h"

namespace vaxel {

// The script editor (RTB1), a rich edit control of plain text, with its margin. A long text comes into the
// control in slices while nothing else is to do; whoever asks for the text gets all of it at any time.
class EditorWin32 : public ScriptEditor {
 public:
  EditorWin32(HINSTANCE instance, HWND parent, FailureHandler onFailure);

  void Attach(Application& application) { application_ = &application; }
  HWND Window() const { return window_; }
  HWND MarginWindow() const { return margin_.Window(); }
  // Adds the places of margin and control within the box to what the parent's windows are moved by.
  HDWP Place(HDWP moves, const RECT& box) const;
  void SetVisible(bool isVisible);
  void SetDpi(UINT dpi);
  void SetTheme(const Theme& theme);
  // The control tells its parent of both.
  void TextChanged();
  void SelectionChanged();
  void MarkLines(std::vector<std::size_t> lines) { margin_.MarkLines(std::move(lines)); }
  // The box of a place's line, on the screen.
  RECT LineBox(std::size_t place) const;
  // Whether the TAB key is the command that moves lines.
  bool HasLinesSelected() const;

  std::string Text() override;
  bool IsEmpty() override;
  std::size_t Size() override;
  void SetText(std::string_view text) override;
  void ReplaceSelection(std::string_view text) override;
  void ReplaceLines(std::size_t first, const std::vector<std::string>& lines) override;
  EditorPlace Place() override;
  EditorRange Selection() override;
  void Select(EditorRange range) override;
  EditorRange RangeOfLines(std::size_t first, std::size_t last) override;
  std::size_t LineAt(std::size_t place) override;
  std::string TextOf(EditorRange range) override;
  void Replace(EditorRange range, std::string_view text) override;
  void Undo() override;
  void Redo() override;
  void Cut() override;
  void Copy() override;
  void Paste() override;
  void GoToLine(std::size_t line) override;
  void TakeKeys() override { SetFocus(window_); }
  std::string WordAtCursor() override;
  void SetTypingColour(Colour colour) override;
  void SetSurvey(const ScriptSurvey* survey) override;
  void ColourLine(std::size_t line) override;
  void ColourAll() override;
  std::string FontName() override;
  void SetFontSize(double points) override;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  bool TakesKey(WPARAM key);
  bool TakesCharacter(WPARAM character);
  void TurnWheel(WPARAM wParam);
  void EndStep();
  void AfterCharacter(WPARAM character);
  void AfterDoubleClick();
  void BeforeTyping(WPARAM character);
  void ColourNewLines();
  void MarkParentheses();
  void FollowPointer(UINT message, LPARAM lParam);
  void ExplainWordAt(POINT pixel);

  // The lines in the control, which takes milliseconds to count many.
  std::size_t LineCount();

  // The text that is not in the control yet.
  bool IsLoading() const { return restAt_ < rest_.size(); }
  void LoadSlice(std::size_t lines);
  void LoadWhileIdle();
  // At least up to this place or line, counted from 0, and some lines behind it.
  void LoadToPlace(std::size_t place);
  void LoadToLine(std::size_t line);

  FailureHandler onFailure_;
  UniqueLibrary library_;
  HWND window_ = nullptr;
  WNDPROC control_ = nullptr;  // what handles its messages by itself
  RichText text_;
  EditorColours colours_{text_};
  EditorMargin margin_;
  std::optional<TextTip> tip_;
  CHARRANGE explained_{};  // the word that it is about
  Application* application_ = nullptr;
  std::optional<std::size_t> counted_;  // the lines, until the text may have changed
  std::size_t lines_ = 1;               // when the text was changed last
  std::size_t cursorLine_ = 0;          // that the margin shows
  DWORD lastTyped_ = 0;                 // when, in milliseconds
  Colour plainInk_ = Black;
  std::optional<std::size_t> paired_;  // the line in which parentheses are marked
  int wheel_ = 0;                      // what was turned with Ctrl and is less than a notch
  std::wstring rest_;
  std::size_t restAt_ = 0;     // what lies before is in the control
  std::size_t restLines_ = 0;  // line ends behind it
  std::size_t sliceLines_ = 0;
};

}  // namespace vaxel
