// Helps while a script is written: the help of the cursor's line, what may be meant by what is typed, and the
// list of what the last run found wrong.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"
#include "app/completion.h"
#include "app/edited_script.h"
#include "app/keys.h"
#include "app/problem_list.h"
#include "app/script_survey.h"
#include "app/word_help.h"
#include "app/writing_aid_view.h"

namespace vaxel {

class WritingAid {
 public:
  // What a variable was worth in the last run; there is none where it had no value.
  using ValueOf = std::function<std::optional<std::string>(std::string_view name)>;

  // Both must outlive it.
  WritingAid(AppContext& app, const EditedScript& script, ValueOf valueOf)
      : app_(app), script_(script), valueOf_(std::move(valueOf)), outside_(*this) {}

  void ToggleHelp();       // Mnu_Syntaxe
  void Complete();         // Mnu_Completer
  void NextProblem();      // Mnu_ErreurSuivante
  void PreviousProblem();  // Mnu_ErreurPrecedente
  void ShowPage(AidPage page);
  // Names the pages in the language of menus.
  void ShowCaptions();

  // The text has changed; and, after that, a character was typed or taken back.
  void TextChanged();
  void Typed();
  void CursorMoved();
  // Spells what was typed last, though the cursor may still be there.
  void FinishTyping();
  // The user has not typed for a moment.
  void Paused();
  // The text is another one, or was run: what the editor knows of its names is read anew.
  void ReadNames();
  // What is said of the word at a place, whose range is in the text; none where there is nothing to say.
  std::optional<WordHelp> WordAt(std::size_t place);

  // Whether offers are shown, which take Up, Down, Tab, Return and Escape.
  bool HasOffers() const { return !offers_.List.empty(); }
  bool KeyDown(Key key);
  void TakeOffer(std::size_t index);
  void HideOffers();

  // What a run has found takes the place of what the one before found. With show, anything is brought to the
  // user's eyes.
  void SetProblems(std::vector<Problem> problems, bool show);
  void GoToProblem(std::size_t index);
  // The problem of that place in the list, when it is one of a file that the script includes; else null.
  const Problem* ProblemOfOtherFile(std::size_t index) const;

 private:
  // What the system tells for completion, kept for a while.
  class Outside : public CompletionSource {
   public:
    explicit Outside(WritingAid& owner) : owner_(owner) {}
    std::vector<std::string> FilesIn(std::string_view folder, std::size_t most) override;
    std::span<const std::string> Fonts() override;

   private:
    WritingAid& owner_;
    std::optional<std::vector<std::string>> fonts_;
    std::string folder_;  // whose files were asked for last, and when
    std::optional<std::chrono::steady_clock::time_point> asked_;
    std::vector<std::string> files_;
  };
  // The cursor's line and the column in it.
  struct Cursor {
    std::size_t Line = 1, Column = 0, LineBegin = 0;
    std::string Text;
  };

  Cursor CursorNow();
  std::string LineOf(std::size_t line);
  void Offer(bool isAsked);
  void ShowHelp();
  void RefreshSurvey();
  void SpellLeftLine();
  void ChooseProblem(std::optional<std::size_t> index);

  AppContext& app_;
  const EditedScript& script_;
  ValueOf valueOf_;
  Outside outside_;
  ScriptSurvey survey_;
  bool isSurveyOld_ = true;
  bool areNamesNew_ = false;              // the editor does not know them yet
  std::uint64_t surveyed_ = 0;            // which text the survey is of
  std::optional<std::size_t> typedLine_;  // in which something was typed, while the cursor is in it
  std::optional<std::size_t> leftLine_;   // the one before, until its keywords are spelled
  std::uint64_t typedText_ = 0;           // which text these lines are of
  AidPage page_ = AidPage::None;
  Completions offers_;  // none is shown while the list is empty
  std::size_t offersLine_ = 0, chosen_ = 0;
  ProblemList problems_;
};

}  // namespace vaxel
