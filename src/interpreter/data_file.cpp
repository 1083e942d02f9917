#include "interpreter/data_file.h"

#include <utility>

#include "base/text_encoding.h"

namespace vaxel {

void DataFile::Open(std::string text) {
  text_ = NormaliseLineEnds(std::move(text));
  position_ = 0;
  isOpen_ = true;
  PassComments();
}

std::string_view DataFile::LineAt(std::size_t position) const {
  const std::string_view rest = std::string_view(text_).substr(position);
  return rest.substr(0, rest.find('\n'));
}

void DataFile::PassComments() {
  while (!AtEnd() && text_[position_] == '\'') position_ += LineAt(position_).size() + 1;
}

std::string_view DataFile::Next() {
  if (AtEnd()) return {};
  const std::string_view line = LineAt(position_);
  position_ += line.size() + 1;
  PassComments();
  return line;
}

}  // namespace vaxel
