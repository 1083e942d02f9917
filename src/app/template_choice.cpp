#include "app/template_choice.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "app/edited_script.h"
#include "app/silent_bridge.h"
#include "commands/command_table.h"
#include "drawing/page_bounds.h"
#include "interpreter/run.h"

namespace vaxel {
namespace {

// The list of the dialog waits for it.
constexpr auto PicturePatience = std::chrono::milliseconds(1500);
// A screen on which no dial is too large: what it shows is framed afterwards.
constexpr double ScreenMm = 600;
constexpr double MarginMm = 4;
constexpr Point EmptyPage{100, 80};

// The first page alone, in a frame around what is drawn; an empty one where nothing is.
PreviewPages Framed(std::shared_ptr<DisplayList> drawing) {
  const bool hasPage = drawing && !drawing->Pages().empty();
  std::optional<Box> box = hasPage ? BoundsOf(*drawing, 0) : std::nullopt;
  if (box) {
    box->Grow(MarginMm);
    drawing->FramePage(0, {box->Left, box->Top}, box->Width(), box->Height());
  } else {
    drawing = std::make_shared<DisplayList>();
    drawing->BeginPage(EmptyPage.X, EmptyPage.Y);
  }
  PreviewPages pages;
  for (const Page& page : drawing->Pages()) {
    const PaperBox sheet = {{0, 0}, {page.Width, page.Height}};
    pages.Sheets.push_back({sheet, sheet});
  }
  pages.Drawing = std::move(drawing);
  return pages;
}

}  // namespace

PreviewPages TemplateChoice::Run(const std::string& script) {
  const EditedScript unsaved;
  RunSession session;
  std::vector<std::string> answers;
  SilentBridge bridge(app_, unsaved, session, answers, {PicturePatience, true, {}});
  auto drawing = std::make_shared<DisplayList>();
  RunContext run(bridge, AllCommands(), app_.Strings, *drawing);
  run.LangBase = app_.LangBase;
  RunTarget screen;
  screen.WidthMm = screen.HeightMm = ScreenMm;
  screen.Measurer = app_.Platform.Measurer();
  screen.Decoder = app_.Platform.Decoder();
  const RunEnd end = RunScript(run, screen, script, unsaved.CurrentFile);
  PreviewPages pages = Framed(std::move(drawing));
  for (const Problem& problem : session.Problems) {
    if (problem.What == Problem::Kind::Error && pages.Problem.empty())
      pages.Problem = app_.Message(TextId::TemplateLineFails, std::to_string(problem.Line), problem.Message);
  }
  if (end != RunEnd::Completed && pages.Problem.empty())
    pages.Problem = app_.Message(TextId::TemplateHasNoPicture);
  return pages;
}

PreviewPages TemplateChoice::Draw(const ScriptTemplate& drawn) {
  const Result<std::string> script = TextOf(drawn, app_);
  if (script) return Run(*script);
  PreviewPages pages = Framed(nullptr);
  pages.Problem = app_.Message(TextId::CannotRead, drawn.FileName, app_.Message(script.Why()));
  return pages;
}

std::optional<ScriptTemplate> TemplateChoice::Ask() {
  const std::vector<ScriptTemplate> templates = FindTemplates(app_);
  if (templates.empty()) {
    app_.Tell(BoxIcon::Information, app_.Message(TextId::NoTemplates, app_.ProgramFolder + "templates"));
    return std::nullopt;
  }
  std::optional<ScriptTemplate> chosen;
  TemplatesDialog dialog;
  dialog.Caption = app_.Message(TextId::TemplatesCaption);
  dialog.Label = app_.Message(TextId::TemplatesLabel);
  dialog.Button = app_.Message(TextId::TemplatesButton);
  for (const ScriptTemplate& offered : templates) dialog.Names.push_back(offered.Name);
  dialog.OnShow = [&](std::size_t place) { return Draw(templates[place]); };
  dialog.OnChosen = [&](std::size_t place) { chosen = templates[place]; };
  app_.Dialogs.ShowTemplates(dialog);
  return chosen;
}

}  // namespace vaxel
