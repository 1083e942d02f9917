#include "interpreter/script_lines.h"

#include <utility>

namespace vaxel {
namespace {

// A loop over more lines than these, or longer ones, compiles the others again and again: memory is bounded.
// A line as it is kept takes up to a kilobyte and some sixty times its text.
constexpr std::size_t MostLines = 20'000;
constexpr std::size_t MostText = 500'000;

}  // namespace

void ScriptLines::Begin(std::string_view text, bool mayKeep) {
  Reader = LineReader(text);
  kept_.clear();
  textLength_ = 0;
  mayKeep_ = mayKeep;
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
  keeps_ = keeps_ || (isBack && mayKeep_);
  Reader.Seek(place.Position, place.LineNumber);
  next_ = Known(place.Position);
  isSought_ = next_ == nullptr;
  return next_;
}

// The result is false at the end of the text.
bool ScriptLines::ReadInto(ScriptLine& line) {
  const LineReader::Result result = Reader.Next(line.Line);
  line.IsUnfinished = result == LineReader::Result::Unfinished;
  line.NextPosition = Reader.ReadPos;
  line.NextNumber = Reader.NextNumber();
  line.Version = 0;
  return result != LineReader::Result::End;
}

ScriptLine* ScriptLines::Read() {
  ScriptLine* const before = std::exchange(isSought_, false) ? nullptr : current_;
  if (before) Reader.Seek(before->NextPosition, before->NextNumber);
  const bool isLinked = before && before != &passing_;
  const std::size_t position = Reader.ReadPos;
  const std::uint32_t number = Reader.NextNumber();
  ScriptLine* line = Known(position);
  if (!line) {
    if (!ReadInto(passing_)) return nullptr;
    const std::size_t length = passing_.Line.Text.size();
    if (!keeps_ || kept_.size() == MostLines || length > MostText - textLength_) return &passing_;
    textLength_ += length;
    line = kept_.emplace(position, std::make_unique<ScriptLine>()).first->second.get();
    Reader.Seek(position, number);
    ReadInto(*line);
    if (Reader.IsJoined()) line->Line.Text = line->Joined = line->Line.Text;
  }
  if (isLinked) before->Next = line;
  return line;
}

}  // namespace vaxel
