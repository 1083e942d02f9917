#include "app/script_template.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

#include "app/script_file.h"
#include "base/files.h"
#include "base/folded_text.h"
#include "base/text.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Folder = "templates";
constexpr std::size_t MarkSize = 4;  // of "'fr:"

// The language that a line is for; empty: for all.
std::string_view LanguageOf(std::string_view line) {
  const bool isMarked =
      line.size() >= MarkSize && line[0] == '\'' && IsLetter(line[1]) && IsLetter(line[2]) && line[3] == ':';
  return isMarked ? line.substr(1, 2) : std::string_view();
}

template <typename Take>
void ForEachLine(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    take(text.substr(0, end));
    text.remove_prefix(end);
  }
}

// The files by their names without folders, so that those found later take the place of earlier ones.
void CollectFiles(const std::string& folder, std::map<std::string, std::string>& files) {
  std::error_code failure;
  fs::directory_iterator entry(PathOf(folder) / Folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    const std::string name = NameOf(entry->path().filename());
    if (UpperCase(name).ends_with(".DAT")) files[UpperCase(name)] = NameOf(entry->path());
  }
}

}  // namespace

std::string InLanguage(std::string_view text, std::string_view code) {
  bool hasLanguage = false;
  ForEachLine(text, [&](std::string_view line) { hasLanguage |= LanguageOf(line) == code; });
  const std::string_view wanted = hasLanguage ? code : "en";
  std::string script;
  ForEachLine(text, [&](std::string_view line) {
    const std::string_view language = LanguageOf(line);
    if (language.empty()) {
      script += line;
    } else if (language == wanted) {
      script += line.substr(MarkSize);
    }
  });
  return script;
}

std::string NameIn(std::string_view script) {
  if (!script.starts_with('\'')) return {};
  std::string_view name = TakeLine(script).substr(1);
  name = Trim(name.substr(0, std::min(name.find(':'), name.find(". "))));
  if (name.ends_with('.')) name.remove_suffix(1);
  return std::string(name);
}

Result<std::string> TextOf(const ScriptTemplate& chosen, const AppContext& app) {
  const Result<ScriptFile> file = LoadScript(chosen.FileName);
  if (!file) return file.Why();
  return InLanguage(file->Text, app.Strings.Text(app.HelpLangBase, TextId::LanguageCode));
}

std::vector<ScriptTemplate> FindTemplates(const AppContext& app) {
  std::map<std::string, std::string> files;
  CollectFiles(app.ProgramFolder, files);
  CollectFiles(app.DataFolder, files);
  std::vector<ScriptTemplate> templates;
  for (const auto& [key, fileName] : files) {
    ScriptTemplate found{fileName, {}};
    if (const Result<std::string> text = TextOf(found, app)) found.Name = NameIn(*text);
    if (found.Name.empty()) found.Name = DocumentNameOf(fileName);
    templates.push_back(std::move(found));
  }
  std::ranges::stable_sort(templates, {}, [](const ScriptTemplate& t) { return FoldedText(t.Name); });
  return templates;
}

}  // namespace vaxel
