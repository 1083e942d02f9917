// Files as they are written. Names are UTF-8.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "base/byte_sink.h"
#include "base/result.h"

namespace vaxel {

// A file that is there whole or not at all: it is written beside its place and moved there when it is
// complete and on the disk. A device or a pipe is written directly; "-" is standard output.
class OutputFile : public ByteSink {
 public:
  explicit OutputFile(const std::string& name);
  // Removes what was written unless Commit has succeeded.
  ~OutputFile() override;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(std::string_view bytes) override;
  // Ends the writing and says whether all of it is on the disk: only then are several files put in their
  // places.
  Result<> Finish();
  // Puts the file in its place. It fails when that, or anything before, has failed.
  Result<> Commit();

 private:
  void Fail(Failure why);
  void Close();

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty when the target is written directly
  std::FILE* file_ = nullptr;
  std::optional<Failure> failure_;  // the first
};

}  // namespace vaxel
