// Prints what the program knows of its language, its texts and its menus as JSON: the manual's reference is
// made from it, and the manual is checked against it.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "app/help_syntax.h"
#include "app/menu_table.h"
#include "app/parameter_choices.h"
#include "app/syntax_help.h"
#include "commands/command_table.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

constexpr std::string_view TextNames[] = {
#define VAXEL_STRING(name, id, french, english, spanish) #name,
#include "resources/strings.def"
};

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '\n') {
      quoted += "\\n";
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

// A list of what the function makes of each item.
template <class Items, class Function>
std::string ListOf(const Items& items, Function textOf) {
  std::string list;
  for (const auto& item : items) list.append(list.empty() ? "" : ",\n").append(textOf(item));
  return "[" + list + "]";
}

// An object of the three languages.
template <class Function>
std::string InLanguages(Function textOf) {
  const StringTable strings;
  std::string object;
  for (int language = 0; language < BuiltInLanguages; ++language) {
    const int base = language * LanguageBlock;
    object.append(object.empty() ? "" : ", ").append(Quoted(strings.Text(base, TextId::LanguageCode)));
    object.append(": ").append(textOf(HelpLanguage{strings, base}));
  }
  return "{" + object + "}";
}

std::string TextOf(TextId id) {
  return InLanguages(
      [&](const HelpLanguage& language) { return Quoted(language.Strings.Text(language.Base, id)); });
}

// The words and letters that a part may be, with what they mean.
std::string ChoicesIn(ParameterKind kind, const HelpLanguage& language) {
  return ListOf(ChoicesOf(kind).List, [&](const ParameterChoice& choice) {
    return "[" + Quoted(choice.Word) + ", " +
           Quoted(language.Strings.Text(language.Base, choice.Meaning, {})) + "]";
  });
}

std::string NameIn(std::string_view help, const TextRange& range) {
  return range.IsEmpty() ? std::string() : std::string(help.substr(range.Begin, range.End - range.Begin));
}

// The parts of a parameter: what the help calls each, and what stands for it when it is left out.
std::string ParameterIn(const CommandRow& row, std::size_t formIndex, std::size_t n,
                        const HelpLanguage& language) {
  const std::string_view help = language.Strings.Text(language.Base, row.Help);
  const ParameterForm& form = FormsOf(row)[formIndex];
  const std::vector<SyntaxLine> lines = SyntaxOf(help);
  SyntaxParameter names;
  if (formIndex < lines.size() && n < lines[formIndex].Parameters.size()) {
    names = lines[formIndex].Parameters[n];
  }
  std::size_t part = 0;
  const std::string whole = NameIn(help, names);
  return "{\"name\": " + Quoted(whole) + ", \"parts\": " +
         ListOf(form.Parameters[n],
                [&](const ParameterPart& one) {
                  const std::string name = part < names.Parts.size() ? NameIn(help, names.Parts[part]) : "";
                  ++part;
                  return "{\"name\": " + Quoted(name) +
                         ", \"default\": " + Quoted(DefaultText(one, form, formIndex, help, language)) +
                         ", \"choices\": " + ChoicesIn(one.Kind, language) + "}";
                }) +
         "}";
}

std::string FormIn(const CommandRow& row, std::size_t formIndex, const HelpLanguage& language) {
  std::size_t n = 0;
  return ListOf(FormsOf(row)[formIndex].Parameters,
                [&](const ParameterPartList&) { return ParameterIn(row, formIndex, n++, language); });
}

std::string CommandText(const CommandRow& row) {
  std::size_t form = 0;
  return "{\"keyword\": " + Quoted(row.Keyword) + ", \"shown\": " + Quoted(row.Spelling()) +
         ", \"help\": " + TextOf(row.Help) + ", \"addition\": " + (row.Rules.IsAddition ? "true" : "false") +
         ", \"takes\": " + Quoted(row.Rules.Takes) + ", \"forms\": " +
         ListOf(FormsOf(row),
                [&](const ParameterForm& one) {
                  const std::size_t index = form++;
                  return "{\"repeats\": " + std::to_string(one.RepeatsFrom) +
                         ", \"parameters\": " + InLanguages([&](const HelpLanguage& language) {
                           return FormIn(row, index, language);
                         }) +
                         "}";
                }) +
         "}";
}

std::string MenuText(const MenuRow& row) {
  std::vector<std::string> keys;
  for (const Keystroke& key : row.Keys) {
    MenuRow alone = row;
    alone.Keys = {key};
    if (const std::string text = KeyText(alone); !text.empty()) keys.push_back(text);
  }
  return "{\"item\": " + std::to_string(static_cast<int>(row.Item)) +
         ", \"place\": " + std::to_string(static_cast<int>(row.Place)) +
         ", \"caption\": " + std::to_string(static_cast<int>(row.Caption)) +
         ", \"runs\": " + (row.Run ? "true" : "false") + ", \"keys\": " + ListOf(keys, Quoted) + "}";
}

void Print() {
  std::size_t n = 0;
  const std::string texts = ListOf(StringRows, [&](const StringRow& row) {
    return "{\"id\": " + std::to_string(static_cast<int>(row.Id)) + ", \"name\": " + Quoted(TextNames[n++]) +
           ", \"text\": " + TextOf(row.Id) + "}";
  });
  std::printf("{\"texts\": %s,\n\"commands\": %s,\n\"functions\": %s,\n", texts.c_str(),
              ListOf(CommandTable(), CommandText).c_str(), ListOf(FunctionNames(), Quoted).c_str());
  std::printf("\"variables\": %s,\n\"menu\": %s}\n", ListOf(SystemVariableNames(), Quoted).c_str(),
              ListOf(MenuRows(), MenuText).c_str());
}

}  // namespace
}  // namespace vaxel

int main() {
  vaxel::Print();
}
