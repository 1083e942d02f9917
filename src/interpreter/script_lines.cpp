#include "interpreter/script_lines.h"

#include <utility>

namespace vaxel {
namespace {

// A loop over more lines than these, or longer ones, compiles the others again and again: memory is bounded.
// A line as it is kept takes up to some sixty times its text.
constexpr std::size_t MostLines = 200'000;
constexpr std::size_t MostText = 8'000'000;

}  // namespace

void ScriptLines::Begin(std::string_view text) {
  Reader = LineReader(text);
  kept_.clear();
  textLength_ = 0;
  keeps_ = false;
  isSought_ = true;
  current_ = next_ = nullptr;
}

ScriptLine* ScriptLines::Known(std::size_t position) {
  if (!keeps_) return nullptr;
  const auto known = kept_.find(position);
  return known == kept_.end() ? nullptr : known->second.get();
}

ScriptLine* ScriptLines::GoTo(const Label& place, bool isBack) {
  keeps_ = keeps_ || isBack;
  Reader.Seek(place.Position, place.LineNumber);
  next_ = Known(place.Position);
  isSought_ = next_ == nullptr;
  return next_;
}

ScriptLine* ScriptLines::Read() {
  ScriptLine* const before = std::exchange(isSought_, false) ? nullptr : current_;
  if (before) Reader.Seek(before->NextPosition, before->NextNumber);
  const std::size_t position = Reader.ReadPos;
  ScriptLine* line = Known(position);
  if (!line) {
    const LineReader::Result result = Reader.Next(passing_.Line);
    if (result == LineReader::Result::End) return nullptr;
    passing_.IsUnfinished = result == LineReader::Result::Unfinished;
    passing_.NextPosition = Reader.ReadPos;
    passing_.NextNumber = Reader.NextNumber();
    passing_.Version = 0;
    const std::size_t length = passing_.Line.Text.size();
    if (!keeps_ || kept_.size() == MostLines || length > MostText - textLength_) return &passing_;
    textLength_ += length;
    line = kept_.emplace(position, std::make_unique<ScriptLine>()).first->second.get();
    static_cast<ReadLine&>(*line) = passing_;
    if (Reader.IsJoined()) line->Line.Text = line->Joined = line->Line.Text;
  }
  if (before && before != &passing_) before->Next = line;
  return line;
}

}  // namespace vaxel
