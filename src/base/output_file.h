// Files as they are written. Names are UTF-8.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/byte_sink.h"
#include "base/result.h"
#include "base/temporary_files.h"

namespace vaxel {

// What a crash of the system may take.
enum class Lasting : std::uint8_t {
  Redrawable,  // the file, whole: it can be made again, and waiting for the disk takes longer than making it
  Kept         // nothing that was written: the file is on the disk before its name is, and then that is, too
};

// A file that is there whole or not at all: it is written beside its place and moved there when it is
// complete. It is never more readable than the file whose place it takes. A device or a pipe is written
// directly; "-" is standard output.
class OutputFile : public ByteSink {
 public:
  explicit OutputFile(const std::string& name, Lasting lasting = Lasting::Kept);
  // Removes what was written unless Commit has succeeded.
  ~OutputFile() override;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(std::string_view bytes) override;
  // Ends the writing and says whether all of it was taken: only then are several files put in their places.
  Result<> Finish();
  // Puts the file in its place. It fails when that, or anything before, has failed. Beside a file that is
  // kept SweepTemporaryFiles is done, too.
  Result<> Commit();

  // Several files that go into their places together: before the first Commit each keeps what it will
  // replace, by a second name, as far as the file system knows such.
  void KeepOld();
  // Puts back what a Commit has replaced, after KeepOld. The result is false where that is gone. A device
  // keeps what it got.
  bool TakeBack();

 private:
  void Fail(Failure why);
  void Close();

  std::filesystem::path target_;
  TemporaryFile temporary_;                 // none when the target is written directly
  TemporaryFile old_;                       // what the target was
  bool isMoved_ = false, isFirst_ = false;  // the file is in its place; nothing was there before
  Lasting lasting_;
  std::FILE* file_ = nullptr;
  std::optional<Failure> failure_;  // the first
};

// The file that is written by a name, through links to it and to its folders. Two names of one file have the
// same one, whether it is there or not.
std::filesystem::path TargetOf(const std::string& name);

// Removes what runs that were killed an hour ago or earlier have left beside the files of these names.
void SweepTemporaryFiles(const std::vector<std::string>& names);

}  // namespace vaxel
