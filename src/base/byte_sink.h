// The interface through which renderers write what they make.
#pragma once

#include <string_view>

namespace vaxel {

// Takes the bytes that a renderer writes, in order. A sink that fails remembers it and swallows the rest.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void Write(std::string_view bytes) = 0;
};

}  // namespace vaxel
