#include "app/settings.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>
#include <vector>

#include "app/data_folder.h"
#include "app/script_file.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/output_file.h"
#include "base/text.h"

namespace vaxel {
namespace {

constexpr int DefaultEditorWidth = 460;
constexpr double SmallestFontSize = 4, LargestFontSize = 72;  // points
constexpr int NarrowestEditor = 60, WidestEditor = 4000;
constexpr std::string_view EditorWidthName = "LargeurCode";
constexpr std::string_view PlaceName = "Fenetre";
constexpr std::string_view LiveDrawingName = "DessinDirect";
// Whether scripts may read by names of servers; written by hand alone.
constexpr std::string_view NetworkName = "ReseauPermis";
constexpr std::string_view RecentName = "Recent";
constexpr std::string_view ToolBarName = "BarreOutils";
constexpr std::string_view LanguagePrefix = "VAXEL_", LanguageExtension = ".LNG";

// The files "Vaxel_de.lng" with their folders, in the order of their names, so that the numbers of languages
// stay. Of two with one name that of the first folder counts.
std::map<std::string, std::string> LanguageFiles(const std::vector<std::string>& folders) {
  namespace fs = std::filesystem;
  std::map<std::string, std::string> files;
  for (const std::string& folder : folders) {
    std::error_code error;
    for (fs::directory_iterator entry(PathOf(folder), error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = NameOf(entry->path().filename());
      const std::string upper = UpperCase(name);
      if (upper.starts_with(LanguagePrefix) && upper.ends_with(LanguageExtension))
        files.emplace(name, folder);
    }
  }
  return files;
}

std::vector<std::string> LanguageNames(const StringTable& strings) {
  std::vector<std::string> names;
  for (int i = 0; i < strings.LanguageCount(); ++i) {
    names.emplace_back(strings.Text(i * LanguageBlock, TextId::LanguageName));
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

std::string Settings::LanguageText(int index, TextId id) const {
  return std::string(app_.Strings.Text((index - 1) * LanguageBlock, id));
}

std::vector<Settings::LanguageProblems> Settings::AddLanguages() {
  constexpr std::size_t maxBytes = 2 << 20;
  std::vector<LanguageProblems> problems;
  for (const auto& [name, folder] : LanguageFiles({app_.DataFolder, app_.ProgramFolder})) {
    const std::string code =
        name.substr(LanguagePrefix.size(), name.size() - LanguagePrefix.size() - LanguageExtension.size());
    const Result<std::string> text = ReadWholeFile(folder + name, maxBytes);
    if (text) {
      problems.push_back({name, app_.Strings.AddLanguage(code, *text)});
    } else if (text.Why().Fault == FileFault::IsTooLarge) {
      problems.push_back({name, std::vector{LineProblem{0, TextId::LanguageFileTooLarge}}});
    } else {
      problems.push_back({name, text.Why()});
    }
  }
  return problems;
}

void Settings::TellProblems(const LanguageProblems& found) {
  constexpr std::size_t mostShown = 15;
  const std::string& fileName = found.FileName;
  if (!found.Lines) {
    const std::string reason = app_.Message(found.Lines.Why());
    return app_.Tell(BoxIcon::Information, app_.Message(TextId::CannotRead, fileName, reason));
  }
  const std::vector<LineProblem>& problems = *found.Lines;
  std::string lines;
  for (std::size_t i = 0; i < problems.size() && i < mostShown; ++i) {
    const std::string fault = app_.Message(problems[i].Fault, problems[i].Value);
    if (problems[i].Line == 0) {
      return app_.Tell(BoxIcon::Information, app_.Message(TextId::LanguageFileRefused, fileName, fault));
    }
    lines += app_.Message(TextId::LanguageFileLine, std::to_string(problems[i].Line), fault) + "\n";
  }
  if (problems.size() > mostShown) lines += "…";
  if (!lines.empty())
    app_.Tell(BoxIcon::Information, app_.Message(TextId::LanguageFileWrong, fileName, lines));
}

void Settings::UseMessageLanguage(int index) {
  values_.LangIndex = static_cast<std::int16_t>(index);
  app_.LangBase = (index - 1) * LanguageBlock;
}

void Settings::UseHelpLanguage(int index) {
  values_.HelpLangIndex = static_cast<std::int16_t>(index);
  app_.HelpLangBase = (index - 1) * LanguageBlock;
}

void Settings::UseHelpFile() {
  const std::int16_t index = values_.HelpLangIndex;
  if (index > 0) helpFile_ = HelpFileName(index, LanguageText(index, TextId::LanguageCode));
}

void Settings::TellNotWritten(const Failure& why) {
  if (std::exchange(isFailureTold_, true)) return;
  app_.Tell(BoxIcon::Information,
            app_.Message(TextId::ConfigNotWritten, file_->Name() + " (" + app_.Message(why) + ")"));
}

void Settings::WriteLines(const std::vector<ConfigurationLine>& lines) {
  if (!file_) return;
  if (const Result<> written = file_->WriteKeys(lines); !written) TellNotWritten(written.Why());
}

bool Settings::Read() {
  const std::vector<LanguageProblems> problems = AddLanguages();
  const bool isApart = app_.DataFolder != app_.ProgramFolder;
  file_.emplace(app_.DataFolder, app_.VersionText, app_.Platform.IsNtFamily(),
                isApart ? app_.ProgramFolder : std::string());
  ConfigurationFile::Reading reading = file_->Read(LanguageNames(app_.Strings));
  values_ = std::move(reading.Settings);
  app_.LangBase = values_.LangBase;
  app_.HelpLangBase = values_.HelpLangBase;
  UseHelpFile();
  ShowOptions();
  // The problems are told in the language that the file has chosen.
  for (const LanguageProblems& found : problems) TellProblems(found);
  if (reading.Problem) TellNotWritten(*reading.Problem);
  return values_.LangIndex == 0 || values_.HelpLangIndex == 0;
}

void Settings::ShowOptions() {
  const int width = ReadInteger(values_.OwnKey(EditorWidthName), DefaultEditorWidth);
  isEditorShown_ = width > 0;
  editorWidth_ = std::clamp(std::abs(width), NarrowestEditor, WidestEditor);
  const std::optional<WindowPlace> place = ReadPlace(values_.OwnKey(PlaceName));
  if (place) app_.Window.SetPlace(*place);
  if (values_.CodeFontSize > 0) app_.Editor.SetFontSize(values_.CodeFontSize);
  isToolBarShown_ = UpperCase(values_.OwnKey(ToolBarName).value_or("")) != "NON";
  app_.Window.SetChecked(MenuId::Mnu_DblClick, values_.DoubleClick);
  app_.MayUseNetwork = EqualIgnoringCase(values_.OwnKey(NetworkName).value_or(""), "Oui");
  drawsLive_ = values_.OwnKey(LiveDrawingName) != "Non";
  app_.Window.SetChecked(MenuId::Mnu_DessinDirect, drawsLive_);
  app_.Window.SetChecked(MenuId::Mnu_Code, isEditorShown_);
  app_.Window.SetChecked(MenuId::Mnu_BarreOutils, isToolBarShown_);
  app_.Window.SetToolBarShown(isToolBarShown_);
  app_.Window.SetEditorWidth(isEditorShown_ ? editorWidth_ : 0);
}

std::vector<std::string> Settings::RecentFilesIn(const Configuration& settings) {
  std::vector<std::string> names;
  for (std::size_t i = 1; i <= MostRecentFiles; ++i) {
    const auto name = settings.OwnKey(std::string(RecentName) + std::to_string(i));
    if (name && !name->empty()) names.push_back(*name);
  }
  return names;
}

std::vector<std::string> Settings::ReadRecentFiles() {
  if (!file_) return {};
  return RecentFilesIn(file_->Read(LanguageNames(app_.Strings)).Settings);
}

void Settings::WriteRecentFiles(const std::vector<std::string>& names) {
  std::vector<ConfigurationLine> lines;
  for (std::size_t i = 0; i < names.size(); ++i) {
    lines.push_back(OwnLine(std::string(RecentName) + std::to_string(i + 1), names[i]));
  }
  WriteLines(lines);
}

void Settings::SetZmm(double zmm) {
  if (zmm == values_.Zmm) return;
  values_.Zmm = zmm;
  WriteLines({{std::string(ZmmKey), NumberText(zmm)}});
}

// The template of new scripts follows the language of menus and help, in which its user reads.
void Settings::CopyTemplate() {
  if (values_.HelpLangIndex == 0) return;
  const std::string code = LanguageText(values_.HelpLangIndex, TextId::LanguageCode);
  const std::string source = FindDataFile(app_, "Vaxel_" + code + ".DaN");
  if (source.empty()) return;
  const Result<std::string> bytes = ReadWholeFile(source, MaxScriptBytes);
  if (!bytes || bytes->empty()) return;
  const std::string target = FindFile(app_.DataFolder, "Vaxel.DaN");
  const std::string name = target.empty() ? app_.DataFolder + "Vaxel.DaN" : target;
  OutputFile file(name);
  file.Write(*bytes);
  const Result<> committed = file.Commit();
  // The user was told already that the folder cannot be written.
  if (committed || isFailureTold_) return;
  app_.Tell(BoxIcon::Information, app_.Message(TextId::CannotWrite, name, app_.Message(committed.Why())));
}

// The number of the system's language; it is English when the system's is none of ours.
int Settings::SystemLanguage() const {
  const std::string code = app_.Platform.LanguageCode();
  int base = app_.Strings.BaseOfCode(code);
  if (base < 0) base = app_.Strings.BaseOfCode(code.substr(0, code.find('-')));
  if (base < 0) base = app_.Strings.BaseOfCode("en");
  return base / LanguageBlock + 1;
}

LanguageDialog Settings::LanguagesWith(int messages, int help) const {
  LanguageDialog dialog;
  dialog.Caption = "Vaxel   " + app_.Message(TextId::LanguageCaption);
  dialog.MessagesLabel = app_.Message(TextId::MessagesLanguage);
  dialog.HelpLabel = app_.Message(TextId::MenusLanguage);
  dialog.Button = app_.Message(TextId::ValidateLanguage);
  dialog.Languages = LanguageNames(app_.Strings);
  dialog.LastEntry = app_.Message(TextId::MoreLanguages);
  dialog.LastEntryHint = app_.Message(TextId::AddLanguage);
  dialog.Messages = messages;
  dialog.Help = help;
  return dialog;
}

// Until something is chosen the indices stay 0: a program that is ended meanwhile asks again the next time.
// After Escape, too, nothing is written.
void Settings::ChooseLanguages() {
  const int named = values_.LangIndex > 0 ? values_.LangIndex : values_.NamedLangIndex;
  const int messages = named > 0 ? named : SystemLanguage();
  const int help = values_.HelpLangIndex > 0 ? values_.HelpLangIndex : SystemLanguage();
  app_.LangBase = (messages - 1) * LanguageBlock;
  app_.HelpLangBase = (help - 1) * LanguageBlock;
  LanguageDialog dialog = LanguagesWith(messages, help);
  int chosenMessages = messages, chosenHelp = help;
  bool isAccepted = false;
  dialog.OnMessages = [&](int index) { UseMessageLanguage(chosenMessages = index); };
  dialog.OnHelp = [&](int index) { UseHelpLanguage(chosenHelp = index); };
  dialog.OnButton = [&] {
    isAccepted = true;
    UseMessageLanguage(chosenMessages);
    UseHelpLanguage(chosenHelp);
    WriteLines({{std::string(LanguageKey), " " + LanguageText(chosenMessages, TextId::LanguageName)},
                {std::string(HelpLanguageKey), " " + LanguageText(chosenHelp, TextId::LanguageName)}});
    UseHelpFile();
    CopyTemplate();
  };
  app_.Dialogs.ShowLanguages(dialog);
  if (isAccepted) return;
  UseMessageLanguage(messages);
  UseHelpLanguage(help);
  UseHelpFile();
}

void Settings::ChoosePatches() {
  InputDialog dialog{
      "Vaxel",
      PatchPrompt(values_.Patchs, app_.Message(TextId::ActivePatches), app_.Message(TextId::EnterPatch)), ""};
  std::optional<std::int16_t> patchs;
  dialog.OnOk = [&](const std::string& entry) {
    if (Trim(entry).empty()) return true;
    patchs = ApplyPatchAnswer(values_.Patchs, LeadingNumber(entry));
    if (!patchs) app_.TellNotUsable(entry);
    return patchs.has_value();
  };
  if (!app_.Dialogs.AskText(dialog) || !patchs) return;
  values_.Patchs = *patchs;
  WriteLines({{std::string(PatchsKey), std::to_string(values_.Patchs)}});
  values_.PatchFlags = PatchFlagsOf(values_.Patchs);
}

void Settings::ChooseFontSize() {
  const std::string present = values_.CodeFontSize > 0 ? NumberText(values_.CodeFontSize) : std::string();
  InputDialog dialog{
      "Vaxel",
      app_.Message(TextId::FontSizePrompt, NumberText(SmallestFontSize), NumberText(LargestFontSize)),
      present};
  double size = 0;
  dialog.OnOk = [&](const std::string& entry) {
    if (Trim(entry).empty()) return true;
    const double entered = IsNumber(Trim(entry)) ? LeadingNumber(entry) : 0;
    if (entered >= SmallestFontSize && entered <= LargestFontSize) {
      size = entered;
    } else {
      app_.TellNotUsable(entry);
    }
    return size > 0;
  };
  if (!app_.Dialogs.AskText(dialog) || size == 0) return;
  values_.CodeFontSize = size;
  app_.Editor.SetFontSize(size);
  WriteLines({{std::string(CodeFontSizeKey), " " + NumberText(size)}});
}

void Settings::StepFontSize(int points) {
  const double present = values_.CodeFontSize > 0 ? values_.CodeFontSize : UsualCodeFontSize;
  const double size = std::clamp(present + points, SmallestFontSize, LargestFontSize);
  if (size == present) return;
  values_.CodeFontSize = size;
  app_.Editor.SetFontSize(size);
  isFontSizeNew_ = true;
}

void Settings::WriteFontSize() {
  if (std::exchange(isFontSizeNew_, false))
    WriteLines({{std::string(CodeFontSizeKey), " " + NumberText(values_.CodeFontSize)}});
}

void Settings::ToggleLiveDrawing() {
  drawsLive_ = !drawsLive_;
  app_.Window.SetChecked(MenuId::Mnu_DessinDirect, drawsLive_);
  WriteLines({OwnLine(LiveDrawingName, drawsLive_ ? "Oui" : "Non")});
}

void Settings::ToggleDoubleClick() {
  values_.DoubleClick = !values_.DoubleClick;
  app_.Window.SetChecked(MenuId::Mnu_DblClick, values_.DoubleClick);
}

void Settings::ToggleToolBar() {
  isToolBarShown_ = !isToolBarShown_;
  app_.Window.SetChecked(MenuId::Mnu_BarreOutils, isToolBarShown_);
  app_.Window.SetToolBarShown(isToolBarShown_);
  WriteLines({OwnLine(ToolBarName, isToolBarShown_ ? "Oui" : "Non")});
}

void Settings::ToggleEditor() {
  isEditorShown_ = !isEditorShown_;
  app_.Window.SetChecked(MenuId::Mnu_Code, isEditorShown_);
  app_.Window.SetEditorWidth(isEditorShown_ ? editorWidth_ : 0);
}

void Settings::SetEditorWidth(int width) {
  editorWidth_ = std::clamp(width, NarrowestEditor, WidestEditor);
  isEditorShown_ = true;
  app_.Window.SetChecked(MenuId::Mnu_Code, true);
  app_.Window.SetEditorWidth(editorWidth_);
}

void Settings::WidenEditor() {
  SetEditorWidth(editorWidth_ * 3 / 2);
}

void Settings::ResetEditor() {
  SetEditorWidth(DefaultEditorWidth);
}

// One writing for all lines: a program that ends must not take longer for each of them.
void Settings::WriteAtEnd(const std::string& startupFile) {
  std::vector<ConfigurationLine> lines;
  if (!startupFile.empty() && !IsMeterFile(startupFile))
    lines.push_back({std::string(ScriptKey), startupFile});
  lines.push_back({std::string(DoubleClickKey), values_.DoubleClick ? " Oui" : " Non"});
  lines.push_back(OwnLine(EditorWidthName, std::to_string(isEditorShown_ ? editorWidth_ : -editorWidth_)));
  lines.push_back(OwnLine(PlaceName, PlaceText(app_.Window.Place())));
  WriteLines(lines);
  WriteFontSize();
}

}  // namespace vaxel
