// The state of a run: its script levels with their variables, its surface and what it asks for outside.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/point.h"
#include "drawing/display_list.h"
#include "drawing/draw_surface.h"
#include "drawing/pen.h"
#include "drawing/picture.h"
#include "drawing/text_layout.h"
#include "interpreter/command_row.h"
#include "interpreter/data_file.h"
#include "interpreter/label_table.h"
#include "interpreter/line_reader.h"
#include "interpreter/loop_table.h"
#include "interpreter/run_host.h"
#include "interpreter/variables.h"
#include "interpreter/work_meter.h"
#include "resources/string_table.h"
#include "scale/drawn_scales.h"
#include "scale/scale_support.h"
#include "scale/value_text.h"

namespace vaxel {

class ScriptLines;

// One script: the main one or an included file.
struct ScriptLevel {
  ScriptLevel();
  ~ScriptLevel();
  ScriptLevel(const ScriptLevel&) = delete;
  ScriptLevel& operator=(const ScriptLevel&) = delete;

  std::string Text;                          // lines end in LF
  const std::unique_ptr<ScriptLines> Lines;  // of Text, as they are run
  LogicalLine Line;                          // the one being run
  std::string FileName;                      // as shown in reports; empty for an unsaved text
  LabelTable Labels;
  LoopTable Loops;
  VariableTable Variables;
  Pen CurrentPen;
  Point Position;  // where the including line placed its centre, from its own
  DataFile Data;
};

// A line of the main script that has changed the order word.
struct OrderStep {
  std::int16_t After = 0;
  std::uint32_t LineNumber = 0;
  std::string Line;
};

// What a run has given notice of, so that a loop does not say it again and again.
class NoticeTable {
 public:
  // Whether this text was not given yet for that line of the file.
  bool Add(std::string_view fileName, std::uint32_t lineNumber, TextId text) {
    const auto file = files_.find(fileName);
    auto& given = file != files_.end() ? file->second : files_[std::string(fileName)];
    const bool isNew = given.emplace(lineNumber, text).second;
    count_ += isNew ? 1 : 0;
    return isNew;
  }
  std::size_t Count() const { return count_; }
  void Clear() { *this = {}; }

 private:
  std::map<std::string, std::set<std::pair<std::uint32_t, TextId>>, std::less<>> files_;
  std::size_t count_ = 0;
};

// The state of one run, shared by all commands.
struct RunContext {
  static constexpr std::size_t MaxLevels = 5;

  // The four must outlive the context.
  RunContext(RunHost& host, const CommandSet& commands, const StringTable& strings, DisplayList& list)
      : Host(host), Commands(commands), Strings(strings), Surface(list) {}
  RunContext(const RunContext&) = delete;
  RunContext& operator=(const RunContext&) = delete;

  RunHost& Host;
  const CommandSet& Commands;
  const StringTable& Strings;
  DrawSurface Surface;
  ScaleSupport Support;
  DrawnScales Scales;       // those before Support, and the pivot of its own
  ValueFormat PlainValues;  // how values without a notation of their own are written

  std::array<ScriptLevel, MaxLevels> Levels;
  int CommandDepth = 0;          // of commands after THEN that are being run
  std::size_t CurrentLevel = 1;  // 1 to MaxLevels; Levels[0] is level 1
  std::int16_t OrderState = 0;
  std::vector<OrderStep> OrderSteps;  // that have led to it
  vaxel::Separators Separators;
  std::uint32_t SeparatorsVersion = 1;  // another whenever they change
  mutable WorkMeter Work{Host};         // done since the host last handled events
  std::string LastError;                // the text of the last reported error
  int LangBase = 0;                     // of the language of messages
  // Every line is compiled each time that it comes, and references are put in as texts: what comes of a run
  // is the same, later. Tests compare both.
  bool IsStraight = false;
  std::optional<WrittenText> LastText;  // in surface coordinates
  Point ScreenCentre;                   // the x and y of CentreE
  std::set<std::string> ReplacedFonts;  // names of fonts that are not there and that the user was told of
  mutable NoticeTable Notices;          // given so far
  std::map<std::string, std::shared_ptr<const Picture>> Pictures;  // read so far, by the names of their files
  std::optional<double> NextZoom;  // with which the next zoom view opens, when the script says so

  ScriptLevel& Level() { return Levels[CurrentLevel - 1]; }
  const ScriptLevel& Level() const { return Levels[CurrentLevel - 1]; }
  bool InMainScript() const { return CurrentLevel == 1; }

  // The text of an id, and the same with its values, in the language of messages.
  std::string_view Message(TextId id) const { return Strings.Text(LangBase, id); }
  std::string Message(TextId id, std::string_view value, std::string_view second = {}) const {
    return Strings.Text(LangBase, id, value, second);
  }
  // The bytes of a file. One that cannot be read, or with which the files that the run holds would be more
  // than 100 MB, is a fault, which names the file as the script does.
  std::string ReadFile(std::string_view fileName, const std::string& shown) const;
  // The pen of the current level becomes the one of the surface too, for curves.
  void SetPen(const Pen& pen);
  // The colour that the text gives; for an empty or unknown colour it is the other one. An unknown one is
  // noticed.
  Colour ColourOr(std::string_view text, Colour otherwise);
  Colour ColourOr(std::string_view text) { return ColourOr(text, Surface.ForeColor); }
  // Sets bits of the order word, and remembers the line that does it.
  void AddOrder(std::int16_t bits) {
    const auto after = static_cast<std::int16_t>(OrderState | bits);
    if (after != OrderState) NoteOrder(after);
  }
  // A line makes another support, whose pivot is the script's 0,0: to be called before it does.
  void BeginScale() {
    Scales.Keep(Support);
    Scales.Begin(Surface.PageIndex(), Surface.Origin() - Surface.Middle());
  }
  void WriteComment(std::string_view comment);
  // Tells the user what is suspicious in the line being run, which is carried out all the same. Each text is
  // told once a line and run, with the values that it has the first time; after 100,000 no more are.
  void Notice(TextId text, std::string_view value = {}, std::string_view second = {},
              std::string_view third = {}) const;
  // The text with the references to variables of the current level replaced.
  std::string Substitute(std::string_view text) const;
  // Creates or overwrites a variable of the current level, whose name may stand between braces. What is no
  // name of a variable, a system variable and one variable too many are faults.
  void SetVariable(std::string_view name, std::string_view value);
  // It is a fault when all variables would hold more than 100 MB with so many bytes instead of those freed.
  void RequireRoom(std::size_t bytes, std::size_t freed = 0) const;
  // The name without its braces. It throws the first two of these faults.
  std::string SettableName(std::string_view written) const;
  // The current level, or all of them, end as if their text ended after the line being run.
  void EndLevel() { EndLevel(Level()); }
  void EndAllLevels();

 private:
  // Of the included scripts, the data and the pictures that are held.
  std::size_t BytesOfFiles() const;
  void NoteOrder(std::int16_t after);
  static void EndLevel(ScriptLevel& level);
};

}  // namespace vaxel
