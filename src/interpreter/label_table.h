// Where the labels of a script lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "interpreter/line_reader.h"

namespace vaxel {

struct Label {
  std::size_t Position = 0;  // where its line begins
  std::uint32_t LineNumber = 1;
};

// The labels of one script level by their names in upper case, with their trailing blanks.
class LabelTable {
 public:
  // Reads the labels from the reader's place up to the first line that holds the letters "STOP" outside a
  // comment, that line included, and leaves the reader after it. line is the one being read, also when a
  // second label of one name throws the fault.
  void Collect(LineReader& reader, LogicalLine& line);

  // The label is null for an unknown name. Names are compared without regard to case.
  const Label* Find(std::string_view name) const;
  std::size_t Count() const { return labels_.size(); }

 private:
  std::unordered_map<std::string, Label> labels_;
};

}  // namespace vaxel
