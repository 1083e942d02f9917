// Long scripts: a piece of one is repeated, and what its run, its drawing and its editor cost must stay in
// proportion to its length and to the work that the run counts.
//
// The first line is how often the piece comes; "<<" and ">>" stand around it in the rest, else all of it is
// the piece.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "base/text_encoding.h"
#include "fuzz/cost_meter.h"
#include "fuzz/editor_view.h"
#include "fuzz/target.h"
#include "interpreter/work_meter.h"
#include "render/svg_renderer.h"
#include "tests/support/script_run.h"

namespace vaxel::fuzz {
namespace {

constexpr std::size_t MostLength = 200'000;
constexpr int MostQuestions = 400;

// The time is ten times what ordinary scripts take in a build with sanitizers, for each byte of script or
// output and for each unit of counted work: only what grows faster is noticed, whatever else the machine
// does. Memory does not depend on the machine.
constexpr double SecondsPerByte = 25e-6, SecondsPerWork = 0.1e-6, SecondsAtLeast = 0.5;
constexpr std::size_t BytesPerByte = 150, BytesPerWork = 3, BytesAtLeast = std::size_t{2} << 20;

struct Pieces {
  std::string_view Before, Piece, Behind;
  std::size_t Count = 1;
};

Pieces ReadPieces(std::string_view bytes) {
  Pieces pieces;
  const std::string_view count = TakeLine(bytes);
  std::from_chars(count.data(), count.data() + count.size(), pieces.Count);
  const std::size_t begin = bytes.find("<<");
  const std::size_t end = bytes.find(">>", begin);
  pieces.Piece = bytes;
  if (begin != std::string_view::npos && end != std::string_view::npos) {
    pieces.Before = bytes.substr(0, begin);
    pieces.Piece = bytes.substr(begin + 2, end - begin - 2);
    pieces.Behind = bytes.substr(end + 2);
  }
  const std::size_t room = MostLength / std::max<std::size_t>(pieces.Piece.size(), 1);
  pieces.Count = std::clamp<std::size_t>(pieces.Count, 1, std::max<std::size_t>(room, 1));
  return pieces;
}

std::string Joined(const Pieces& pieces, std::size_t count) {
  std::string text(pieces.Before);
  for (std::size_t i = 0; i < count; ++i) text += pieces.Piece;
  return text += pieces.Behind;
}

std::size_t WriteSvg(const DisplayList& list) {
  TextSink sink;
  SvgRenderer renderer(sink);
  PlayAll(list, renderer);
  return sink.Text.size();
}

void CheckTime(const CostMeter& meter, std::size_t bytes, std::size_t work, std::string_view what) {
  const double seconds = meter.Seconds();
  const double most = SecondsAtLeast + SecondsPerByte * static_cast<double>(bytes) +
                      SecondsPerWork * static_cast<double>(work);
  if (seconds <= most) return;
  Fail("time grows with the script",
       std::string(what) + ": " + std::to_string(seconds) + " s instead of " + std::to_string(most));
}

void CheckMemory(const CostMeter& meter, std::size_t bytes, std::size_t work) {
  const std::size_t most = BytesAtLeast + BytesPerByte * bytes + BytesPerWork * work;
  if (meter.PeakBytes() <= most) return;
  Fail("memory grows with the script",
       std::to_string(meter.PeakBytes()) + " bytes instead of " + std::to_string(most));
}

// The work that the run counts.
std::size_t Cost(const std::string& text) {
  test::RunSettings settings;
  settings.SignalAt = MostQuestions;
  const CostMeter meter;
  const test::ScriptRun run = test::RunText(text, settings);
  CheckTime(meter, text.size(), run.Work, "running");
  CheckMemory(meter, text.size(), run.Work);
  const CostMeter writing;
  const std::size_t written = WriteSvg(run.List);
  CheckTime(writing, written, 0, "writing");
  return run.Work;
}

// Whether each line does the same however often it has come before: no variable grows, nothing jumps.
bool IsStateless(std::string_view text) {
  const std::string upper = UpperCase(text);
  return upper.find('%') == std::string::npos && upper.find("GOTO") == std::string::npos;
}

}  // namespace

void TryInput(std::string_view bytes) {
  const auto decoded = DecodeText(std::string(bytes));
  if (!decoded) return;
  const Pieces pieces = ReadPieces(decoded->Text);
  const std::string text = Joined(pieces, pieces.Count);
  const std::size_t work = Cost(text);
  {
    const CostMeter meter;
    ReadAsEditor(NormaliseLineEnds(text));
    CheckTime(meter, text.size(), 0, "reading as the editor does");
    CheckMemory(meter, text.size(), 0);
  }
  if (!IsStateless(text) || pieces.Count < 2) return;
  const std::size_t ofHalf = Cost(Joined(pieces, pieces.Count / 2));
  Require(work <= 2 * ofHalf + 10 * WorkMeter::MostBetween, "twice the script is twice the work",
          std::to_string(work) + " and " + std::to_string(ofHalf));
}

}  // namespace vaxel::fuzz
