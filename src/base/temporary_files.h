// The files that are being written beside their places. None of them stays when the program is ended from
// outside: whoever ends it, be it a signal's handler, has them removed first.
#pragma once

#include <cstdio>
#include <filesystem>
#include <list>

#ifndef _WIN32
#include <csignal>
#endif

namespace vaxel {

// While it lives no signal that would end the program reaches this thread; those that came meanwhile do at
// its end. Windows has none.
class SignalsHeld {
 public:
  SignalsHeld();
  ~SignalsHeld();
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
#ifndef _WIN32
  sigset_t before_;
#endif
};

// A file that is gone when its object is, or the program, unless it was kept.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Makes the file for writing; to be called once. It is never more readable than the regular file model,
  // where there is one. The stream is the caller's, and null when there is no file, as std::fopen says.
  std::FILE* Make(const std::filesystem::path& path, const std::filesystem::path& model);
  // Makes it a second name of a file that is there, where the file system has such; to be called once,
  // instead.
  void Link(const std::filesystem::path& path, const std::filesystem::path& file);
  // Empty where none was made, or it was kept.
  const std::filesystem::path& Path() const { return path_; }
  // Gives the file its name for good, in the place of one that has it, and keeps it.
  std::error_code MoveTo(const std::filesystem::path& target);

 private:
  std::filesystem::path path_;
  std::list<std::filesystem::path>::iterator entry_;  // while there is a path
};

// Removes all of them, and lets no other come into being: to be called right before the program ends. A
// signal's handler may call it, and another thread; who makes or moves one meanwhile waits for the end.
void RemoveTemporaryFiles();

}  // namespace vaxel
