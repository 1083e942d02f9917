#include "app/settings.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>
#include <vector>

#include "app/script_file.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/output_file.h"
#include "base/text.h"

namespace vaxel {
namespace {

constexpr int DefaultEditorWidth = 460;
constexpr int NarrowestEditor = 60, WidestEditor = 4000;
constexpr std::string_view EditorWidthName = "LargeurCode";
constexpr std::string_view PlaceName = "Fenetre";
constexpr std::string_view RecentName = "Recent";

std::vector<std::string> LanguageNames(const StringTable& strings) {
  std::vector<std::string> names;
  for (int i = 0; i < strings.LanguageCount(); ++i) {
    names.emplace_back(strings.Text(i * LanguageBlock + LanguageNameId));
  }
  return names;
}

int ReadInteger(const std::optional<std::string>& text, int otherwise) {
  int value = otherwise;
  if (text) std::from_chars(text->data(), text->data() + text->size(), value);
  return value;
}

// "left top right bottom" and whether the window is maximised, 0 or 1.
std::string PlaceText(const WindowPlace& place) {
  const ScreenRectangle& frame = place.Frame;
  std::string text;
  for (int side : {frame.Left, frame.Top, frame.Right, frame.Bottom}) text += std::to_string(side) + " ";
  return text += place.IsMaximised ? "1" : "0";
}

std::optional<WindowPlace> ReadPlace(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  std::istringstream numbers(*text);
  WindowPlace place;
  ScreenRectangle& frame = place.Frame;
  numbers >> frame.Left >> frame.Top >> frame.Right >> frame.Bottom >> place.IsMaximised;
  const bool isUsable = numbers && frame.Left < frame.Right && frame.Top < frame.Bottom;
  return isUsable ? std::optional(place) : std::nullopt;
}

}  // namespace

std::string Settings::LanguageText(int index, int id) const {
  return std::string(app_.Strings.Text((index - 1) * LanguageBlock + id));
}

// "Vaxel_de.lng" beside the program, in the order of their names, so that the numbers of languages stay.
std::vector<Settings::LanguageProblems> Settings::AddLanguages() {
  namespace fs = std::filesystem;
  constexpr std::string_view prefix = "VAXEL_", extension = ".LNG";
  constexpr std::size_t maxBytes = 2 << 20;
  std::vector<LanguageProblems> problems;
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(PathOf(app_.State.ProgramFolder), error), end; !error && entry != end;
       entry.increment(error)) {
    std::string name = NameOf(entry->path().filename());
    const std::string upper = UpperCase(name);
    if (upper.starts_with(prefix) && upper.ends_with(extension)) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    const std::string code = name.substr(prefix.size(), name.size() - prefix.size() - extension.size());
    const FileContent content = ReadWholeFile(app_.State.ProgramFolder + name, maxBytes);
    switch (content.Status) {
      case FileStatus::Read:
        problems.push_back({name, app_.Strings.AddLanguage(code, content.Bytes), {}});
        break;
      case FileStatus::TooLarge:
        problems.push_back({name, {{0, LineFault::TooLarge}}, {}});
        break;
      case FileStatus::Unreadable:
        problems.push_back({name, {}, content.Reason});
        break;
    }
  }
  return problems;
}

void Settings::TellProblems(const LanguageProblems& found) {
  constexpr std::size_t mostShown = 15;
  const auto& [fileName, problems, unreadable] = found;
  std::string lines;
  if (!unreadable.empty())
    return app_.Tell(BoxIcon::Information, app_.Message(text_id::CannotRead, fileName, unreadable));
  for (std::size_t i = 0; i < problems.size() && i < mostShown; ++i) {
    const std::string fault = app_.Message(static_cast<int>(problems[i].Fault), problems[i].Value);
    if (problems[i].Line == 0) {
      return app_.Tell(BoxIcon::Information, app_.Message(text_id::LanguageFileRefused, fileName, fault));
    }
    lines += app_.Message(text_id::LanguageFileLine, std::to_string(problems[i].Line), fault) + "\n";
  }
  if (problems.size() > mostShown) lines += "…";
  if (!lines.empty())
    app_.Tell(BoxIcon::Information, app_.Message(text_id::LanguageFileWrong, fileName, lines));
}

void Settings::UseMessageLanguage(int index) {
  app_.State.LangIndex = static_cast<std::int16_t>(index);
  app_.State.LangBase = static_cast<std::int16_t>((index - 1) * LanguageBlock);
}

void Settings::UseHelpLanguage(int index) {
  app_.State.HelpLangIndex = static_cast<std::int16_t>(index);
  app_.State.HelpLangBase = static_cast<std::int16_t>((index - 1) * LanguageBlock);
}

bool Settings::Read() {
  ApplicationState& state = app_.State;
  const std::vector<LanguageProblems> problems = AddLanguages();
  app_.Config.emplace(state.ProgramFolder, state.VersionText, app_.Platform.IsNtFamily());
  const ConfigurationFile::Reading reading = app_.Config->Read(LanguageNames(app_.Strings));
  const Configuration& settings = reading.Settings;
  state.LangIndex = settings.LangIndex;
  state.LangBase = settings.LangBase;
  state.HelpLangIndex = settings.HelpLangIndex;
  state.HelpLangBase = settings.HelpLangBase;
  if (state.HelpLangIndex > 0) {
    state.HelpFile = HelpFileName(state.HelpLangIndex, LanguageText(state.HelpLangIndex, LanguageCodeId));
  }
  state.CurrentFile = settings.CurrentFile;
  state.DoubleClick = settings.DoubleClick;
  state.Zmm = settings.Zmm;
  state.CodeFontSize = settings.CodeFontSize;
  state.Patchs = settings.Patchs;
  state.PatchFlags = settings.PatchFlags;
  for (std::size_t i = 1; i <= MostRecentFiles; ++i) {
    const auto name = settings.OwnKey(std::string(RecentName) + std::to_string(i));
    if (name && !name->empty()) state.RecentFiles.push_back(*name);
  }
  const int width = ReadInteger(settings.OwnKey(EditorWidthName), DefaultEditorWidth);
  state.IsEditorShown = width > 0;
  state.EditorWidth = std::clamp(std::abs(width), NarrowestEditor, WidestEditor);
  const std::optional<WindowPlace> place = ReadPlace(settings.OwnKey(PlaceName));
  if (place) app_.Window.SetPlace(*place);
  if (state.CodeFontSize > 0) app_.Editor.SetFontSize(state.CodeFontSize);
  app_.Window.SetChecked(MenuId::Mnu_DblClick, state.DoubleClick);
  app_.Window.SetRecentFiles(state.RecentFiles);
  app_.Window.SetChecked(MenuId::Mnu_Code, state.IsEditorShown);
  app_.Window.SetEditorWidth(state.IsEditorShown ? state.EditorWidth : 0);
  // In the language that the file has chosen.
  for (const LanguageProblems& found : problems) TellProblems(found);
  if (!reading.Error.empty()) {
    app_.IsConfigFailureTold = true;
    app_.Tell(BoxIcon::Information,
              app_.Message(text_id::ConfigNotWritten, app_.Config->Name() + " (" + reading.Error + ")"));
  }
  return state.LangIndex == 0 || state.HelpLangIndex == 0;
}

// The template of new scripts follows the language of menus and help, in which its user reads.
void Settings::CopyTemplate() {
  const ApplicationState& state = app_.State;
  if (state.HelpLangIndex == 0) return;
  const std::string code = LanguageText(state.HelpLangIndex, LanguageCodeId);
  const std::string source = FindFile(state.ProgramFolder, "Vaxel_" + code + ".DaN");
  const FileContent content =
      source.empty() ? FileContent{FileStatus::Unreadable} : ReadWholeFile(source, MaxScriptBytes);
  if (content.Status != FileStatus::Read || content.Bytes.empty()) return;
  const std::string target = FindFile(state.ProgramFolder, "Vaxel.DaN");
  const std::string name = target.empty() ? state.ProgramFolder + "Vaxel.DaN" : target;
  OutputFile file(name);
  file.Write(content.Bytes);
  const std::string error = file.Commit();
  // In a folder that cannot be written the user was told so already.
  if (error.empty() || app_.IsConfigFailureTold) return;
  app_.Tell(BoxIcon::Information, app_.Message(text_id::CannotWrite, name, error));
}

void Settings::ChooseLanguages() {
  ApplicationState& state = app_.State;
  LanguageDialog dialog;
  dialog.Caption = "Vaxel   " + app_.Message(text_id::LanguageCaption);
  dialog.MessagesLabel = app_.Message(text_id::MessagesLanguage);
  dialog.HelpLabel = app_.Message(text_id::HelpLanguage);
  dialog.Button = app_.Message(text_id::ValidateLanguage);
  dialog.Languages = LanguageNames(app_.Strings);
  dialog.LastEntry = app_.Message(text_id::MoreLanguages);
  dialog.LastEntryHint = app_.Message(text_id::AddLanguage);
  dialog.Messages = state.LangIndex;
  dialog.Help = state.HelpLangIndex;
  dialog.OnMessages = [this](int index) { UseMessageLanguage(index); };
  dialog.OnHelp = [this](int index) { UseHelpLanguage(index); };
  dialog.OnButton = [this, &state] {
    const auto nameOf = [&](int index) {
      return index > 0 ? " " + LanguageText(index, LanguageNameId) : std::string();
    };
    app_.WriteLines({{std::string(LanguageKey), nameOf(state.LangIndex)},
                     {std::string(HelpLanguageKey), nameOf(state.HelpLangIndex)}});
    if (state.HelpLangIndex > 0)
      state.HelpFile = HelpFileName(state.HelpLangIndex, LanguageText(state.HelpLangIndex, LanguageCodeId));
    CopyTemplate();
  };
  app_.Dialogs.ShowLanguages(dialog);
}

void Settings::ChoosePatches() {
  ApplicationState& state = app_.State;
  const InputDialog dialog{
      "Vaxel",
      PatchPrompt(state.Patchs, app_.Message(text_id::ActivePatches), app_.Message(text_id::EnterPatch)), ""};
  while (true) {
    const std::optional<std::string> answer = app_.Dialogs.AskText(dialog);
    if (!answer || Trim(*answer).empty()) return;
    const std::optional<std::int16_t> patchs = ApplyPatchAnswer(state.Patchs, LeadingNumber(*answer));
    if (!patchs) continue;
    state.Patchs = *patchs;
    app_.WriteKey(PatchsKey, std::to_string(state.Patchs));
    state.PatchFlags = PatchFlagsOf(state.Patchs);
    return;
  }
}

void Settings::ChooseFontSize() {
  constexpr double smallest = 4, largest = 72;
  ApplicationState& state = app_.State;
  const std::string present = state.CodeFontSize > 0 ? NumberText(state.CodeFontSize) : std::string();
  const auto answer = app_.Dialogs.AskText(
      {"Vaxel", app_.Message(text_id::FontSizePrompt, NumberText(smallest), NumberText(largest)), present});
  if (!answer || !IsNumber(Trim(*answer))) return;
  const double size = LeadingNumber(*answer);
  if (!(size >= smallest && size <= largest)) return;
  state.CodeFontSize = size;
  app_.Editor.SetFontSize(size);
  app_.WriteKey(CodeFontSizeKey, " " + NumberText(size));
}

void Settings::ToggleDoubleClick() {
  app_.State.DoubleClick = !app_.State.DoubleClick;
  app_.Window.SetChecked(MenuId::Mnu_DblClick, app_.State.DoubleClick);
}

void Settings::ToggleEditor() {
  ApplicationState& state = app_.State;
  state.IsEditorShown = !state.IsEditorShown;
  app_.Window.SetChecked(MenuId::Mnu_Code, state.IsEditorShown);
  app_.Window.SetEditorWidth(state.IsEditorShown ? state.EditorWidth : 0);
}

void Settings::SetEditorWidth(int width) {
  ApplicationState& state = app_.State;
  state.EditorWidth = std::clamp(width, NarrowestEditor, WidestEditor);
  state.IsEditorShown = true;
  app_.Window.SetChecked(MenuId::Mnu_Code, true);
  app_.Window.SetEditorWidth(state.EditorWidth);
}

void Settings::WidenEditor() {
  SetEditorWidth(app_.State.EditorWidth * 3 / 2);
}

void Settings::ResetEditor() {
  SetEditorWidth(DefaultEditorWidth);
}

// One writing for all lines: a program that ends must not take longer for each of them.
void Settings::WriteAtEnd() {
  const ApplicationState& state = app_.State;
  std::vector<ConfigurationLine> lines;
  const std::string& script = state.StartupFile;
  if (!script.empty() && !IsMeterFile(script)) lines.push_back({std::string(ScriptKey), script});
  lines.push_back({std::string(DoubleClickKey), state.DoubleClick ? " Oui" : " Non"});
  lines.push_back(
      OwnLine(EditorWidthName, std::to_string(state.IsEditorShown ? state.EditorWidth : -state.EditorWidth)));
  lines.push_back(OwnLine(PlaceName, PlaceText(app_.Window.Place())));
  for (std::size_t i = 0; i < state.RecentFiles.size(); ++i) {
    lines.push_back(OwnLine(std::string(RecentName) + std::to_string(i + 1), state.RecentFiles[i]));
  }
  app_.WriteLines(lines);
}

}  // namespace vaxel
