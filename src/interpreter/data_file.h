// The file from which a script level reads its data.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vaxel {

// A data file that is read line by line; lines that begin with an apostrophe are comments. Before a text is
// opened the file is empty and at its end.
class DataFile {
 public:
  // The text may have any line ends.
  void Open(std::string text);
  bool IsOpen() const { return isOpen_; }
  // Whether no line remains that is not a comment.
  bool AtEnd() const { return position_ >= text_.size(); }
  std::size_t Size() const { return text_.size(); }
  // How many bytes lie before the next line.
  std::size_t Position() const { return position_; }
  // The next line, without its end; it is empty at the end of the file, and valid until another file is
  // opened.
  std::string_view Next();

 private:
  std::string_view LineAt(std::size_t position) const;
  void PassComments();

  std::string text_;  // lines end in LF
  std::size_t position_ = 0;
  bool isOpen_ = false;
};

}  // namespace vaxel
