// Holds the drawing and the lines of its script together: which line has drawn what lies at the pointer, and
// what the cursor's line has drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/file_commands.h"
#include "app/line_map.h"
#include "app/run_cycle.h"
#include "app/settings.h"
#include "base/point.h"
#include "drawing/operation_search.h"

namespace vaxel {

// The text may have changed since it was drawn: lines are looked for where they stand now. A drawing of
// another script than the editor's belongs to no line.
class LineLink {
 public:
  // All must outlive it.
  LineLink(AppContext& app, RunCycle& runs, FileCommands& files, const Settings& settings,
           const EditedScript& script)
      : app_(app), runs_(runs), files_(files), settings_(settings), script_(script) {}

  void TextChanged();
  // The cursor has moved, or the editor was hidden or shown.
  void CursorMoved();
  // The user has not typed for a moment.
  void Paused();
  // Another drawing, or another page of it, is shown.
  void DrawingShown();

  // The pointer rests over the drawing, at a pixel of the graphic area: the line of what lies there is shown.
  void PointerRested(Point pixel);
  // It was clicked there: the cursor goes into that line. With Ctrl, an included file is opened at the line
  // that has drawn it.
  void Clicked(Point pixel, bool withCtrl);

 private:
  bool BelongsTogether() const;
  const LineMap& Map();
  std::optional<FoundOperation> ElementAt(Point pixel) const;
  std::string LineText(std::size_t line) const;
  std::size_t FirstLineOf(std::size_t line) const;
  void GoToLine(std::size_t line);
  void OpenAt(const IncludedPlace& place);
  void SetHalo(std::vector<OperationOutline> outlines);
  void ShowHalo();

  AppContext& app_;
  RunCycle& runs_;
  FileCommands& files_;
  const Settings& settings_;
  const EditedScript& script_;
  LineMap map_;
  bool isMapOld_ = true;
  bool isHaloDue_ = false;
  bool hasHalo_ = false;
  std::size_t haloLine_ = 0;  // the cursor's; 0: the editor was hidden
  std::uint64_t haloTexts_ = 0;
};

}  // namespace vaxel
