// Runs a script as a program would and keeps all that comes of it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/display_list.h"
#include "interpreter/run.h"

namespace vaxel::test {

struct RunSettings {
  RunTarget Target = {.IsPixelDevice = false};  // what comes of it is for a file
  std::vector<std::pair<std::string, std::string>> Variables{};
  std::string FileName = "dial.dat";
  int LangBase = 0;
  std::map<std::string, std::string> Files{};  // by name, for the script to read
  std::string Folder{};                // ends in a separator: where files are that are not among those
  std::vector<std::string> Answers{};  // to questions; "cancel" cancels, then there are none
  int SignalAt = 0;                    // of the calls for events, from 1: the one that aborts; 0: none
  bool AnswersOk = true;               // to boxes with OK and Cancel
  bool LacksMemory = false;            // to read a file
  bool IsStraight = false;             // RunContext::IsStraight
};

RunSettings ForPrinter();

struct ScriptRun {
  RunEnd End = RunEnd::Completed;
  DisplayList List;
  std::vector<ErrorReport> Errors;
  std::vector<std::string> Comments;  // "LINE: comment"
  std::vector<std::string> Notices;   // "LINE:text"
  std::vector<std::string> Boxes;     // "LINE:title", "\n" and the text
  int Questions = 0;                  // whether the run goes on
  std::size_t Work = 0;               // as WorkMeter counts it
  std::size_t RoomForFile = 0;        // bytes that the last file that was read could have
  std::int16_t OrderState = 0;
  std::vector<std::pair<std::string, std::string>> Variables{};

  // What the report of the only error says behind its line and file; empty when there was none.
  std::string Reason() const;
};

ScriptRun RunText(std::string_view script, const RunSettings& settings = {});

// The display list as text, without the lines that begin its pages.
std::string ListText(const DisplayList& list);
std::string PagesText(const DisplayList& list);

std::string Drawn(std::string_view script, const RunSettings& settings = {});

}  // namespace vaxel::test
