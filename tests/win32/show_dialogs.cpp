// Shows one of the dialogs, to be looked at: show_dialogs NAME LANGUAGE. LANGUAGE counts from 1.
#include <windows.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "app/app_context.h"
#include "app/win32/dialogs_win32.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

int ShowDialog(const std::string& name, int language) {
  const StringTable strings;
  const auto text = [&](int id) { return std::string(strings.Text((language - 1) * LanguageBlock + id)); };
  const HWND main =
      CreateWindowExW(0, L"STATIC", L"Vaxel", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20,
                      GetSystemMetrics(SM_CXSCREEN) * 9 / 10, GetSystemMetrics(SM_CYSCREEN) * 9 / 10, nullptr,
                      nullptr, nullptr, nullptr);
  DialogsWin32 dialogs(
      GetModuleHandleW(nullptr), [main] { return main; },
      [&] {
        return ButtonTexts{text(text_id::Ok), text(text_id::Cancel), text(text_id::Yes), text(text_id::No)};
      });
  std::string lines;
  for (int i = 0; i < 400; ++i)
    lines += "%Variable" + std::to_string(i) + "\t" + std::to_string(i * i) + "\n";
  const std::string question = text(text_id::ActivePatches) + " 1, 2\n\n" + text(text_id::EnterPatch);
  const FileDialog files{
      text(text_id::VaxelFiles) + " (*.dat)|*.dat|" + text(text_id::AllFiles) + " (*.*)|*.*|", "", "", "dat",
      OverwritePrompt | HideReadOnly};
  const std::map<std::string, std::function<void()>> all = {
      {"message", [&] { dialogs.ShowMessage(BoxIcon::Critical, "Vaxel", text(text_id::NoPrinter)); }},
      {"save", [&] { dialogs.AskYesNoCancel("Vaxel", text(text_id::SaveChanges)); }},
      {"long", [&] { dialogs.AskOkCancel("Vaxel", lines); }},
      {"input",
       [&] {
         dialogs.AskText({"Vaxel", question, "12"});
       }},
      {"long-input",
       [&] {
         dialogs.AskText({"Vaxel", lines, "12"});
       }},
      {"colour", [&] { dialogs.ShowColour(); }},
      {"file", [&] { dialogs.ShowSave(files); }},
      {"zoom",
       [&] {
         dialogs.ShowZoom({"Vaxel   Zoom   (F7, Ctrl-F7)", text(text_id::ZoomFactor), "2",
                           text(text_id::MmCorrection), "1.016", text(text_id::Validate),
                           [](const std::string&, const std::string&) {}});
       }},
      {"reference",
       [&] {
         dialogs.ShowReference({"Vaxel   RefCur   (F8, Ctrl-F8)", text(text_id::ReferenceLabel), "0,0",
                                text(text_id::ValidateReference), [](const std::string&) { return true; }});
       }},
      {"language",
       [&] {
         LanguageDialog dialog;
         dialog.Caption = "Vaxel   " + text(text_id::LanguageCaption);
         dialog.MessagesLabel = text(text_id::MessagesLanguage);
         dialog.HelpLabel = text(text_id::HelpLanguage);
         dialog.Button = text(text_id::ValidateLanguage);
         dialog.Languages = {"Français", "English", "Castellano"};
         dialog.LastEntry = text(text_id::MoreLanguages);
         dialog.LastEntryHint = text(text_id::AddLanguage);
         dialog.Messages = language;
         dialog.Help = language;
         dialog.OnButton = [] {};
         dialogs.ShowLanguages(dialog);
       }},
      {"about", [&] {
         dialogs.ShowAbout({"Vaxel", "Vaxel\n" + text(text_id::AboutText) + "\n\nVersion 1.0\nWindows 10"});
       }}};
  const auto found = all.find(name);
  if (found == all.end()) return EXIT_FAILURE;
  found->second();
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace vaxel

int main(int count, char** arguments) {
  if (count < 3) return EXIT_FAILURE;
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  return vaxel::ShowDialog(arguments[1], std::atoi(arguments[2]));
}
