// Raises a flag for the length of a block, however the block is left.
#pragma once

namespace vaxel {

// Sets a flag as long as it lives.
class RaisedFlag {
 public:
  explicit RaisedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~RaisedFlag() { flag_ = false; }
  RaisedFlag(const RaisedFlag&) = delete;
  RaisedFlag& operator=(const RaisedFlag&) = delete;

 private:
  bool& flag_;
};

}  // namespace vaxel
