#include "interpreter/label_table.h"

#include "base/text.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

bool HoldsStop(std::string_view line) {
  const auto is = [&](std::size_t i, char lower) { return (line[i] | 0x20) == lower; };
  for (std::size_t i = 0; i + 4 <= line.size(); ++i) {
    if (line[i] == '\'') return false;
    if (is(i, 's') && is(i + 1, 't') && is(i + 2, 'o') && is(i + 3, 'p')) return true;
  }
  return false;
}

}  // namespace

void LabelTable::Collect(LineReader& reader, LogicalLine& line) {
  labels_.clear();
  while (reader.Next(line) == LineReader::Result::Line) {
    if (IsLabelLine(line.Text)) {
      const std::string_view name = line.Text.substr(0, line.Text.find(':'));
      const bool isNew = labels_.try_emplace(UpperCase(name), Label{reader.LineStart, line.Number}).second;
      if (!isNew) throw ScriptFault(FaultReason::DuplicateLabel, Shorten(name, 60));
    }
    if (HoldsStop(line.Text)) break;
  }
}

const Label* LabelTable::Find(std::string_view name) const {
  const auto found = labels_.find(UpperCase(name));
  return found == labels_.end() ? nullptr : &found->second;
}

}  // namespace vaxel
