// What may be meant by the beginning of a word in a script.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/script_survey.h"
#include "app/script_tokens.h"
#include "app/syntax_help.h"
#include "drawing/colour.h"

namespace vaxel {

struct Completion {
  std::string Shown;
  std::string Inserted;  // instead of what Completions says
  std::string Explanation;
  std::optional<Colour> Sample{};  // of a colour
};

// The list is empty where there is nothing to offer. What is inserted takes the place of a part of the line,
// in UTF-16 units.
struct Completions {
  std::size_t Begin = 0, End = 0;
  std::vector<Completion> List;
};

// What lies outside the script. A call that fails gives nothing; one that takes long holds the keyboard up,
// so that answers should be kept.
class CompletionSource {
 public:
  virtual ~CompletionSource() = default;

  // At most so many names of what is in a folder, as a script beside which it lies names it, with its last
  // separator; empty: the script's own. Names of folders end in a separator.
  virtual std::vector<std::string> FilesIn(std::string_view folder, std::size_t most) = 0;
  // The names of all fonts.
  virtual std::span<const std::string> Fonts() = 0;
};

struct CompletionRequest {
  std::string_view Line;
  std::size_t Column = 0;      // of the cursor, in UTF-16 units
  std::size_t LineNumber = 1;  // from 1
  bool IsAsked = false;        // by a key; else a word must have been begun
};

struct CompletionKnowledge {
  const LineContext& Context;
  const ScriptSurvey& Survey;
  CompletionSource& Outside;
  HelpLanguage Language;
};

Completions Complete(const CompletionRequest& request, const CompletionKnowledge& knowledge);

}  // namespace vaxel
