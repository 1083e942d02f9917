#include "interpreter/prepared_script.h"

#include <utility>

namespace vaxel {
namespace {

// A loop over more lines than these reads the others again and again: memory is bounded.
constexpr std::size_t MostLines = 200'000;

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
  if (lines_.size() == MostLines) {
    line.IsKept = false;
    passing_ = std::move(line);
    return &passing_;
  }
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
