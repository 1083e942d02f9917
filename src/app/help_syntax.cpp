#include "app/help_syntax.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "base/text.h"

namespace vaxel {
namespace {

// Brackets that open in a text less those that close.
int Depth(std::string_view text) {
  return static_cast<int>(CountOf(text, "[")) - static_cast<int>(CountOf(text, "]"));
}

// The name of the command: what all its forms begin with.
std::string_view HeadOf(std::string_view help) {
  const std::size_t end = help.find_first_of(" =[{:\n");
  return help.substr(0, end);
}

// Whether the line is one of the forms. Below a line with nothing but "or" it is, or when "=" follows the
// command's name and the letters that it may have.
bool IsForm(std::string_view line, std::string_view head, bool isBelowOr) {
  if (head.empty() || !line.starts_with(head)) return false;
  std::string_view rest = line.substr(head.size());
  if (!rest.empty() && (IsLetter(rest.front()) || IsDigit(rest.front()))) {
    rest = rest.substr(std::min(rest.size(), rest.find_first_of(" =")));
  }
  while (rest.starts_with('[') || rest.starts_with('{')) {
    const std::size_t end = rest.find(rest.front() == '[' ? ']' : '}');
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  rest = TrimLeft(rest);
  return isBelowOr || rest.empty() || rest.front() == '=';
}

// The place of the bracket that closes the one at the text's beginning; npos where none does.
std::size_t ClosingBracket(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '[') ++depth;
    if (text[i] == ']' && --depth == 0) return i;
  }
  return std::string_view::npos;
}

// Takes blanks off, and brackets that are around the name or belong to what is around it.
TextRange NameIn(std::string_view help, std::size_t begin, std::size_t end) {
  while (begin < end) {
    const std::string_view text = help.substr(begin, end - begin);
    const char first = text.front(), last = text.back();
    const std::size_t closing = first == '[' ? ClosingBracket(text) : 0;
    const bool isOpen = closing == std::string_view::npos;
    if (first == ' ' || first == '\n' || first == ']' || isOpen) {
      ++begin;
    } else if (last == ' ' || last == '[' || (last == ']' && Depth(text) < 0)) {
      --end;
    } else if (closing > 0 && closing == text.size() - 1) {
      ++begin;
      --end;
    } else {
      break;
    }
  }
  return {begin, std::max(begin, end)};
}

// The places of a sign outside braces, and the end of the text.
std::vector<std::size_t> EndsOf(std::string_view text, std::string_view sign) {
  std::vector<std::size_t> ends;
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '{') ++depth;
    if (text[i] == '}') --depth;
    if (depth <= 0 && text.substr(i).starts_with(sign)) ends.push_back(i);
  }
  ends.push_back(text.size());
  return ends;
}

void AddParameters(std::string_view help, std::size_t begin, std::size_t end, SyntaxLine& line) {
  std::size_t from = begin;
  for (std::size_t comma : EndsOf(help.substr(begin, end - begin), ",")) {
    SyntaxParameter parameter{NameIn(help, from, begin + comma)};
    const std::string_view name = help.substr(parameter.Begin, parameter.End - parameter.Begin);
    from = begin + comma + 1;
    if (name.starts_with("...")) continue;
    std::size_t part = parameter.Begin;
    for (std::size_t mark : EndsOf(name, "§")) {
      parameter.Parts.push_back(NameIn(help, part, parameter.Begin + mark));
      part = parameter.Begin + mark + std::string_view("§").size();
    }
    line.Parameters.push_back(std::move(parameter));
  }
}

// The place behind the "=" of a form, and behind the signs that an assignment may have there.
std::optional<std::size_t> BehindEquals(std::string_view form) {
  const std::vector<std::size_t> ends = EndsOf(form, "=");
  if (ends.size() == 1) return std::nullopt;
  std::size_t place = ends.front() + 1;
  if (form.substr(place).starts_with('<')) ++place;
  for (std::string_view signs : {"[{=;<}]", "{;=;<}"}) {
    if (form.substr(place).starts_with(signs)) place += signs.size();
  }
  return place;
}

void ReadForm(std::string_view help, SyntaxLine& line) {
  const std::string_view form = help.substr(line.Begin, line.End - line.Begin);
  for (std::string_view word : {" GOTO ", " THEN ", " Then "}) {
    const std::size_t at = form.find(word);
    if (at == std::string_view::npos) continue;
    const std::size_t first = std::min(at, form.find(' '));
    line.Parameters.push_back({NameIn(help, line.Begin + first, line.Begin + at)});
    line.Parameters.push_back({NameIn(help, line.Begin + at + word.size(), line.End)});
    return;
  }
  const auto place = BehindEquals(form);
  const std::size_t begin = line.Begin + place.value_or(std::min(form.size(), form.find(' ')));
  if (Trim(help.substr(begin, line.End - begin)).empty()) return;
  AddParameters(help, begin, line.End, line);
}

}  // namespace

std::vector<SyntaxLine> SyntaxOf(std::string_view help) {
  std::vector<SyntaxLine> forms;
  const std::string_view head = HeadOf(help);
  bool isBelowOr = true;  // the first line is a form whatever it looks like
  for (std::size_t begin = 0; begin < help.size();) {
    std::size_t end = std::min(help.size(), help.find('\n', begin));
    const std::string_view text = help.substr(begin, end - begin);
    if (IsForm(text, head, isBelowOr)) {
      // A form goes on in the next line as long as a bracket is open.
      while (end < help.size() && Depth(help.substr(begin, end - begin)) > 0) {
        end = std::min(help.size(), help.find('\n', end + 1));
      }
      SyntaxLine& line = forms.emplace_back();
      line.Begin = begin;
      line.End = end;
      ReadForm(help, line);
    }
    isBelowOr = Trim(text).size() <= 2;
    begin = end + 1;
  }
  return forms;
}

}  // namespace vaxel
