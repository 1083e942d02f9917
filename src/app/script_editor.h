// What the script editor of the main window (RTB1) offers the application.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/script_survey.h"
#include "drawing/colour.h"

namespace vaxel {

struct EditorPlace {
  std::size_t Line = 1;   // of the cursor, from 1
  std::size_t Lines = 1;  // of the text
};

// A part of the text. Places are counted in UTF-16 units from its start, a line end being one.
struct EditorRange {
  std::size_t Begin = 0, End = 0;

  bool IsEmpty() const { return Begin == End; }
  bool operator==(const EditorRange&) const = default;
};

// Texts are UTF-8 with LF line ends. Lines count from 1. A call that changes the text, save SetText, tells
// the application so (Application::EditorChanged).
class ScriptEditor {
 public:
  virtual ~ScriptEditor() = default;

  virtual std::string Text() = 0;
  virtual bool IsEmpty() = 0;
  // UTF-16 units of the whole text.
  virtual std::size_t Size() = 0;
  // Replaces everything; the cursor goes to the start and there is nothing to undo.
  virtual void SetText(std::string_view text) = 0;
  // Inserts at the cursor instead of what is selected.
  virtual void ReplaceSelection(std::string_view text) = 0;
  // Replaces lines from the first on, which is one step to undo, and colours them; selection and scroll
  // position stay.
  virtual void ReplaceLines(std::size_t first, const std::vector<std::string>& lines) = 0;
  virtual EditorPlace Place() = 0;
  virtual EditorRange Selection() = 0;
  // Selects a part and scrolls to it; what lies behind the end of the text is left out.
  virtual void Select(EditorRange range) = 0;
  // From the first line's start to the last one's end, without the line end behind it.
  virtual EditorRange RangeOfLines(std::size_t first, std::size_t last) = 0;
  // The line in which a place is.
  virtual std::size_t LineAt(std::size_t place) = 0;
  virtual std::string TextOf(EditorRange range) = 0;
  // Puts a text in the place of a part, which is one step to undo, and colours it. The cursor comes to stand
  // behind it.
  virtual void Replace(EditorRange range, std::string_view text) = 0;
  virtual void Undo() = 0;
  virtual void Redo() = 0;
  // Between the selection and the clipboard, as plain text.
  virtual void Cut() = 0;
  virtual void Copy() = 0;
  virtual void Paste() = 0;
  virtual void GoToLine(std::size_t line) = 0;
  // The keys go to it from now on, unless it is hidden.
  virtual void TakeKeys() = 0;
  // The word under the cursor; it is empty where there is none.
  virtual std::string WordAtCursor() = 0;
  virtual void SetTypingColour(Colour colour) = 0;
  // Lines are coloured by the names and separators of a survey from now on, what is seen at once; SetText
  // ends that. The survey must live until then, or until another one is set, and may be read anew.
  virtual void SetSurvey(const ScriptSurvey* survey) = 0;
  // Colours a line, or all of them (Cmd_Ctrl_K), as ColoursOfLine says; selection and scroll position stay,
  // and undoing does not see it.
  virtual void ColourLine(std::size_t line) = 0;
  virtual void ColourAll() = 0;
  // The name of its font.
  virtual std::string FontName() = 0;
  // The size is in points and above 0.
  virtual void SetFontSize(double points) = 0;
};

}  // namespace vaxel
