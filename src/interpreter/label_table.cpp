#include "interpreter/label_table.h"

#include <algorithm>

#include "base/text.h"
#include "interpreter/script_fault.h"
#include "interpreter/work_meter.h"

namespace vaxel {
namespace {

// A label takes a hundred bytes and more, many times what it takes in the script.
constexpr std::size_t MostLabels = 100'000;

bool HoldsStop(std::string_view line) {
  const auto is = [&](std::size_t i, char lower) { return (line[i] | 0x20) == lower; };
  for (std::size_t i = 0; i + 4 <= line.size(); ++i) {
    if (line[i] == '\'') return false;
    if (is(i, 's') && is(i + 1, 't') && is(i + 2, 'o') && is(i + 3, 'p')) return true;
  }
  return false;
}

// Blanks of all kinds are the same in a name.
std::string KeyOf(std::string_view name) {
  return UpperCase(WithPlainBlanks(name));
}

}  // namespace

void LabelTable::Collect(LineReader& reader, LogicalLine& line, const CommandSet& commands,
                         const Separators& separators, WorkMeter& work) {
  labels_.clear();
  stopLine_ = 0;
  while (reader.Next(line) == LineReader::Result::Line) {
    work.Add(WorkMeter::Line / 64 + line.Text.size());
    const auto label = ReadLabelLine(line.Text, commands, separators);
    if (label && label->IsTarget) {
      if (labels_.size() == MostLabels) throw ScriptFault(FaultReason::TooManyLabels);
      const auto [known, isNew] =
          labels_.try_emplace(KeyOf(label->Name), Label{reader.LineStart, line.Number});
      if (!isNew) {
        throw ScriptFault(FaultReason::DuplicateLabel, Shorten(label->Name, 60),
                          std::to_string(known->second.LineNumber), std::to_string(line.Number));
      }
    }
    if (!HoldsStop(line.Text)) continue;
    stopLine_ = line.Number;
    behindStop_ = {reader.ReadPos, reader.NextNumber()};
    return;
  }
}

const Label* LabelTable::Find(std::string_view name) const {
  const auto found = labels_.find(KeyOf(name));
  return found == labels_.end() ? nullptr : &found->second;
}

const Label* LabelTable::FindWithBlanks(std::string_view name) const {
  const std::string key = KeyOf(name);
  const auto found = std::find_if(labels_.begin(), labels_.end(),
                                  [&](const auto& label) { return Trim(label.first) == key; });
  return found == labels_.end() ? nullptr : &found->second;
}

}  // namespace vaxel
