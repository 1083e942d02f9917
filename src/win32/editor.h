// The script editor on Windows.
#pragma once

#include <windows.h>
// These need what windows.h declares.
#include <richedit.h>
#include <tom.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/application.h"
#include "app/script_editor.h"
#include "win32/window_class.h"
#include "winbase/gdi_handles.h"
#include "winbase/handles.h"

namespace vaxel {

// The script editor (RTB1), a rich edit control of plain text. The lines of a long script get their colours
// when they are first seen.
class EditorWin32 : public ScriptEditor {
 public:
  EditorWin32(HINSTANCE instance, HWND parent, FailureHandler onFailure);

  void Attach(Application& application) { application_ = &application; }
  HWND Window() const { return window_; }
  void SetDpi(UINT dpi);
  // The control tells its parent of both.
  void TextChanged();
  void SelectionChanged();

  std::string Text() override;
  bool IsEmpty() override;
  void SetText(std::string_view text) override;
  void ReplaceSelection(std::string_view text) override;
  void ReplaceLine(std::size_t line, std::string_view text) override;
  EditorPlace Place() override;
  void GoToLine(std::size_t line) override;
  std::string WordAtCursor() override;
  void SetTypingColour(Colour colour) override;
  void ColourLine(std::size_t line) override;
  void ColourAll() override;
  void SetFontSize(double points) override;

 private:
  class Unnoticed;
  using Clock = std::chrono::steady_clock;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR editor);
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam);
  bool TakesKey(WPARAM key);
  void Paste();

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }
  LRESULT Send(UINT message, WPARAM wParam, const void* data) const {
    return Send(message, wParam, reinterpret_cast<LPARAM>(data));
  }
  CHARRANGE Selection() const;
  void Select(CHARRANGE range) const { Send(EM_EXSETSEL, 0, &range); }
  // The range of a line counted from 0; for a line after the last it is the end of the text.
  CHARRANGE RangeOfLine(std::size_t line) const;
  // The lines are counted from 0.
  struct LineRange {
    std::size_t First = 0, Last = 0;
    bool operator==(const LineRange&) const = default;
  };
  LineRange VisibleLines() const;
  std::wstring TextOf(CHARRANGE range) const;
  std::wstring WholeText() const;
  void SetFormat(WPARAM scope, const CHARFORMAT2W& format) const { Send(EM_SETCHARFORMAT, scope, &format); }
  void SetColour(CHARRANGE range, Colour colour) const;
  // Colours the lines of a part of the text, which begins with one, and returns where the time was over.
  LONG ColourLines(std::wstring_view text, LONG begin, Clock::time_point until) const;
  void ColourSeen();

  FailureHandler onFailure_;
  UniqueLibrary library_;
  HWND window_ = nullptr;
  UniqueCom<ITextDocument> document_;
  Application* application_ = nullptr;
  int unnoticed_ = 0;              // how many are at work
  std::optional<LONG> pending_;    // from where on the colours are yet to come
  std::optional<LineRange> seen_;  // the lines beyond that place which were coloured last
};

}  // namespace vaxel
