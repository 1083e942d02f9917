// The colours of the script in its control.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/script_survey.h"
#include "drawing/colour.h"
#include "win32/rich_text.h"

namespace vaxel {

// The lines of a long script get their colours when they are first seen. Undoing does not see any of it.
class EditorColours {
 public:
  explicit EditorColours(RichText& text) : text_(text) {}

  void Lines(std::size_t first, std::size_t last);
  // All of them: at once those that a short time allows, the others when Seen finds them.
  void All();
  // More text has come in behind what was there.
  void Grown(LONG from);
  // Something was changed from this line on.
  void ChangedFrom(std::size_t line);
  // Colours what is seen and has no colours yet.
  void Seen();
  // Whether any of the text may have none, so that Seen is to be called when other lines are seen.
  bool AreMissing() const { return pending_.has_value(); }
  void Forget() {
    pending_.reset();
    survey_ = nullptr;
  }
  // The names and separators by which lines are coloured from now on; what is seen is coloured at once.
  void SetSurvey(const ScriptSurvey* survey);
  // The ink of what has no colour of its own, and whether the ground is dark; in plain ink alone where the
  // user wants no colours.
  void SetInks(Colour plain, bool isDark, bool isPlain);

 private:
  using Clock = std::chrono::steady_clock;

  void Set(CHARRANGE range, Colour colour) const;
  // What the line that begins there goes on from.
  std::string Before(LONG begin) const;
  // Colours the lines of a part of the text, which begins with one, and returns where the time was over.
  LONG ColourLines(std::wstring_view text, LONG begin, Clock::time_point until) const;

  RichText& text_;
  const ScriptSurvey* survey_ = nullptr;
  Colour plain_ = Black;
  bool isDark_ = false, isPlain_ = false;
  std::optional<LONG> pending_;              // from where on the colours are yet to come
  std::optional<RichText::LineRange> seen_;  // the lines beyond that place which were coloured last
};

}  // namespace vaxel
