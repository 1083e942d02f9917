#include "app/writing_aid.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/command_search.h"
#include "app/keyword_spelling.h"
#include "app/line_surroundings.h"
#include "app/script_file.h"
#include "app/syntax_help.h"
#include "base/files.h"
#include "base/utf8.h"
#include "commands/command_table.h"

namespace vaxel {
namespace {

// A script up to this size is read anew at every key that needs it; a longer one when the user pauses.
constexpr std::size_t ReadAtOnce = 100'000;
constexpr auto FilesAreKept = std::chrono::seconds(5);

}  // namespace

// What cannot be read offers nothing. A folder is not read at every key: that of a network may take long.
std::vector<std::string> WritingAid::Outside::FilesIn(std::string_view folder, std::size_t most) {
  namespace fs = std::filesystem;
  const fs::path base = PathOf(FolderOf(owner_.script_.CurrentFile));
  const fs::path whole = folder.empty() && base.empty() ? fs::path(".") : base / PathOf(folder);
  const auto now = owner_.app_.Platform.Now();
  if (asked_ && now - *asked_ < FilesAreKept && NameOf(whole) == folder_) return files_;
  asked_ = now;
  folder_ = NameOf(whole);
  std::vector<std::string>& names = files_;
  names.clear();
  std::error_code error;
  for (fs::directory_iterator entry(whole, error), end; !error && entry != end && names.size() < most;
       entry.increment(error)) {
    std::error_code ignored;
    std::string name = NameOf(entry->path().filename());
    if (entry->is_directory(ignored)) name += static_cast<char>(fs::path::preferred_separator);
    names.push_back(std::move(name));
  }
  return names;
}

std::span<const std::string> WritingAid::Outside::Fonts() {
  if (!fonts_) fonts_ = owner_.app_.Platform.FontNames();
  return *fonts_;
}

std::string WritingAid::LineOf(std::size_t line) {
  return app_.Editor.TextOf(app_.Editor.RangeOfLines(line, line));
}

WritingAid::Cursor WritingAid::CursorNow() {
  Cursor cursor;
  cursor.Line = app_.Editor.Place().Line;
  const EditorRange range = app_.Editor.RangeOfLines(cursor.Line, cursor.Line);
  cursor.LineBegin = range.Begin;
  cursor.Column = app_.Editor.Selection().Begin - range.Begin;
  cursor.Text = app_.Editor.TextOf(range);
  return cursor;
}

void WritingAid::RefreshSurvey() {
  const bool isOfAnother = std::exchange(surveyed_, script_.Texts) != script_.Texts;
  if (!std::exchange(isSurveyOld_, false) && !isOfAnother) return;
  ScriptSurvey fresh;
  fresh.Read(app_.Editor.Text());
  areNamesNew_ = areNamesNew_ || isOfAnother || !fresh.ColoursAs(survey_);
  survey_ = std::move(fresh);
}

void WritingAid::ReadNames() {
  RefreshSurvey();
  if (std::exchange(areNamesNew_, false)) app_.Editor.SetSurvey(&survey_);
}

std::optional<WordHelp> WritingAid::WordAt(std::size_t place) {
  const std::size_t line = app_.Editor.LineAt(place);
  const EditorRange range = app_.Editor.RangeOfLines(line, line);
  if (place < range.Begin || place >= range.End) return std::nullopt;
  RefreshSurvey();
  const LineSurroundings surroundings(survey_, line, [this](std::size_t number) { return LineOf(number); });
  auto help = HelpForWord(app_.Editor.TextOf(range), place - range.Begin, surroundings.Context(),
                          {survey_, {app_.Strings, app_.HelpLangBase}, valueOf_});
  if (help) help->Word = {help->Word.Begin + range.Begin, help->Word.End + range.Begin};
  return help;
}

void WritingAid::TextChanged() {
  isSurveyOld_ = true;
}

// What was typed is spelled as users see it, which is a step of its own to undo. The cursor stays. The survey
// must know the lines before: what goes on from one of them is no keyword.
void WritingAid::SpellLeftLine() {
  if (!leftLine_) return;
  RefreshSurvey();
  const auto line = std::exchange(leftLine_, std::nullopt);
  const bool isOfThisText = typedText_ == script_.Texts;
  if (!isOfThisText || *line > app_.Editor.Place().Lines) return;
  const EditorRange range = app_.Editor.RangeOfLines(*line, *line);
  const LineSurroundings surroundings(survey_, *line, [this](std::size_t number) { return LineOf(number); });
  const auto edit = SpellKeywords(app_.Editor.TextOf(range), surroundings.Context());
  if (!edit) return;
  const EditorRange selection = app_.Editor.Selection();
  const EditorRange replaced{range.Begin + edit->Begin, range.Begin + edit->End};
  app_.Editor.Replace(replaced, edit->Text);
  const std::size_t length = Utf16Length(edit->Text);
  const auto moved = [&](std::size_t place) {
    return place >= replaced.End ? place + length - (replaced.End - replaced.Begin) : place;
  };
  app_.Editor.Select({moved(selection.Begin), moved(selection.End)});
}

void WritingAid::FinishTyping() {
  SpellLeftLine();
  leftLine_ = std::exchange(typedLine_, std::nullopt);
  SpellLeftLine();
}

void WritingAid::Paused() {
  SpellLeftLine();
  ReadNames();
  if (page_ == AidPage::Help) ShowHelp();
}

void WritingAid::Offer(bool isAsked) {
  const Cursor cursor = CursorNow();
  if (isAsked || app_.Editor.Size() <= ReadAtOnce) RefreshSurvey();
  const LineSurroundings surroundings(survey_, cursor.Line,
                                      [this](std::size_t line) { return LineOf(line); });
  offers_ = vaxel::Complete({cursor.Text, cursor.Column, cursor.Line, isAsked},
                            {surroundings.Context(), survey_, outside_, {app_.Strings, app_.HelpLangBase}});
  offersLine_ = cursor.Line;
  chosen_ = 0;
  if (offers_.List.empty()) return app_.Aid.HideOffers();
  std::vector<vaxel::Offer> shown;
  for (const Completion& offer : offers_.List)
    shown.push_back({offer.Shown, offer.Explanation, offer.Sample});
  app_.Aid.ShowOffers(std::move(shown), cursor.LineBegin + offers_.Begin);
}

void WritingAid::Complete() {
  Offer(true);
}

void WritingAid::Typed() {
  const std::size_t line = app_.Editor.Place().Line;
  if (typedLine_ && *typedLine_ != line) leftLine_ = typedLine_;
  if (app_.Editor.Size() <= ReadAtOnce) SpellLeftLine();
  typedLine_ = line;
  typedText_ = script_.Texts;
  Offer(false);
  if (page_ == AidPage::Help) ShowHelp();
}

void WritingAid::HideOffers() {
  if (offers_.List.empty()) return;
  offers_ = {};
  app_.Aid.HideOffers();
}

// The cursor goes before the text is told to have changed; offers stay as long as it is at their word.
void WritingAid::CursorMoved() {
  const std::size_t line = app_.Editor.Place().Line;
  // The control is still at work on what has moved the cursor.
  if (typedLine_ && *typedLine_ != line) {
    leftLine_ = std::exchange(typedLine_, std::nullopt);
    app_.Window.AwaitPause();
  }
  if (page_ == AidPage::Help) ShowHelp();
  if (!HasOffers()) return;
  const std::size_t begin = app_.Editor.RangeOfLines(line, line).Begin;
  const EditorRange selection = app_.Editor.Selection();
  const bool isAtWord = line == offersLine_ && selection.IsEmpty() &&
                        selection.Begin >= begin + offers_.Begin &&
                        selection.Begin <= begin + offers_.End + 1;
  if (!isAtWord) HideOffers();
}

bool WritingAid::KeyDown(Key key) {
  if (!HasOffers()) return false;
  const std::size_t last = offers_.List.size() - 1;
  switch (key) {
    case Key::Up:
      chosen_ = chosen_ == 0 ? last : chosen_ - 1;
      break;
    case Key::Down:
      chosen_ = chosen_ == last ? 0 : chosen_ + 1;
      break;
    case Key::Tab:
    case Key::Return:
      TakeOffer(chosen_);
      return true;
    case Key::Escape:
      HideOffers();
      return true;
    default:
      return false;
  }
  app_.Aid.ChooseOffer(chosen_);
  return true;
}

void WritingAid::TakeOffer(std::size_t index) {
  if (index >= offers_.List.size()) return;
  const std::string text = offers_.List[index].Inserted;
  const std::size_t begin = app_.Editor.RangeOfLines(offersLine_, offersLine_).Begin;
  const EditorRange replaced{begin + offers_.Begin, begin + offers_.End};
  HideOffers();
  app_.Editor.Replace(replaced, text);
}

void WritingAid::ToggleHelp() {
  ShowPage(page_ == AidPage::Help ? AidPage::None : AidPage::Help);
}

void WritingAid::ShowPage(AidPage page) {
  page_ = page;
  if (page == AidPage::Help) {
    RefreshSurvey();
    ShowHelp();
  }
  app_.Aid.ShowPage(page);
}

void WritingAid::ShowCaptions() {
  app_.Aid.SetPageCaptions(app_.MenuText(TextId::HelpPage), app_.MenuText(TextId::ProblemsPage));
}

void WritingAid::ShowHelp() {
  const Cursor cursor = CursorNow();
  const LineSurroundings surroundings(survey_, cursor.Line,
                                      [this](std::size_t line) { return LineOf(line); });
  const HelpLanguage language{app_.Strings, app_.HelpLangBase};
  const SyntaxHelp found = HelpForLine(cursor.Text, cursor.Column, surroundings.Context(), language);
  AidHelp help;
  help.Text = found.Text;
  if (const auto& part = found.PartName ? found.PartName : found.Name)
    help.Strong.push_back({part->Begin, part->End});
  if (!found.Default.empty()) help.Text += "\n" + found.Default;
  for (const CommandRow* row : found.Commands) {
    help.Text += "\n" + std::string(row->Spelling()) + "  " +
                 std::string(PurposeOf(*row, app_.Strings, app_.HelpLangBase));
  }
  app_.Aid.SetHelp(help);
}

void WritingAid::SetProblems(std::vector<Problem> problems, bool show) {
  problems_.Replace(std::move(problems));
  std::vector<std::string> rows;
  std::vector<std::size_t> wrong;
  for (const Problem& problem : problems_.All()) {
    if (problem.What == Problem::Kind::Error && problem.EditorLine > 0) wrong.push_back(problem.EditorLine);
    std::string row = problem.Line > 0 ? std::to_string(problem.Line) + ": " : std::string();
    if (problem.EditorLine != problem.Line || problem.File != script_.CurrentFile)
      row.insert(0, std::string(NameWithoutFolder(problem.File)) + ":");
    rows.push_back(row + problem.Message);
  }
  app_.Aid.SetProblems(rows);
  app_.Aid.MarkLines(wrong);
  if (show && !rows.empty()) {
    ShowPage(AidPage::Problems);
  } else if (rows.empty() && page_ == AidPage::Problems) {
    ShowPage(AidPage::None);
  }
}

void WritingAid::GoToProblem(std::size_t index) {
  if (index >= problems_.All().size()) return;
  app_.Aid.ChooseProblem(index);
  const std::uint32_t line = problems_.All()[index].EditorLine;
  if (line > 0 && line <= app_.Editor.Place().Lines) app_.Editor.GoToLine(line);
}

const Problem* WritingAid::ProblemOfOtherFile(std::size_t index) const {
  if (index >= problems_.All().size()) return nullptr;
  const Problem& problem = problems_.All()[index];
  return problem.File.empty() || problem.File == script_.CurrentFile ? nullptr : &problem;
}

void WritingAid::NextProblem() {
  ChooseProblem(problems_.After(static_cast<std::uint32_t>(app_.Editor.Place().Line)));
}

void WritingAid::PreviousProblem() {
  ChooseProblem(problems_.Before(static_cast<std::uint32_t>(app_.Editor.Place().Line)));
}

void WritingAid::ChooseProblem(std::optional<std::size_t> index) {
  if (!index) return;
  if (page_ != AidPage::Problems) ShowPage(AidPage::Problems);
  GoToProblem(*index);
}

}  // namespace vaxel
