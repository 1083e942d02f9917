// Scripts: whatever stands in one, the editor can be asked for its words, its run ends with a drawing or with
// a report, its lines come to the same whether they are kept as compiled or not, and what it draws is an SVG
// document as readers expect it.
#include "base/text_encoding.h"
#include "fuzz/editor_view.h"
#include "fuzz/script_input.h"
#include "fuzz/svg_reader.h"
#include "fuzz/target.h"
#include "render/svg_renderer.h"

namespace vaxel::fuzz {
namespace {

void CheckPages(const DisplayList& list) {
  for (std::size_t page = 0; page < list.Pages().size(); ++page) {
    TextSink sink;
    SvgRenderer renderer(sink);
    PlayPage(list, page, renderer);
    if (const std::string fault = FaultOfSvg(sink.Text); !fault.empty()) Fail("an SVG is in order", fault);
  }
}

}  // namespace

void TryInput(std::string_view bytes) {
  ScriptInput input = ReadScript(bytes);
  if (!input.IsText) return;
  const std::string lines = NormaliseLineEnds(input.Text);
  ReadAsEditor(lines);
  // Offers take several times as long as a run: one script in eight is asked for them.
  if (bytes.size() % 8 == 0) WriteAsEditor(lines);
  const test::ScriptRun run = test::RunText(input.Text, input.Settings);
  Require(run.Errors.size() <= (run.End == RunEnd::Failed ? 1U : 0U), "a run fails once, and says why");
  CheckPages(run.List);
  input.Settings.IsStraight = true;
  const test::ScriptRun straight = test::RunText(input.Text, input.Settings);
  // Where the host ends a run depends on the work that was done for it.
  if (run.End == RunEnd::Aborted || straight.End == RunEnd::Aborted) return;
  RequireSame(Everything(run), Everything(straight), "kept lines come to the same as new ones");
}

}  // namespace vaxel::fuzz
