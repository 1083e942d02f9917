// What a fuzz target is: a function of bytes, called by libFuzzer with inputs that it makes up, or by
// replay_main.cpp with those of a corpus.
#pragma once

#include <string>
#include <string_view>

#include "base/byte_sink.h"

namespace vaxel::fuzz {

// Tries one input. A broken promise ends the process.
void TryInput(std::string_view bytes);

// Ends the process with the promise and what broke it.
[[noreturn]] void Fail(std::string_view promise, std::string_view shown);

inline void Require(bool isKept, std::string_view promise, std::string_view shown = {}) {
  if (!isKept) Fail(promise, shown);
}
// The same of two texts that are to be one; the line in which they part is shown.
void RequireSame(std::string_view one, std::string_view other, std::string_view promise);

// The text up to the end of the line, which is taken away with its end.
std::string_view TakeLine(std::string_view& text);

// Keeps what is written.
class TextSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override { Text += bytes; }
  std::string Text;
};

}  // namespace vaxel::fuzz
