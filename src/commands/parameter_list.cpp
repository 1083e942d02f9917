#include "commands/parameter_list.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/colour_value.h"
#include "interpreter/parameters.h"

namespace vaxel {
namespace {

using Kind = ParameterKind;

struct KindRow {
  std::string_view Word;
  Kind What;
};

constexpr auto Kinds = std::to_array<KindRow>({{"number", Kind::Number},
                                               {"x", Kind::X},
                                               {"y", Kind::Y},
                                               {"value", Kind::ScaleValue},
                                               {"step", Kind::Step},
                                               {"shape", Kind::ShapeOfMark},
                                               {"unit", Kind::Unit},
                                               {"notation", Kind::Notation},
                                               {"orientation", Kind::Orientation},
                                               {"colour", Kind::Ink},
                                               {"colourN", Kind::ColourOrNone},
                                               {"leadcolour", Kind::LeadColour},
                                               {"pen", Kind::Pen},
                                               {"penmm", Kind::PenMm},
                                               {"ends", Kind::PenEnds},
                                               {"text", Kind::Text},
                                               {"letters", Kind::TextLetters},
                                               {"arcletters", Kind::ArcTextLetters},
                                               {"multiplier", Kind::Multiplier},
                                               {"size", Kind::FontSize},
                                               {"font", Kind::FontName},
                                               {"change", Kind::FontChange},
                                               {"script", Kind::ScriptFile},
                                               {"data", Kind::DataFile},
                                               {"picture", Kind::PictureFile},
                                               {"scale", Kind::PictureScale},
                                               {"box", Kind::PictureBox},
                                               {"pixels", Kind::PicturePixels},
                                               {"position", Kind::PicturePosition},
                                               {"corner", Kind::CornerForm},
                                               {"pins", Kind::DovetailEnds},
                                               {"light", Kind::LightType},
                                               {"page", Kind::PageForm},
                                               {"L", Kind::LogLetter},
                                               {"table", Kind::TableWord},
                                               {"liste", Kind::ListWord},
                                               {"straight", Kind::StraightMark},
                                               {"variable", Kind::Variable},
                                               {"list", Kind::List},
                                               {"expression", Kind::Value},
                                               {"law", Kind::Law},
                                               {"bound", Kind::Bound},
                                               {"prompt", Kind::Prompt},
                                               {"argument", Kind::Argument},
                                               {"label", Kind::JumpLabel},
                                               {"condition", Kind::Condition},
                                               {"command", Kind::Command},
                                               {"separator", Kind::Separator},
                                               {"format", Kind::Format}});

ParameterPart ReadPart(std::string_view text) {
  ParameterPart part;
  const std::size_t end = std::min(text.size(), text.find_first_of("=?"));
  const std::string_view behind = text.substr(end);
  if (behind == "?") part.Default.What = ParameterDefault::Kind::Standing;
  if (behind.starts_with("=#")) {
    part.Default.What = ParameterDefault::Kind::Parameter;
    part.Default.N = static_cast<std::size_t>(LeadingNumber(behind.substr(2)));
  } else if (behind.starts_with('=')) {
    part.Default = {ParameterDefault::Kind::Worth, behind.substr(1)};
  }
  const auto* const row = std::find_if(
      Kinds.begin(), Kinds.end(), [&](const KindRow& known) { return known.Word == text.substr(0, end); });
  assert(row != Kinds.end());
  part.Kind = row->What;
  return part;
}

// What stands behind a pen's width is the same wherever a pen is described.
void AddPenParts(ParameterPartList& parts) {
  const ParameterDefault standing = parts.back().Default;
  parts.push_back({Kind::PenEnds, standing});
  for (int i = 0; i < 3; ++i) parts.push_back({Kind::Number, standing});
}

ParameterForm ReadForm(std::string_view text) {
  ParameterForm form;
  if (Trim(text).empty()) return form;
  for (std::string_view parameter : SplitAt(text, ",")) {
    parameter = Trim(parameter);
    if (parameter.starts_with('*')) {
      parameter.remove_prefix(1);
      form.RepeatsFrom = form.Parameters.size() + 1;
    }
    ParameterPartList& parts = form.Parameters.emplace_back();
    for (std::string_view part : SplitAt(parameter, "§")) parts.push_back(ReadPart(part));
    if (parts.back().Kind == Kind::Pen || parts.back().Kind == Kind::PenMm) AddPenParts(parts);
  }
  return form;
}

using Forms = std::vector<ParameterForm>;

std::vector<Forms> ReadAllForms() {
  std::vector<Forms> all;
  for (const CommandRow& row : CommandTable()) {
    Forms& forms = all.emplace_back();
    for (std::string_view form : SplitAt(row.Rules.Takes, "|")) forms.push_back(ReadForm(form));
  }
  return all;
}

enum class Evidence : std::uint8_t { Nothing, For, Against };

Evidence When(bool isSo) {
  return isSo ? Evidence::For : Evidence::Against;
}

bool BeginsWithOneOf(std::string_view text, std::string_view letters) {
  return !text.empty() && letters.find(text.front()) != std::string_view::npos;
}

// What a parameter says of the form in which a kind stands at its place.
Evidence EvidenceOf(Kind kind, std::string_view parameter, const Separators& separators) {
  const std::string_view trimmed = Trim(parameter);
  const std::string first = UpperCase(Trim(trimmed.substr(0, trimmed.find(separators.Second))));
  switch (kind) {
    case Kind::LogLetter:
      return When(first == "L");
    case Kind::TableWord:
      return When(first == "TABLE");
    case Kind::ListWord:
      return When(first == "LISTE");
    case Kind::Multiplier:
      return When(first.starts_with('*'));
    case Kind::PenMm:
      return When(first.ends_with("MM"));
    case Kind::PictureBox:
      return When(first.size() == 1 && BeginsWithOneOf(first, "XYZA"));
    case Kind::PicturePixels:
      return When(first == "V");
    default:
      return Evidence::Nothing;
  }
}

// How well a line fits a form; negative where it lacks a mark of it.
int FitOf(const ParameterForm& form, std::string_view text, std::span<const std::string_view> parameters,
          const Separators& separators) {
  int fit = form.Holds(parameters.size()) ? 4 : 0;
  for (std::size_t i = 0; i < form.Parameters.size(); ++i) {
    const Kind kind = form.Parameters[i].front().Kind;
    const std::string_view parameter = i < parameters.size() ? parameters[i] : std::string_view();
    const Evidence evidence =
        kind == Kind::Law ? When(TrimLeft(text).starts_with('<')) : EvidenceOf(kind, parameter, separators);
    if (evidence == Evidence::Against) return -1;
    if (evidence == Evidence::For) fit += 2;
  }
  return fit;
}

bool TakesRest(Kind kind) {
  return kind == Kind::Text || kind == Kind::Value || kind == Kind::Law || kind == Kind::JumpLabel ||
         kind == Kind::Format;
}

// The place of the separator that ends a parameter of this kind; npos where none does.
std::size_t EndOf(std::string_view text, Kind kind, std::string_view separator) {
  if (kind == Kind::Prompt) return text.rfind(separator);
  if (kind != Kind::Bound) return text.find(separator);
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth <= 0 && text.substr(i).starts_with(separator)) return i;
  }
  return std::string_view::npos;
}

}  // namespace

const ParameterPartList* ParameterForm::At(std::size_t n) const {
  if (n == 0) return nullptr;
  if (n > Parameters.size()) {
    if (RepeatsFrom == 0) return nullptr;
    n = RepeatsFrom + (n - RepeatsFrom) % (Parameters.size() + 1 - RepeatsFrom);
  }
  return &Parameters[n - 1];
}

std::span<const ParameterForm> FormsOf(const CommandRow& row) {
  static const std::vector<Forms> all = ReadAllForms();
  return all[static_cast<std::size_t>(&row - CommandTable().data())];
}

const ParameterForm& FormOfLine(const CommandRow& row, std::string_view text, const Separators& separators) {
  const std::span<const ParameterForm> forms = FormsOf(row);
  if (forms.size() == 1) return forms.front();
  const std::vector<std::string_view> parameters = SplitAt(text, separators.First);
  const ParameterForm* best = &forms.front();
  int bestFit = -1;
  for (const ParameterForm& form : forms) {
    const int fit = FitOf(form, text, parameters, separators);
    if (fit > bestFit) best = &form;
    bestFit = std::max(fit, bestFit);
  }
  return *best;
}

std::vector<std::string_view> SplitParameters(const CommandRow& row, const ParameterForm& form,
                                              std::string_view text, const Separators& separators) {
  std::vector<std::string_view> parameters;
  for (std::size_t n = 1;; ++n) {
    const ParameterPartList* const parts = form.At(n);
    const Kind kind = parts ? parts->front().Kind : Kind::Number;
    const bool isLast = n == form.Parameters.size() && form.RepeatsFrom == 0;
    const bool isWhole = n == row.Rules.TextFrom || (isLast && TakesRest(kind)) ||
                         (isLast && kind == Kind::Ink && BeginsColourParts(TrimLeft(text)));
    const std::size_t end = isWhole ? std::string_view::npos : EndOf(text, kind, separators.First);
    parameters.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parameters;
    text.remove_prefix(end + separators.First.size());
  }
}

std::size_t PlaceInForm(const ParameterForm& form, std::span<const std::string_view> parameters,
                        std::size_t n) {
  const bool mayLack = !form.Parameters.empty() && form.Parameters.front().front().Kind == Kind::LeadColour;
  if (!mayLack || parameters.empty()) return n;
  const std::string_view first = Trim(parameters.front());
  const bool isCoordinate = first.empty()
                                ? parameters.size() > 1
                                : first.starts_with('%') || IsNumber(first) || IsDigit(first.front());
  return isCoordinate ? n + 1 : n;
}

}  // namespace vaxel
