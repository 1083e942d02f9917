// Where the labels of a script lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "interpreter/line_reader.h"

namespace vaxel {

class WorkMeter;

struct Label {
  std::size_t Position = 0;  // where its line begins
  std::uint32_t LineNumber = 1;
};

// The labels of one script level by their names in upper case, with their trailing blanks. Lines that are
// commands are no labels, wherever they have a ":".
class LabelTable {
 public:
  // Reads the labels from the reader's place up to the first line that holds the letters "STOP" outside a
  // comment, that line included, and leaves the reader after it. line is the one being read, also when a
  // second label of one name, or one label more than 100,000, throws the fault.
  void Collect(LineReader& reader, LogicalLine& line, const CommandSet& commands,
               const Separators& separators, WorkMeter& work);

  // The label is null for an unknown name. Names are compared without regard to case.
  const Label* Find(std::string_view name) const;
  // The label that has this name but for blanks before its ":"; null where there is none.
  const Label* FindWithBlanks(std::string_view name) const;
  std::size_t Count() const { return labels_.size(); }
  // The line with the letters at which the labels end, and what follows it; it is 0 where they do not.
  std::uint32_t StopLine() const { return stopLine_; }
  const Label& BehindStop() const { return behindStop_; }

 private:
  std::unordered_map<std::string, Label> labels_;
  std::uint32_t stopLine_ = 0;
  Label behindStop_;
};

}  // namespace vaxel
