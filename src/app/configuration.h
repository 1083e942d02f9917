// The settings, kept in the text file "Vaxel.cfg" in the program's folder. Text is UTF-8.
//
// The file has one "Name = value" a line. A setting's line is found by the setting's key, which holds
// exactly one blank before "=", in any case. Further lines, whoever wrote them, stay as they are.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace vaxel {

inline constexpr int PatchCount = 15;
// Flag k is patch k + 1.
using PatchSet = std::bitset<PatchCount>;
// The flags that something looks at.
inline constexpr std::size_t PatchTurnedFonts = 0;
inline constexpr std::size_t PatchPrintsAtOnce = 1;

// These are the keys as WriteKey takes them.
inline constexpr std::string_view LanguageKey = "Langue =";
inline constexpr std::string_view HelpLanguageKey = "LangueAide =";
inline constexpr std::string_view ScriptKey = "FichierDat =";
inline constexpr std::string_view DoubleClickKey = "DoubleClic =";
inline constexpr std::string_view ZmmKey = "Zmm = ";
inline constexpr std::string_view CodeFontSizeKey = "TailleCarCode =";
inline constexpr std::string_view PatchsKey = "Patchs = ";

// What a reading of the file sets.
struct Configuration {
  // The number of the messages' language, from 1; 0: the user is to be asked.
  std::int16_t LangIndex = 0;
  // The language that the file names, also where the user is to be asked because another version of the
  // program wrote it; 0: none.
  std::int16_t NamedLangIndex = 0;
  // The base of that language in the string table. It stays that of the file's language when another version
  // of the program wrote the file, for which LangIndex is 0.
  std::int16_t LangBase = 0;
  // The same for the menus, the syntax help and the help file.
  std::int16_t HelpLangIndex = 0;
  std::int16_t HelpLangBase = 0;
  std::string CurrentFile;   // empty: none
  bool DoubleClick = false;  // whether Mnu_DblClick is checked
  double Zmm = 1;            // above 0, at most 1000
  double CodeFontSize = 0;   // points, 1 to 200; 0: as it is
  // The number to which Mnu_Patchs adds. It is the file's only when no line follows that of "Patchs": any
  // other line makes it the system's default, while the flags stay. Existing files rely on that.
  std::int16_t Patchs = 0;
  PatchSet PatchFlags;

  // The value of a line "Name = value" of ours; of several such lines the last counts. Names are compared
  // without regard to case.
  std::optional<std::string> OwnKey(std::string_view name) const;

  std::map<std::string, std::string, std::less<>> OwnKeys;  // by the upper-case name, values as in the file
};

// languageNames are those of the languages 1, 2, … Of several lines with one key the last counts. Values that
// make no sense: a Zmm that is not above 0 and at most 1000 reads as 1, a font size outside 1 to 200 as if
// its line were not there, and a Patchs that is not, rounded, within 16 bits with a sign as 0.
Configuration ReadConfiguration(std::string_view text, const std::vector<std::string>& languageNames,
                                std::string_view versionText, bool isNt);

// The file as it is first written, with CR LF at the end of every line.
std::string DefaultConfiguration(std::string_view versionText, bool isNt);

// One line to be written: Key and Value without anything between them. A line end in it becomes a blank.
struct ConfigurationLine {
  std::string Key;
  std::string Value;
  // Written after the comments at the head of the file when it is new, not at the end.
  bool IsOwn = false;
};

// A line of ours, which programs that know only the seven keys pass over. The name must not end in one of
// theirs. Configuration::OwnKey reads it back.
ConfigurationLine OwnLine(std::string_view name, std::string_view value);

// The text of the file with the current header and these lines in the place of all that begin with their keys
// (upper and lower case are one), or new ones. All lines end in CR LF.
std::string WithLines(std::string_view text, std::string_view versionText,
                      const std::vector<ConfigurationLine>& wanted);

// "Vaxel.cfg" in a folder. Nothing is thrown; what fails leaves the file as it was, and is told as the reason
// of the system. The file is there, old or new, whatever interrupts a writing. It keeps its encoding
// (DecodeText), and becomes UTF-8 with a mark when that cannot hold what is written.
class ConfigurationFile {
 public:
  // The folder's name is UTF-8; an empty one is the working folder. versionText is the running program's. A
  // new file begins as a copy of that in the other folder, if one is named and has it.
  ConfigurationFile(std::string_view folder, std::string versionText, bool isNt,
                    std::string_view folderOfDefaults = {});

  struct Reading {
    Configuration Settings;
    std::optional<Failure> Problem;  // why the file could not be read or first be written
  };

  // Puts the copy that an interrupted update left into the place of a lost file, writes a new file when there
  // is none, and reads it. When that cannot be done the settings are still those to go on with.
  Reading Read(const std::vector<std::string>& languageNames);

  // The key carries its " =" and what stands before the value, if anything:
  // WriteKey(ScriptKey, "C:\\dial.dat"), WriteKey(DoubleClickKey, " Oui").
  Result<> WriteKey(std::string_view key, std::string_view value);
  // Several at once: all of them are written, or none.
  Result<> WriteKeys(const std::vector<ConfigurationLine>& lines);

  const std::string& Name() const { return name_; }

 private:
  struct Content {
    std::string Bytes;
    bool IsNew = false;  // not in "Vaxel.cfg" yet
  };

  Result<Content> Load() const;
  std::string FirstContent() const;
  Result<> Replace(const Content& old, const std::string& bytes) const;

  std::string name_, copyName_;
  std::string defaultsName_;  // empty: none
  std::string versionText_;
  bool isNt_;
};

// The question of Mnu_Patchs: the texts 121 and 122 with the numbers of the active patches between them.
// Lines end in LF.
std::string PatchPrompt(std::int16_t patchs, std::string_view activeText, std::string_view questionText);

// The number after the answer n: patch n on, or patch -n off; decimals do not count. There is none when n
// names no patch and the question is to be repeated.
std::optional<std::int16_t> ApplyPatchAnswer(std::int16_t patchs, double n);

PatchSet PatchFlagsOf(std::int16_t patchs);

// The help file of a language with this 1-based number and two-letter code.
std::string HelpFileName(std::int16_t helpLangIndex, std::string_view code);

}  // namespace vaxel
