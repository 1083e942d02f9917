// Files that others may have written, or that were cut short: settings, added languages, recovery copies,
// texts in any encoding, data, tables of points, Meter files. The first line names the reader.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/configuration.h"
#include "app/meter_import.h"
#include "app/recovery.h"
#include "base/text_encoding.h"
#include "base/utf8.h"
#include "fuzz/target.h"
#include "interpreter/data_fields.h"
#include "interpreter/data_file.h"
#include "resources/string_table.h"
#include "scale/law_table.h"
#include "scale/value_law.h"
#include "tests/support/script_run.h"

namespace vaxel::fuzz {
namespace {

namespace fs = std::filesystem;

// The text of a file as the program takes it; empty where it takes none.
std::string TextOf(std::string_view bytes) {
  auto decoded = DecodeText(std::string(bytes));
  return decoded ? std::move(decoded->Text) : std::string();
}

// What is put in is there, and putting it in again changes nothing.
void TryConfiguration(std::string_view bytes) {
  const std::vector<std::string> languages = {"Français", "English", "Castellano"};
  constexpr std::string_view version = "1.2a";
  const std::string text = TextOf(bytes);
  const Configuration settings = ReadConfiguration(text, languages, version, true);
  Require(settings.Zmm > 0 && settings.Zmm <= 1000, "the zoom is within its bounds");
  Require(settings.CodeFontSize == 0 || (settings.CodeFontSize >= 1 && settings.CodeFontSize <= 200),
          "the font's size is within its bounds");
  const std::string value = text.substr(0, text.find('\n'));
  const std::vector<ConfigurationLine> lines = {OwnLine("Fuzzed", value), {std::string(ZmmKey), "2.5"}};
  const std::string changed = WithLines(text, version, lines);
  RequireSame(WithLines(changed, version, lines), changed, "lines are put in once");
  const Configuration again = ReadConfiguration(changed, languages, version, true);
  Require(again.OwnKey("fuzzed") == value, "a line of ours is read as it was put in", changed);
}

void TryLanguage(std::string_view bytes) {
  StringTable strings;
  const auto problems = strings.AddLanguage("xx", TextOf(bytes));
  Require(problems.size() <= 100, "not every problem of a language is told");
  const int base = strings.BaseOfCode("xx");
  Require((base >= 0) == (strings.LanguageCount() > BuiltInLanguages), "an added language has a base");
  if (base < 0) return;
  for (const StringRow& row : StringRows) {
    const std::string told = strings.Text(base, row.Id, "first", "second", "third");
    Require(!told.empty() || row.Texts[1].empty(), "a language lacks no text", row.Texts[1]);
  }
}

// Asks the recovery for the one copy that lies in its folder.
void TryRecovery(std::string_view bytes) {
  static const std::string folder = [] {
    const fs::path path = fs::temp_directory_path() / ("vaxel-fuzz-" + std::to_string(getpid()));
    fs::create_directories(path);
    return path.string() + "/";
  }();
  const std::string name = folder + "Vaxe$1.rec";
  std::FILE* const file = std::fopen(name.c_str(), "wb");
  Require(file != nullptr, "a copy can be written", name);
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
  Recovery recovery({folder}, 2);
  const auto nobodyRuns = [](std::uint32_t) { return false; };
  for (const RecoveryCopy& copy : recovery.FindLeft(nobodyRuns)) {
    Require(bytes.ends_with(copy.Text), "a copy's text is what was written");
    Require(recovery.Write(Recovery::Clock::now(), copy), "a copy can be written again");
    const auto found = recovery.FindLeft(nobodyRuns);
    Require(found.size() == 2 && found[0].Text == copy.Text && found[0].ScriptName == copy.ScriptName,
            "a copy is read as it was written");
    recovery.Remove();
  }
  fs::remove_all(folder);
  fs::create_directories(folder);
}

void TryText(std::string_view bytes) {
  const DecodedText any = DecodeAnyText(std::string(bytes));
  Require(IsValidUtf8(any.Text), "decoded text is UTF-8");
  const auto decoded = DecodeText(std::string(bytes));
  if (!decoded) return;
  const EncodedText encoded = EncodeText(decoded->Text, decoded->Encoding);
  const auto again = DecodeText(encoded.Bytes);
  Require(again && again->Text == decoded->Text, "a text comes back from its file as it was");
  const std::string lines = NormaliseLineEnds(decoded->Text);
  Require(lines.find('\r') == std::string::npos, "lines end in LF");
  Require(NormaliseLineEnds(lines) == lines, "line ends are made one once");
}

void TryData(std::string_view bytes) {
  DataFile data;
  data.Open(TextOf(bytes));
  for (std::size_t before = data.Position(); !data.AtEnd(); before = data.Position()) {
    const std::string_view line = data.Next();
    for (const std::string_view separator : {"", ",", ";", "\t", "::"})
      Require(SplitFields(line, 5, separator).size() <= 5, "a line has so many fields", line);
    Require(data.Position() > before, "reading goes on", line);
  }
}

void TryTable(std::string_view bytes) {
  LawTable table = ReadLawTable(TextOf(bytes));
  if (table.Fault != TableFault::None) return;
  Require(table.Points.size() >= 2, "a table has two points");
  for (LawPoint& point : table.Points) point.Reading /= table.IsDirect ? 1 : 100;
  for (const bool isStraight : {false, true}) {
    const TableLaw law(table.Points, table.IsDirect, isStraight);
    for (const LawPoint& point : table.Points) {
      const double reading = law.ReadingOf(point.Value);
      Require(std::abs(reading - point.Reading) <= 1e-9 * std::max(1.0, std::abs(point.Reading)),
              "a law goes through its points",
              std::to_string(reading) + " for " + std::to_string(point.Reading));
      Require(std::isfinite(law.ValueOf(reading)), "a law has a value for a reading");
    }
  }
}

void TryMeter(std::string_view bytes) {
  const StringTable strings;
  const auto script = ImportMeter(std::string(bytes), "dial.mtr", strings, LanguageBlock);
  if (!script) return;
  test::RunSettings settings;
  constexpr int mostQuestions = 500;
  settings.SignalAt = mostQuestions;
  const test::ScriptRun run = test::RunText(script->Text, settings);
  Require(run.Errors.empty(), "the script of a Meter file draws", run.Reason() + "\n" + script->Text);
}

struct ReaderRow {
  std::string_view Name;
  void (*Try)(std::string_view bytes);
};

constexpr ReaderRow Readers[] = {{"configuration", TryConfiguration},
                                 {"language", TryLanguage},
                                 {"recovery", TryRecovery},
                                 {"text", TryText},
                                 {"data", TryData},
                                 {"table", TryTable},
                                 {"meter", TryMeter}};

}  // namespace

void TryInput(std::string_view bytes) {
  const std::string_view name = TakeLine(bytes);
  for (const ReaderRow& reader : Readers)
    if (reader.Name == name) reader.Try(bytes);
}

}  // namespace vaxel::fuzz
