// The margin of the script editor: the numbers of the lines.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "drawing/colour.h"
#include "win32/rich_text.h"
#include "win32/theme.h"
#include "win32/window_class.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

// It stands left of the control and follows it. A click selects a line.
class EditorMargin {
 public:
  EditorMargin(HINSTANCE instance, HWND parent, FailureHandler onFailure);

  // The text must outlive it, or be put in the place of another.
  void Attach(RichText& text) { text_ = &text; }
  HWND Window() const { return window_; }
  // Pixels, which are enough for the numbers of this text.
  int Width() const;
  int RowHeight() const { return rowHeight_; }
  void SetFontSize(double points);
  void SetDpi(UINT dpi);
  void SetTheme(const Theme& theme);
  // The lines, from 1, that are in error; in order.
  void MarkLines(std::vector<std::size_t> lines);
  // To be called when the text, of so many lines, may have been scrolled or changed, or the cursor moved.
  void Follow(std::size_t lines);

  bool IsComplete() const { return window_ != nullptr; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Failed() const { onFailure_(); }

 private:
  // What is seen of it.
  struct Row {
    int Top = 0;
    std::size_t Line = 0;          // from 0
    std::optional<Colour> Sample;  // of the first colour that the line names
    bool operator==(const Row&) const = default;
  };
  struct Look {
    std::vector<Row> Rows;
    std::size_t CurrentLine = 0;
    bool operator==(const Look&) const = default;
  };
  Look LookNow() const;
  void MakeFont();
  void Paint() const;
  void PaintRow(HDC context, const Row& row, int width) const;
  void SelectLineAt(int y) const;

  FailureHandler onFailure_;
  HWND window_ = nullptr;
  RichText* text_ = nullptr;
  UniqueGdi<HFONT> font_;
  double points_ = 10;
  UINT dpi_ = 96;
  Theme theme_ = SystemTheme();
  int digitWidth_ = 8, rowHeight_ = 16;
  std::size_t digits_ = 3;
  Look look_;
  std::vector<std::size_t> marked_;
};

}  // namespace vaxel
