// Prints the dictionary of the language for libFuzzer. It is made of the program's own tables whenever the
// fuzz targets are built, so that it knows every keyword.
#include <cstdio>
#include <set>
#include <string>
#include <string_view>

#include "app/parameter_choices.h"
#include "commands/command_table.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/system_variables.h"

namespace {

void Print(std::string_view word) {
  std::printf("\"");
  for (const char c : word) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7F || c == '"' || c == '\\') {
      std::printf("\\x%02X", byte);
    } else {
      std::printf("%c", c);
    }
  }
  std::printf("\"\n");
}

}  // namespace

int main() {
  using namespace vaxel;
  std::set<std::string> words;
  for (const CommandRow& row : CommandTable()) {
    words.insert(std::string(row.Keyword) + " = ");
    words.insert("\n" + std::string(row.Spelling()) + "\n");
  }
  for (const std::string_view name : SystemVariableNames()) words.emplace(name);
  for (const std::string_view name : FunctionNames()) words.insert(std::string(name) + "(");
  for (int kind = 0; kind <= static_cast<int>(ParameterKind::Format); ++kind)
    for (const ParameterChoice& choice : ChoicesOf(static_cast<ParameterKind>(kind)).List)
      words.emplace(choice.Word);
  for (const std::string_view word : {"%{",
                                      "}",
                                      "%%",
                                      "\xC2\xA7",
                                      "\xC2\xB0",
                                      "' ",
                                      " _\n",
                                      "mm",
                                      " THEN ",
                                      " GOTO ",
                                      " MOD ",
                                      "RVB 1 2 3",
                                      "Rouge",
                                      "\n==== inc.dat\n",
                                      "\n==== data.txt\n",
                                      "\n==== printer\n",
                                      "%A = ",
                                      "%I == %I + 1\n",
                                      "Loop:\n",
                                      "1E308",
                                      "-1E-7",
                                      "1E400",
                                      "\xE2\x88\x9E",
                                      "\r\n",
                                      "32768",
                                      "4294967296",
                                      "0.000001",
                                      "<<",
                                      ">>"})
    words.emplace(word);
  for (const std::string& word : words) Print(word);
}
