// What is written by habit from other languages, and what is said here instead.
#pragma once

#include <span>
#include <string_view>

#include "interpreter/script_fault.h"

namespace vaxel {

struct RunContext;

// A word by which something is called elsewhere, in upper case and without accents.
struct Habit {
  std::string_view Word;
  std::string_view Instead;  // how it is written here
};
// The words for commands, in the languages of the program's users.
std::span<const Habit> CommandHabits();

// The fault of a line whose keyword is none. Where it can be told what was meant, it says how that is
// written.
ScriptFault UnknownCommandFault(const RunContext& run, std::string_view keyword, std::string_view line);

// What is written here for a function or a constant that is unknown; it is empty where that cannot be told.
std::string_view FunctionInstead(std::string_view name);
// Whether a text that is no expression stops being one at a comma between figures.
bool HasDecimalComma(std::string_view text);
// The same at a dash that is not the minus of the keyboard.
bool HasWrongMinus(std::string_view text);
// Whether this is a function's name.
bool IsFunctionName(std::string_view name);
// What has a name in expressions: the functions, MOD and PI.
std::span<const std::string_view> FunctionNames();

}  // namespace vaxel
