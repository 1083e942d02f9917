// A rich edit control of plain text, as places and lines.
#pragma once

#include <windows.h>
// These need what windows.h declares.
#include <richedit.h>
#include <tom.h>

#include <cstddef>
#include <string>

#include "winbase/gdi_handles.h"

namespace vaxel {

// Places are counted in UTF-16 units, a line end being one; lines from 0. The control must outlive it.
class RichText {
 public:
  RichText() = default;
  explicit RichText(HWND control);

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(control_, message, wParam, lParam);
  }
  LRESULT Send(UINT message, WPARAM wParam, const void* data) const {
    return Send(message, wParam, reinterpret_cast<LPARAM>(data));
  }

  CHARRANGE Selection() const;
  void Select(CHARRANGE range) const { Send(EM_EXSETSEL, 0, &range); }
  // For a line after the last it is the end of the text.
  CHARRANGE RangeOfLine(std::size_t line) const;
  std::size_t LineAt(LONG place) const;
  std::size_t Lines() const { return static_cast<std::size_t>(Send(EM_GETLINECOUNT)); }
  LONG Length() const;
  // Line ends are CR.
  std::wstring TextOf(CHARRANGE range) const;
  std::wstring WholeText() const;
  // Puts a text in the place of what is selected, as one step to undo.
  void ReplaceSelection(const std::wstring& text) const { Send(EM_REPLACESEL, TRUE, text.c_str()); }
  void SetFormat(WPARAM scope, const CHARFORMAT2W& format) const { Send(EM_SETCHARFORMAT, scope, &format); }

  // The lines that are seen, at least in part.
  struct LineRange {
    std::size_t First = 0, Last = 0;
    bool operator==(const LineRange&) const = default;
  };
  LineRange VisibleLines() const;

  // As long as one lives, what happens is not the user's doing: undoing does not see it, selection and scroll
  // position are as before in the end, and whoever is told of changes can ask IsUnnoticed.
  class Unnoticed {
   public:
    explicit Unnoticed(RichText& text);
    ~Unnoticed();
    Unnoticed(const Unnoticed&) = delete;
    Unnoticed& operator=(const Unnoticed&) = delete;

   private:
    RichText& text_;
    bool isSeen_;
    POINT scroll_{};
    CHARRANGE selection_{};
  };
  bool IsUnnoticed() const { return unnoticed_ > 0; }
  // For what undoing does see.
  void BeginUnnoticed() { ++unnoticed_; }
  void EndUnnoticed() { --unnoticed_; }

  void SetTabStop(float points) const;

 private:
  HWND control_ = nullptr;
  UniqueCom<ITextDocument> document_;
  int unnoticed_ = 0;  // how many are at work
};

// Line ends as the control has them, and back.
std::wstring ToControl(std::string_view text);
std::string FromControl(std::wstring_view text);

}  // namespace vaxel
