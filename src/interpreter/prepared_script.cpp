#include "interpreter/prepared_script.h"

#include <utility>

namespace vaxel {
namespace {

// A loop over more lines than these, or longer ones, reads the others again and again: memory is bounded. A
// line with its prepared command takes up to some sixty times its text.
constexpr std::size_t MostLines = 200'000;
constexpr std::size_t MostText = 8'000'000;

}  // namespace

PreparedLine* PreparedScript::At(LineReader& reader) {
  const std::size_t position = reader.ReadPos;
  const auto known = lines_.find(position);
  if (known != lines_.end()) return known->second.get();
  PreparedLine line;
  line.Result = reader.Next(line.Line);
  if (line.Result == LineReader::Result::End) return nullptr;
  line.NextPosition = reader.ReadPos;
  line.NextNumber = reader.NextNumber();
  const std::size_t length = line.Line.Text.size();
  if (lines_.size() == MostLines || length > MostText - textLength_) {
    line.IsKept = false;
    passing_ = std::move(line);
    return &passing_;
  }
  textLength_ += length;
  const auto kept = lines_.emplace(position, std::make_unique<PreparedLine>(std::move(line))).first;
  if (reader.IsJoined()) {
    kept->second->Joined = kept->second->Line.Text;
    kept->second->Line.Text = kept->second->Joined;
  }
  return kept->second.get();
}

PreparedLine* PreparedScript::After(PreparedLine& line, LineReader& reader) {
  if (line.Next) return line.Next;
  reader.Seek(line.NextPosition, line.NextNumber);
  PreparedLine* const next = At(reader);
  if (next && next->IsKept && line.IsKept) line.Next = next;
  return next;
}

}  // namespace vaxel
