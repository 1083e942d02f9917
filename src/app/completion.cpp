#include "app/completion.h"

#include <algorithm>
#include <array>

#include "app/command_search.h"
#include "app/name_matches.h"
#include "app/parameter_choices.h"
#include "app/script_line.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "interpreter/colour_value.h"
#include "interpreter/parameters.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

constexpr std::size_t LeastKeyword = 2;
constexpr std::size_t MostFiles = 1000;

struct FileNames {
  ParameterKind Kind;
  std::vector<std::string_view> Endings;  // in lower case; none: all files
};

const FileNames& NamesFor(ParameterKind kind) {
  static const std::array<FileNames, 3> all = {
      {{ParameterKind::ScriptFile, {".dat"}},
       {ParameterKind::PictureFile, {".png", ".jpg", ".jpeg", ".gif", ".bmp"}},
       {ParameterKind::DataFile, {}}}};
  return *std::find_if(all.begin(), all.end(), [&](const FileNames& names) { return names.Kind == kind; });
}

bool IsOffered(std::string_view name, const FileNames& names) {
  if (names.Endings.empty() || name.ends_with('/') || name.ends_with('\\')) return true;
  return std::any_of(names.Endings.begin(), names.Endings.end(), [&](std::string_view ending) {
    return name.size() > ending.size() && EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
  });
}

class Completer {
 public:
  Completer(std::string_view text, std::size_t cursor, std::size_t skipped, const CompletionRequest& request,
            const CompletionKnowledge& knowledge)
      : text_(text), head_(text.substr(0, cursor)), skipped_(skipped), request_(request), know_(knowledge) {}

  Completions Find() {
    const ScriptLineParts parts = ReadScriptLine(head_, Marks());
    if (!parts.Comment.empty()) return {};
    if (const std::size_t sign = VariableBegin(); sign != std::string_view::npos) {
      if (!IsInLiteral(parts)) CompleteVariable(sign);
    } else if (parts.Commands.empty()) {
      if (parts.Label.empty()) CompleteKeyword(head_.substr(head_.size()));
    } else {
      CompleteCommand(parts.Commands.back());
    }
    return std::move(found_);
  }

 private:
  const Separators& Marks() const { return know_.Context.Separators; }

  void CompleteCommand(const CommandInLine& command) {
    const bool isKeyword = EndOf(command.Keyword, head_) == head_.size();
    if (isKeyword) return CompleteKeyword(command.Keyword);
    if (command.IsCondition()) {
      if (command.Jumps) return CompleteLabel(command.Target);
      const bool isBehind = !command.Word.empty() && EndOf(command.Word, head_) < head_.size();
      if (isBehind) CompleteKeyword(head_.substr(head_.size()));
    } else if (command.Row) {
      CompleteParameter(command);
    }
  }

  // The place of the "%" of the variable whose name is being written; npos where none is.
  std::size_t VariableBegin() const {
    constexpr std::size_t none = std::string_view::npos;
    const std::size_t sign = head_.rfind('%');
    if (sign == none) return none;
    std::size_t first = sign;
    while (first > 0 && head_[first - 1] == '%') --first;
    if ((sign - first) % 2 == 1) return none;  // "%%" is a per cent sign
    return NameLength(head_.substr(sign)) == head_.size() - sign ? sign : none;
  }

  std::size_t NameLength(std::string_view text) const {
    static const VariableTable none;
    return ReferenceAt(text, none, Marks()).size();
  }

  bool IsInLiteral(const ScriptLineParts& parts) const {
    if (parts.Commands.empty() || parts.Commands.back().Text.empty()) return false;
    const LineParameters parameters = ParametersIn(parts.Commands.back(), Marks());
    if (parameters.Texts.empty()) return false;
    const ParameterPartList* const last = parameters.At(parameters.Texts.size());
    return last && last->front().Kind == ParameterKind::Text && IsLiteral(parameters.Texts.back());
  }

  // What is inserted takes the place of the text from here to the end of the word, which goes on up to one of
  // these.
  void Take(std::size_t begin, std::size_t end) {
    UnitCounter units(text_.substr(skipped_));
    begin = std::max(begin, skipped_) - skipped_;
    found_.Begin = units.UnitsAt(begin);
    found_.End = units.UnitsAt(std::max(begin, end - skipped_));
  }

  // The rest of a word of letters and figures at the cursor.
  std::size_t EndOfWord() const {
    std::size_t end = head_.size();
    while (end < text_.size() && (IsLetter(text_[end]) || IsDigit(text_[end]))) ++end;
    return end;
  }

  // The rest of the parameter at the cursor, blanks at its end left out.
  std::size_t EndOfPart() const {
    std::string_view rest = text_.substr(head_.size());
    rest = rest.substr(0, rest.find(Marks().First));
    rest = rest.substr(0, rest.find(Marks().Second));
    rest = rest.substr(0, rest.find('\''));
    return head_.size() + Trim(rest).size();
  }

  void CompleteKeyword(std::string_view typed) {
    if (typed.size() < LeastKeyword && !request_.IsAsked) return;
    std::vector<const CommandRow*> rows = FindCommands(typed, know_.Language.Strings, know_.Language.Base);
    const bool isWhole = !rows.empty() && EqualIgnoringCase(rows.front()->Keyword, typed);
    if (isWhole) {
      const auto goesOn = [&](const CommandRow* row) {
        return EqualIgnoringCase(row->Keyword.substr(0, typed.size()), typed);
      };
      rows.erase(std::find_if_not(rows.begin(), rows.end(), goesOn), rows.end());
      if (rows.size() == 1) return;
    }
    Take(head_.size() - typed.size(), EndOfWord());
    const bool hasParameters = !Trim(text_.substr(EndOfWord())).empty();
    for (const CommandRow* row : rows) {
      found_.List.push_back({std::string(row->Spelling()), InsertedFor(*row, hasParameters),
                             std::string(PurposeOf(*row, know_.Language.Strings, know_.Language.Base))});
    }
  }

  static std::string InsertedFor(const CommandRow& row, bool hasParameters) {
    std::string text(row.Spelling());
    if (hasParameters || row.Rules.Takes.empty()) return text;
    const bool isWord = row.Rules.Form == LineForm::Condition || row.Help == Help::Goto;
    return text + (isWord ? " " : " = ");
  }

  void CompleteVariable(std::size_t sign) {
    const std::string_view typed = head_.substr(sign);
    const std::vector<ScriptSurvey::Named> variables =
        know_.Survey.VariablesUpTo(request_.LineNumber > 0 ? request_.LineNumber - 1 : 0);
    const std::span<const std::string_view> system = SystemVariableNames();
    NameMatches matches(typed);
    for (std::size_t i = 0; i < variables.size(); ++i) matches.Try(variables[i].Name, i);
    for (std::size_t i = 0; i < system.size(); ++i) matches.Try(system[i], variables.size() + i);
    Take(sign, sign + std::max(typed.size(), NameLength(text_.substr(sign))));
    for (std::size_t i : matches.Best()) {
      if (i < variables.size()) {
        Offer(variables[i].Name, Explained(TextId::VariableOfLine, variables[i].Line));
      } else {
        Offer(std::string(system[i - variables.size()]), std::string(Say(TextId::SystemVariable)));
      }
    }
  }

  void CompleteLabel(std::string_view typed) {
    if (typed.data() == nullptr) typed = head_.substr(head_.size());
    const std::span<const ScriptSurvey::Named> labels = know_.Survey.Labels();
    NameMatches matches(typed);
    for (std::size_t i = 0; i < labels.size(); ++i) matches.Try(labels[i].Name, i);
    const std::string_view rest = text_.substr(head_.size());
    Take(BeginOf(typed, head_), head_.size() + Trim(rest.substr(0, rest.find('\''))).size());
    for (std::size_t i : matches.Best()) {
      Offer(labels[i].Name, Explained(TextId::LabelOfLine, labels[i].Line));
    }
  }

  void CompleteParameter(const CommandInLine& command) {
    const LineParameters parameters = ParametersIn(command, Marks());
    const LineParameters::Place place = parameters.PlaceAt(head_, head_.size(), Marks());
    const ParameterPartList* const parts = parameters.At(place.N);
    if (!parts) return;
    const ParameterKind kind = (*parts)[std::min(place.Part, parts->size() - 1)].Kind;
    std::string_view typed = parameters.Texts[place.N - 1];
    if (kind == ParameterKind::JumpLabel) return CompleteLabel(TrimLeft(typed));
    const std::size_t part = place.Part == 0 ? std::string_view::npos : typed.rfind(Marks().Second);
    if (part != std::string_view::npos) typed.remove_prefix(part + Marks().Second.size());
    typed = TrimLeft(typed);
    const bool isBegun = request_.IsAsked || !typed.empty();
    if (!isBegun) return;
    switch (kind) {
      case ParameterKind::ScriptFile:
      case ParameterKind::DataFile:
      case ParameterKind::PictureFile:
        return CompleteFile(typed, kind);
      case ParameterKind::FontName:
        return CompleteFont(typed);
      case ParameterKind::Variable:
      case ParameterKind::List:
        if (typed.empty()) CompleteVariable(head_.size());
        return;
      default:
        break;
    }
    const bool isColour = kind == ParameterKind::Ink || kind == ParameterKind::ColourOrNone ||
                          kind == ParameterKind::LeadColour;
    if (isColour) CompleteColour(typed);
    CompleteChoice(command, parameters, place, typed);
  }

  void CompleteFile(std::string_view typed, ParameterKind kind) {
    const std::size_t folderLength = typed.find_last_of("/\\") + 1;  // npos: none
    const std::string_view folder = typed.substr(0, folderLength);
    std::vector<std::string> files = know_.Outside.FilesIn(folder, MostFiles);
    files.resize(std::min(files.size(), MostFiles));
    NameMatches matches(typed.substr(folderLength));
    for (std::size_t i = 0; i < files.size(); ++i) {
      if (IsOffered(files[i], NamesFor(kind))) matches.Try(files[i], i);
    }
    Take(BeginOf(typed, head_), EndOfPart());
    for (std::size_t i : matches.Best()) {
      found_.List.push_back({files[i], std::string(folder) + files[i], {}});
    }
  }

  void CompleteFont(std::string_view typed) {
    const std::span<const std::string> fonts = know_.Outside.Fonts();
    NameMatches matches(typed);
    for (std::size_t i = 0; i < fonts.size(); ++i) matches.Try(fonts[i], i);
    Take(BeginOf(typed, head_), EndOfPart());
    for (std::size_t i : matches.Best()) Offer(fonts[i], {});
  }

  void CompleteColour(std::string_view typed) {
    const std::span<const NamedColour> colours = ColourNames();
    NameMatches matches(typed);
    for (std::size_t i = 0; i < colours.size(); ++i) matches.Try(colours[i].Name, i);
    Take(BeginOf(typed, head_), EndOfPart());
    for (std::size_t i : matches.Best()) {
      const Colour colour = colours[i].Value;
      Offer(CapitalOnly(colours[i].Name), std::to_string(RedOf(colour)) + " " +
                                              std::to_string(GreenOf(colour)) + " " +
                                              std::to_string(BlueOf(colour)));
      found_.List.back().Sample = colour;
    }
  }

  // Letters that stand together are offered one by one, where they are asked for; words of all forms that the
  // command may have.
  void CompleteChoice(const CommandInLine& command, const LineParameters& parameters,
                      LineParameters::Place place, std::string_view typed) {
    std::vector<const ParameterChoice*> offered;
    for (const ParameterForm& form : FormsOf(*command.Row)) {
      const ParameterPartList* const parts = form.At(parameters.PlaceOf(place.N));
      if (!parts || place.Part >= parts->size()) continue;
      const ParameterChoices choices = ChoicesOf((*parts)[place.Part].Kind);
      if (choices.AreLetters) {
        if (&form == parameters.Form && request_.IsAsked) OfferLetters(choices, typed);
        continue;
      }
      for (const ParameterChoice& choice : choices.List) {
        if (std::find(offered.begin(), offered.end(), &choice) == offered.end()) offered.push_back(&choice);
      }
    }
    if (offered.empty()) return;
    NameMatches matches(typed);
    for (std::size_t i = 0; i < offered.size(); ++i) matches.Try(offered[i]->Word, i);
    Take(BeginOf(typed, head_), EndOfPart());
    for (std::size_t i : matches.Best()) {
      Offer(std::string(offered[i]->Word), std::string(Say(offered[i]->Meaning)));
    }
  }

  void OfferLetters(const ParameterChoices& choices, std::string_view typed) {
    const std::string upper = UpperCase(typed);
    Take(head_.size(), head_.size());
    for (const ParameterChoice& choice : choices.List) {
      if (upper.find(choice.Word) != std::string::npos) continue;
      Offer(std::string(choice.Word), std::string(Say(choice.Meaning)));
    }
  }

  void Offer(std::string text, std::string explanation) {
    found_.List.push_back({text, text, std::move(explanation)});
  }

  static std::string CapitalOnly(std::string_view name) {
    std::string text(name);
    std::transform(text.begin() + 1, text.end(), text.begin() + 1,
                   [](char c) { return static_cast<char>(c - 'A' + 'a'); });
    return text;
  }

  std::string_view Say(TextId id) const { return know_.Language.Strings.Text(know_.Language.Base, id); }
  std::string Explained(TextId id, std::size_t line) const {
    return know_.Language.Strings.Text(know_.Language.Base, id, std::to_string(line));
  }

  std::string_view text_, head_;
  std::size_t skipped_;
  const CompletionRequest& request_;
  const CompletionKnowledge& know_;
  Completions found_;
};

}  // namespace

Completions Complete(const CompletionRequest& request, const CompletionKnowledge& knowledge) {
  std::string text(knowledge.Context.Before);
  const std::size_t skipped = text.size();
  text += request.Line;
  std::replace(text.begin(), text.end(), '\t', ' ');
  const std::size_t cursor = skipped + ByteAtUnit(request.Line, request.Column);
  return Completer(text, cursor, skipped, request, knowledge).Find();
}

}  // namespace vaxel
