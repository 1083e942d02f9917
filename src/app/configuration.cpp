#include "app/configuration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/output_file.h"
#include "base/rounding.h"
#include "base/text.h"
#include "base/text_encoding.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Header = "'Fichier de configuration du Programme Vaxel V";
constexpr std::string_view HeaderMark = "Vaxel V";
constexpr double MaxZmm = 1000, MinFontSize = 1, MaxFontSize = 200;
constexpr std::size_t MaxFileBytes = 256U << 20, MaxOwnNameBytes = 64;

std::string InOneLine(std::string text) {
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return text;
}

std::int16_t DefaultPatchs(bool isNt) {
  return isNt ? 3 : 0;
}

// The text after the key, without the blanks around it. There is none when the line does not hold the key.
std::optional<std::string_view> ValueOf(std::string_view line, std::string_view key) {
  const std::size_t at = line.find(key);
  if (at == std::string_view::npos) return std::nullopt;
  return TrimText(line.substr(at + key.size()));
}

// Sets the index and base of the language with this name; an unknown name changes nothing.
void ChooseLanguage(std::string_view upperName, const std::vector<std::string>& upperNames,
                    std::int16_t& index, std::int16_t& base) {
  const auto found = std::find(upperNames.begin(), upperNames.end(), upperName);
  if (found == upperNames.end()) return;
  const auto before = static_cast<int>(found - upperNames.begin());
  index = static_cast<std::int16_t>(before + 1);
  base = static_cast<std::int16_t>(before * LanguageBlock);
}

void ReadOwnKey(Configuration& settings, std::string_view line, std::string_view upper) {
  const std::size_t length = upper.find(" =");
  if (length > MaxOwnNameBytes) return;  // or there is none
  settings.OwnKeys.insert_or_assign(std::string(upper.substr(0, length)),
                                    std::string(TrimText(line.substr(length + 2))));
}

// All keys are looked for, anywhere in the line: existing files rely on that.
void ReadLine(Configuration& settings, std::string_view line, const std::vector<std::string>& upperNames,
              bool isNt) {
  // Upper case takes as many bytes, so that a place in one is a place in the other.
  const std::string upper = UpperCase(line);
  if (const auto value = ValueOf(upper, "LANGUE ="))
    ChooseLanguage(*value, upperNames, settings.LangIndex, settings.LangBase);
  if (const auto value = ValueOf(upper, "LANGUEAIDE ="))
    ChooseLanguage(*value, upperNames, settings.HelpLangIndex, settings.HelpLangBase);
  constexpr std::string_view scriptKey = "FICHIERDAT =";
  const std::size_t script = upper.find(scriptKey);
  if (script != std::string::npos) settings.CurrentFile = TrimText(line.substr(script + scriptKey.size()));
  if (const auto value = ValueOf(upper, "DOUBLECLIC =")) settings.DoubleClick = *value == "OUI";
  if (const auto value = ValueOf(upper, "ZMM =")) {
    const double zmm = LeadingNumber(*value);
    settings.Zmm = zmm > 0 && zmm <= MaxZmm ? zmm : 1;
  }
  if (const auto value = ValueOf(upper, "TAILLECARCODE =")) {
    const double size = LeadingNumber(*value);
    if (size >= MinFontSize && size <= MaxFontSize) settings.CodeFontSize = size;
  }
  if (const auto value = ValueOf(upper, "PATCHS =")) {
    settings.Patchs = RoundToInt16(LeadingNumber(*value)).value_or(0);
    settings.PatchFlags = PatchFlagsOf(settings.Patchs);
  } else {
    settings.Patchs = DefaultPatchs(isNt);
  }
  ReadOwnKey(settings, line, upper);
}

bool NamesVersion(std::string_view firstLine, std::string_view versionText) {
  const std::size_t at = firstLine.find(HeaderMark);
  return at != std::string_view::npos && firstLine.substr(at + HeaderMark.size()) == versionText;
}

bool BeginsWith(std::string_view line, std::string_view key) {
  return EqualIgnoringCase(line.substr(0, key.size()), key);
}

void PutLine(std::vector<std::string>& lines, const ConfigurationLine& wanted) {
  const std::string key = InOneLine(wanted.Key);
  const std::string written = key + InOneLine(wanted.Value);
  bool isThere = false;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    if (!BeginsWith(lines[i], key)) continue;
    lines[i] = written;
    isThere = true;
  }
  if (isThere) return;
  auto place = lines.end();
  if (wanted.IsOwn)
    place =
        std::find_if(lines.begin() + 1, lines.end(), [](const auto& line) { return !line.starts_with("'"); });
  lines.insert(place, written);
}

Result<> WriteWhole(const std::string& name, std::string_view bytes) {
  OutputFile file(name);
  file.Write(bytes);
  return file.Commit();
}

}  // namespace

std::optional<std::string> Configuration::OwnKey(std::string_view name) const {
  const auto found = OwnKeys.find(UpperCase(name));
  if (found == OwnKeys.end()) return std::nullopt;
  const std::string& written = found->second;
  std::string value;
  for (std::size_t i = 0; i < written.size(); ++i) {
    unsigned code = 0;
    const char* const digits = written.data() + i + 1;
    if (written[i] == '%' && i + 2 < written.size() &&
        std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      value += static_cast<char>(code);
      i += 2;
    } else {
      value += written[i];
    }
  }
  return value;
}

Configuration ReadConfiguration(std::string_view text, const std::vector<std::string>& languageNames,
                                std::string_view versionText, bool isNt) {
  Configuration settings;
  settings.Patchs = DefaultPatchs(isNt);
  std::vector<std::string> upperNames;
  for (const std::string& name : languageNames) upperNames.push_back(UpperCase(name));
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (!line.starts_with("'")) ReadLine(settings, line, upperNames, isNt);
  }
  // The language is asked for once after every change of version.
  settings.NamedLangIndex = settings.LangIndex;
  if (text.empty() || !NamesVersion(TakeLine(text), versionText)) settings.LangIndex = 0;
  return settings;
}

std::string DefaultConfiguration(std::string_view versionText, bool isNt) {
  std::string text(Header);
  text.append(versionText)
      .append(
          "\r\n'Ne pas modifier / Do not change\r\nLangue =\r\nLangueAide =\r\n"
          "FichierDat = Vaxel.dat\r\nDoubleClic = Non\r\nZmm = 1\r\nPatchs = ");
  return text + std::to_string(DefaultPatchs(isNt)) + "\r\n";
}

ConfigurationLine OwnLine(std::string_view name, std::string_view value) {
  // Without "=" no value can hold what is taken for another key, wherever in the line it is looked for.
  constexpr std::array<std::pair<char, std::string_view>, 4> codes = {
      {{'%', "%25"}, {'=', "%3D"}, {'\r', "%0D"}, {'\n', "%0A"}}};
  std::string written = " ";
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto* const code =
        std::find_if(codes.begin(), codes.end(), [&](const auto& row) { return row.first == value[i]; });
    // Blanks around a value are not a part of it.
    const bool isOuterBlank = value[i] == ' ' && (i == 0 || i + 1 == value.size());
    if (isOuterBlank) {
      written += "%20";
    } else if (code == codes.end()) {
      written += value[i];
    } else {
      written += code->second;
    }
  }
  return {std::string(name) + " =", written, true};
}

std::string WithLines(std::string_view text, std::string_view versionText,
                      const std::vector<ConfigurationLine>& wanted) {
  std::vector<std::string> lines;
  while (!text.empty()) lines.emplace_back(TakeLine(text));
  if (lines.empty()) lines.emplace_back();
  lines[0] = std::string(Header).append(versionText);
  for (const ConfigurationLine& line : wanted) PutLine(lines, line);
  std::string written;
  for (const std::string& line : lines) written += line + "\r\n";
  return written;
}

ConfigurationFile::ConfigurationFile(std::string_view folder, std::string versionText, bool isNt,
                                     std::string_view folderOfDefaults)
    : name_(NameOf(PathOf(folder) / "Vaxel.cfg")),
      copyName_(NameOf(PathOf(folder) / "Vaxe$cfg.old")),
      defaultsName_(folderOfDefaults.empty() ? "" : NameOf(PathOf(folderOfDefaults) / "Vaxel.cfg")),
      versionText_(std::move(versionText)),
      isNt_(isNt) {}

std::string ConfigurationFile::FirstContent() const {
  if (!defaultsName_.empty()) {
    Result<std::string> bytes = ReadWholeFile(defaultsName_, MaxFileBytes);
    if (bytes) return *std::move(bytes);
  }
  return DefaultConfiguration(versionText_, isNt_);
}

Result<ConfigurationFile::Content> ConfigurationFile::Load() const {
  const fs::path path = PathOf(name_), copy = PathOf(copyName_);
  std::error_code error;
  const bool isThere = fs::exists(path, error);
  const bool isLost = !isThere || (fs::is_regular_file(path, error) && fs::file_size(path, error) == 0);
  bool isNew = !isThere;
  std::string source = name_;
  if (isLost && fs::is_regular_file(copy, error) && fs::file_size(copy, error) > 0) {
    fs::rename(copy, path, error);
    isNew = static_cast<bool>(error);
    if (isNew) source = copyName_;
  } else if (isNew) {
    return Content{FirstContent(), isNew};
  }
  Result<std::string> bytes = ReadWholeFile(source, MaxFileBytes);
  if (!bytes) return bytes.Why();
  return Content{*std::move(bytes), isNew};
}

Result<> ConfigurationFile::Replace(const Content& old, const std::string& bytes) const {
  const bool isChanged = old.Bytes != bytes;
  Result<> done;
  if (!old.IsNew && isChanged) done = WriteWhole(copyName_, old.Bytes);
  if (done && (old.IsNew || isChanged)) done = WriteWhole(name_, bytes);
  // Where there is no file a copy may hold all that there is.
  std::error_code ignored;
  if (done || !old.IsNew) fs::remove(PathOf(copyName_), ignored);
  return done;
}

ConfigurationFile::Reading ConfigurationFile::Read(const std::vector<std::string>& languageNames) {
  const Result<Content> content = Load();
  Reading reading;
  if (!content) {
    reading.Problem = content.Why();
  } else if (content->IsNew) {
    if (const Result<> written = Replace(*content, content->Bytes); !written) reading.Problem = written.Why();
  }
  std::string bytes = content ? content->Bytes : FirstContent();
  reading.Settings =
      ReadConfiguration(DecodeAnyText(std::move(bytes)).Text, languageNames, versionText_, isNt_);
  return reading;
}

Result<> ConfigurationFile::WriteKey(std::string_view key, std::string_view value) {
  return WriteKeys({{std::string(key), std::string(value)}});
}

Result<> ConfigurationFile::WriteKeys(const std::vector<ConfigurationLine>& lines) {
  const Result<Content> old = Load();
  if (!old) return old.Why();
  const DecodedText decoded = DecodeAnyText(old->Bytes);
  return Replace(*old, EncodeText(WithLines(decoded.Text, versionText_, lines), decoded.Encoding).Bytes);
}

PatchSet PatchFlagsOf(std::int16_t patchs) {
  return {static_cast<std::uint16_t>(patchs)};
}

std::string PatchPrompt(std::int16_t patchs, std::string_view activeText, std::string_view questionText) {
  const PatchSet flags = PatchFlagsOf(patchs);
  std::string numbers;
  for (std::size_t k = 0; k < flags.size(); ++k) {
    if (flags[k]) numbers.append(numbers.empty() ? " " : ", ").append(std::to_string(k + 1));
  }
  return std::string(activeText).append(numbers).append("\n\n").append(questionText);
}

std::optional<std::int16_t> ApplyPatchAnswer(std::int16_t patchs, double n) {
  const double magnitude = std::abs(n);
  if (!(magnitude >= 1 && magnitude < PatchCount + 1)) return std::nullopt;
  const int bit = 1 << (static_cast<int>(magnitude) - 1);
  return static_cast<std::int16_t>(n > 0 ? patchs | bit : patchs & ~bit);
}

std::string HelpFileName(std::int16_t helpLangIndex, std::string_view code) {
  return helpLangIndex == 1 ? "Vaxel.hlp" : "Vaxel_" + std::string(code) + ".hlp";
}

}  // namespace vaxel
