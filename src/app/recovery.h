// Copies of unsaved text, for the case that the program ends without having asked for it.
//
// Each running program keeps one file in its folder of data, "Vaxe$NUMBER.rec" with the number of its
// process: a first line with the name of the script and its encoding, then the text, in UTF-8.
#pragma once

#include <chrono>
#include <cstdint>
#include <future>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_encoding.h"

namespace vaxel {

struct RecoveryCopy {
  std::string FileName;    // of the copy
  std::string ScriptName;  // empty: it had none yet
  TextEncoding Encoding = TextEncoding::Utf8;
  std::uint64_t LoadedHash = 0;
  std::string Text;  // lines end in LF
};

class Recovery {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr auto Interval = std::chrono::seconds(10);

  // Copies are written into the first folder, and looked for in all of them: it need not always be the same
  // one. Each ends in its separator; one that is empty or repeated counts for nothing.
  Recovery(std::vector<std::string> folders, std::uint32_t processId);

  // Whether a copy of text that has changed since the last one is due.
  bool IsDue(Clock::time_point now);
  void TextChanged() { changed_ = true; }
  // Writes the copy and returns whether that could be done.
  bool Write(Clock::time_point now, RecoveryCopy copy);
  // The same while the user goes on; where it cannot be done it is tried again after the interval.
  void BeginWriting(Clock::time_point now, RecoveryCopy copy);
  // Waits until what was begun has come to its end, and returns whether that was good.
  bool FinishWriting();
  // Removes the own copy: the text is saved, or is given up.
  void Remove();

  // Copies that programs which run no more have left, to be asked for before the first is written; files that
  // cannot be read are left out. One that a program of this one's number has left comes first: the next
  // writing replaces it.
  template <class IsRunning>
  std::vector<RecoveryCopy> FindLeft(IsRunning isRunning) const {
    std::vector<RecoveryCopy> left;
    for (const auto& [name, processId] : Copies()) {
      if (processId != processId_ && isRunning(processId)) continue;
      if (auto copy = Read(name)) left.push_back(std::move(*copy));
    }
    return left;
  }
  // Removes a copy, save one that has been written anew since.
  void Discard(const RecoveryCopy& copy) const;

 private:
  using NumberedCopy = std::pair<std::string, std::uint32_t>;  // its name, and whose it is
  static void AddCopies(const std::string& folder, std::vector<NumberedCopy>& copies);
  std::vector<NumberedCopy> Copies() const;
  static std::optional<RecoveryCopy> Read(const std::string& name);
  std::string OwnName() const;

  std::vector<std::string> folders_;
  std::uint32_t processId_;
  bool changed_ = false;
  bool exists_ = false;
  Clock::time_point written_{};
  std::future<bool> writing_;  // whose end waits for it
};

}  // namespace vaxel
