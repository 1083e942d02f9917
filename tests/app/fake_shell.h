// A window, dialogs, printer and system that do what a test tells them and write down what they are asked
// for.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/application.h"
#include "tests/support/test_folder.h"

namespace vaxel::test {

using Log = std::vector<std::string>;

class FakeWindow : public MainWindow {
 public:
  explicit FakeWindow(Log& log) : log_(log) {}

  void Show() override {}
  void SetTitle(std::string_view title) override { log_.push_back("title " + (Title = title)); }
  void SetCaption(MenuId item, std::string_view caption) override { Captions.emplace_back(item, caption); }
  void SetChecked(MenuId item, bool isChecked) override { Checked[item] = isChecked; }
  void SetItemEnabled(MenuId item, bool isEnabled) override;
  void SetToolText(ToolIcon button, std::string_view text) override { ToolTexts[button] = text; }
  void SetToolBarShown(bool isShown) override { IsToolBarShown = isShown; }
  void SetToolTip(StatusField, std::string_view text) override { ToolTips.emplace_back(text); }
  void SetStatus(StatusField field, std::string_view text) override {
    Status[static_cast<std::size_t>(field)] = text;
    if (field == StatusField::Message) Messages.emplace_back(text);
  }
  void SetRecentFiles(const std::vector<std::string>& names) override { Recent = names; }
  void SetPointer(PointerShape shape) override;
  void SetWindowEnabled(bool isEnabled) override;
  void ProcessEvents() override;
  void Close() override { log_.push_back("close"); }
  WindowPlace Place() override { return {{10, 20, 810, 620}, false}; }
  void SetPlace(const WindowPlace& place) override { PlaceSet = place; }
  GraphicArea Graphic() override { return Area; }
  ScreenRectangle EditorRectangle() override { return {100, 50, 301, 450}; }
  void MovePointer(ScreenPoint place) override {
    log_.push_back("pointer at " + std::to_string(place.X) + "," + std::to_string(place.Y));
  }
  void SetEditorWidth(int width) override { EditorWidth = width; }
  void ShowDrawing(const DisplayList& drawing, std::size_t page) override;
  void ShowDrawingSoFar(const DisplayList& drawing) override {
    ShowDrawing(drawing, drawing.Pages().size() - 1);
  }
  void SetView(const GraphicView& view) override { View = view; }
  void SetDrawingOld(bool isOld) override { IsDrawingOld = isOld; }
  void SetHalo(std::vector<OperationOutline> outlines) override {
    Halo = std::move(outlines);
    ++Halos;
  }
  void ShowTip(std::string_view text) override { Tip = text; }
  void ShowMeasuring(const std::optional<MeasuringLine>& line) override { Measuring = line; }
  bool HasInput() override { return OnInput && OnInput(); }
  void AwaitPause() override { ++AwaitedPauses; }
  void SetPartName(WindowPart part, std::string_view name) override { PartNames[part] = name; }
  void SetSheet(const std::optional<PaperOutline>& sheet) override { Sheet = sheet; }
  void SetRulers(const std::optional<Rulers>& rulers) override { RulersSet = rulers; }

  // Gets another size, as by its user.
  void Resize(Application& application, double widthPx, double heightPx);

  // Reads the drawing that is shown, as every window does when it likes.
  void Paint();
  void Forget() { shown_ = nullptr; }

  // The one that was set last.
  std::string CaptionOf(MenuId item) const {
    std::string caption;
    for (const auto& [named, text] : Captions) caption = named == item ? text : caption;
    return caption;
  }

  std::size_t PaintedOperations = 0;
  std::string Title;
  std::array<std::string, StatusFields> Status;
  // These two, and what has stood in the field for messages.
  const std::string& Text1 = Status[0];
  const std::string& Text2 = Status[1];
  Log Messages;
  std::vector<std::pair<MenuId, std::string>> Captions;
  std::set<MenuId> Greyed;
  std::map<MenuId, bool> Checked;
  std::map<ToolIcon, std::string> ToolTexts;
  std::map<WindowPart, std::string> PartNames;
  bool IsToolBarShown = false;
  std::vector<std::string> ToolTips, Recent;
  std::optional<WindowPlace> PlaceSet;
  int EditorWidth = -1;
  GraphicArea Area{640, 480, 0.25};
  GraphicView View;
  std::size_t Page = 0;
  std::optional<PaperOutline> Sheet;
  std::optional<Rulers> RulersSet;
  bool IsEnabled = true, IsDrawingOld = false;
  int AwaitedPauses = 0;
  std::vector<OperationOutline> Halo;
  int Halos = 0;  // that were set
  std::string Tip;
  std::optional<MeasuringLine> Measuring;
  std::function<bool()> OnInput;
  std::function<void()> OnEvents;  // what the user does meanwhile
  std::function<void(const DisplayList&)> OnShow;

 private:
  Log& log_;
  const DisplayList* shown_ = nullptr;
};

class FakeEditor : public ScriptEditor {
 public:
  explicit FakeEditor(Log& log) : log_(log) {}

  std::string Text() override {
    if (std::exchange(GivesNoText, false)) throw std::bad_alloc();
    return Content;
  }
  bool IsEmpty() override { return Content.empty(); }
  std::size_t Size() override { return Content.size(); }
  void SetText(std::string_view text) override;
  void ReplaceSelection(std::string_view text) override;
  void ReplaceLines(std::size_t first, const std::vector<std::string>& lines) override;
  // A vertical tab ends a line too, as in the control of Windows.
  EditorPlace Place() override;
  void GoToLine(std::size_t line) override;
  // Places are those of ASCII, of which tests of editing are made.
  EditorRange Selection() override { return Selected; }
  void Select(EditorRange range) override { Selected = {range.Begin, std::min(range.End, Content.size())}; }
  EditorRange RangeOfLines(std::size_t first, std::size_t last) override;
  std::size_t LineAt(std::size_t place) override;
  std::string TextOf(EditorRange range) override {
    return Content.substr(range.Begin, range.End - range.Begin);
  }
  void Replace(EditorRange range, std::string_view text) override;
  void TakeKeys() override { ++KeysTaken; }
  void Undo() override;
  void Redo() override { log_.emplace_back("redo"); }
  void Cut() override { log_.emplace_back("cut"); }
  void Copy() override { log_.emplace_back("copy"); }
  void Paste() override { log_.emplace_back("paste"); }
  std::string WordAtCursor() override { return "Arc"; }
  void SetTypingColour(Colour colour) override { log_.push_back("typing colour " + std::to_string(colour)); }
  void SetSurvey(const ScriptSurvey*) override { ++NamesSet; }
  void ColourLine(std::size_t line) override { log_.push_back("colour line " + std::to_string(line)); }
  void ColourAll() override { log_.push_back("colour all"); }
  std::string FontName() override { return "Courier New"; }
  void SetFontSize(double points) override { FontSize = points; }

  // As a user does.
  void Type(std::string_view text);
  void ForgetSteps() { undoable_.clear(); }

  std::string Content;
  std::size_t Line = 1;
  EditorRange Selected;
  int Replacements = 0;  // each of which is a step to undo
  int NamesSet = 0;      // how often
  int KeysTaken = 0;
  double FontSize = 0;
  Application* Owner = nullptr;
  bool IsFull = false;       // takes no text for want of memory
  bool GivesNoText = false;  // the next time, likewise

 private:
  struct Step {
    std::string Content;
    EditorRange Selected;
  };
  std::vector<Step> undoable_;  // what was replaced
  Log& log_;
};

class FakeDialogs : public Dialogs {
 public:
  explicit FakeDialogs(Log& log) : log_(log) {}

  void ShowMessage(BoxIcon icon, const std::string& title, const std::string& text) override;
  YesNoCancel AskYesNoCancel(const std::string& title, const std::string& text, SafeAnswer safe) override;
  bool AskYesNo(const std::string& title, const std::string& text, SafeAnswer safe) override;
  bool AskOkCancel(const std::string& title, const std::string& text) override;
  std::optional<std::string> AskText(const InputDialog& dialog) override;
  std::vector<std::string> ShowOpen(const FileDialog& dialog) override;
  std::string ShowSave(const FileDialog& dialog) override;
  std::optional<std::uint32_t> ShowColour() override { return Chosen; }
  void ShowZoom(const ZoomDialog& dialog) override;
  void ShowReference(const ReferenceDialog& dialog) override;
  void ShowLanguages(const LanguageDialog& dialog) override;
  void ShowSearch(const SearchDialog& dialog) override {
    if (OnSearch) OnSearch(dialog);
  }
  void ShowExport(const ExportDialog& dialog) override;
  std::optional<PrinterEntry> ShowPrinter(const PrinterChoice& present) override;
  void ShowFonts(const FontsDialog& dialog) override;
  void ShowPreview(const PreviewDialog& dialog) override;
  void ShowTemplates(const TemplatesDialog& dialog) override {
    if (OnTemplates) OnTemplates(dialog);
  }
  void ShowAbout(const AboutDialog& dialog) override { log_.push_back("about " + dialog.Text); }

  // What the user answers to boxes and input boxes, in order: "yes", "no", "cancel", "ok", "safe" or a
  // text.
  std::deque<std::string> Answers;
  std::vector<std::string> Files;  // what the next file dialogs give; none: cancelled
  std::optional<std::uint32_t> Chosen;
  std::vector<FileDialog> FileDialogs;
  std::function<void()> OnAsk;
  std::function<void(const ZoomDialog&)> OnZoom;
  std::function<void(const ReferenceDialog&)> OnReference;
  std::function<void(const LanguageDialog&)> OnLanguages;
  std::function<void(const SearchDialog&)> OnSearch;
  std::optional<PrinterEntry> PrinterChosen;  // none: cancelled
  std::function<void(const FontsDialog&)> OnFonts;
  std::function<void(const PreviewDialog&)> OnPreview;
  std::function<void(const TemplatesDialog&)> OnTemplates;
  std::function<void(const ExportDialog&)> OnExport;  // else what is proposed is taken

 private:
  std::string Next();
  std::string Next(SafeAnswer safe);

  Log& log_;
};

class FakeAid : public WritingAidView {
 public:
  void ShowOffers(const std::vector<Offer>& offers, std::size_t place) override {
    Offers.clear();
    for (const Offer& offer : offers) Offers.push_back(offer.Shown);
    Place = place;
    Chosen = 0;
  }
  void ChooseOffer(std::size_t index) override { Chosen = index; }
  void HideOffers() override { Offers.clear(); }
  void SetHelp(const AidHelp& help) override { Help = help; }
  void SetProblems(const std::vector<std::string>& problems) override { Problems = problems; }
  void MarkLines(const std::vector<std::size_t>& lines) override { Marked = lines; }
  void ChooseProblem(std::size_t index) override { Problem = index; }
  void ShowPage(AidPage page) override { Page = page; }
  void SetPageCaptions(const std::string& help, const std::string& problems) override {
    Captions = help + ", " + problems;
  }

  std::vector<std::string> Offers, Problems;
  std::vector<std::size_t> Marked;
  std::size_t Place = 0, Chosen = 0, Problem = 0;
  AidHelp Help;
  AidPage Page = AidPage::None;
  std::string Captions;
};

class FakePrinters : public Printers {
 public:
  explicit FakePrinters(Log& log) : log_(log) {}
  std::string CurrentPrinter() override { return Name; }
  bool HasPrinter(const std::string& name) override { return name == Name || Others.contains(name); }
  Result<RunTarget> Target(const PrinterChoice& printer) override;
  Result<> Print(const PrintOrder& order, const DisplayList& drawing) override;
  Result<PrinterSheet> Sheet(const PrinterChoice& printer, bool isLandscape) override;
  std::vector<std::string> Fonts(const PrinterChoice&) override { return FontNames; }
  std::string PdfPrinter() override { return PdfName; }
  Result<> PrintToFile(const FilePrint& print, const DisplayList& drawing) override;

  std::string Name = "Plotter", PdfName = "Paperless";
  std::string PdfBytes = "%PDF-1.7 ... %%EOF\n";  // that it writes
  // What goes wrong, in the system's words.
  std::string PrintFailure, TargetFailure;
  std::set<std::string> Others;  // printers that are there, too
  std::vector<std::string> FontNames{"Arial", "Old Arial", "Times New Roman"};
  double WidthMm = 200, HeightMm = 287;  // that can be printed on
  Point SheetMm{210, 297};
  bool HasColour = true;
  std::optional<PrintOrder> Order;  // the last one, and what was to be printed
  DisplayList Printed;

 private:
  Log& log_;
};

class FakePlatform : public Platform {
 public:
  explicit FakePlatform(Log& log) : log_(log) {}
  std::chrono::steady_clock::time_point Now() override { return Time += Step; }
  bool IsCtrlDown() override { return Ctrl; }
  bool IsNtFamily() override { return true; }
  std::string SystemDescription() override { return "Windows Test"; }
  std::string LanguageCode() override { return Language; }
  std::string Today() override { return "21/11/2026"; }
  std::uint32_t ProcessId() override { return Process; }
  bool IsRunning(std::uint32_t processId) override { return Running.contains(processId); }
  void SetWorkingFolder(const std::string& folder) override { log_.push_back("folder " + folder); }
  std::string UserDataFolder() override { return UserFolder; }
  bool CanWriteIn(const std::string& folder) override { return !ReadOnly.contains(folder); }
  std::string TimeForNames() override { return "2026-11-22 14.05"; }
  bool OpenHelp(const std::string& helpFile, const std::string& word) override;
  std::vector<std::string> FontNames() override { return {"Arial", "Courier New", "Times New Roman"}; }
  TextMeasurer* Measurer() override { return nullptr; }
  PictureDecoder* Decoder() override { return nullptr; }
  Result<> WritePng(const DisplayList& drawing, std::size_t page, double dpi, ByteSink& sink) override;
  Result<> WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) override;
  bool CopyPicture(const std::string& emf, const std::string& png) override;

  std::chrono::steady_clock::time_point Time{std::chrono::hours(1)};
  std::chrono::milliseconds Step{0};  // that passes with each look at the clock
  bool Ctrl = false, HasHelp = true;
  std::string Language = "fr-CA";
  std::uint32_t Process = 7;
  std::string EmfFailure;  // in the system's words
  bool HasClipboard = true;
  std::set<std::uint32_t> Running;
  std::string UserFolder;
  std::set<std::string> ReadOnly;  // folders that cannot be written

 private:
  Log& log_;
};

// An application in a folder of its own.
class FakeShell {
 public:
  FakeShell() { Restart(); }
  // Has started with this script and a configuration that has everything: no dialog has appeared.
  explicit FakeShell(std::string_view script) : FakeShell() { StartWith(script); }

  // Begins as another program would in the same folder, with an editor of its own.
  void Restart();
  bool Start(const std::string& script = "");
  // A command whose next dialog for files gives these, or whose questions are answered like this.
  void CommandWithFiles(MenuId item, std::vector<std::string> files);
  void CommandWithAnswers(MenuId item, std::deque<std::string> answers);
  void StartWith(std::string_view script);

  // As the window's timer does, and waits for what that has begun.
  void Tick() {
    App->Tick();
    App->FinishCopy();
  }
  std::string Path(const std::string& name) const { return folder_.NameOf(name); }
  void Write(const std::string& name, std::string_view bytes) const { folder_.Write(name, bytes); }
  std::string Read(const std::string& name) const { return folder_.Read(name); }
  bool Exists(const std::string& name) const { return folder_.Has(name); }
  // What happened since the last call, the lines beginning with one of the words alone if there are any.
  Log Take(const std::vector<std::string>& beginnings = {});

  const EditedScript& Script() const { return App->Script(); }
  const std::string& StartupFile() const { return App->Files().StartupFile(); }
  const ViewState& View() { return App->Runs().View(); }
  std::string Folder() const { return Path(""); }

  Log Happened;
  FakeWindow Window{Happened};
  FakeEditor Editor{Happened};
  FakeDialogs Boxes{Happened};
  FakePrinters Printer{Happened};
  FakePlatform System{Happened};
  FakeAid Aid;
  std::optional<Application> App;

 private:
  TestFolder folder_;
};

// A script of two strokes, and what its run asks for.
inline constexpr const char* Dial = "CentreE = 10, 5, N\nTrait = 0, 0, 10, 0\nTrait = 0, 0, 0, 10\n";
inline const Log RunOfDial = {"hourglass", "disable", "events", "events",
                              "show 2",    "arrow",   "enable", "events"};

}  // namespace vaxel::test
