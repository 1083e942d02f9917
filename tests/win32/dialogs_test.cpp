#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/win32/dialog_driver.h"
#include "win32/dialog_ids.h"
#include "win32/dialog_layout.h"
#include "win32/dialogs.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

struct WindowDestroyer {
  using pointer = HWND;
  void operator()(HWND window) const { DestroyWindow(window); }
};

class DialogsTest : public testing::Test {
 protected:
  using UniqueWindow = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDestroyer>;

  UniqueWindow Main{CreateWindowExW(0, L"STATIC", L"main", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200, 400,
                                    300, nullptr, nullptr, nullptr, nullptr)};
  DialogsWin32 Shown{GetModuleHandleW(nullptr), [this] { return Main.get(); }};
};

using Steps = std::function<void(const ShownDialog&)>;

Steps PressKey(WORD key) {
  return [key](const ShownDialog& dialog) { dialog.Key(key); };
}

Steps PressButton(int id) {
  return [id](const ShownDialog& dialog) { dialog.Press(id); };
}

// More than a message box can show.
std::string ManyLines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "%V" + std::to_string(i) + "\t" + std::to_string(i * i) + "\n";
  return text;
}

TEST(WideText, KeepsCharactersAndReplacesHalves) {
  EXPECT_EQ(Widen("Ωé\U0001F600"), L"Ωé\U0001F600");
  EXPECT_EQ(Narrow(L"Ωé\U0001F600"), "Ωé\U0001F600");
  EXPECT_EQ(Narrow(std::wstring(L"a") + static_cast<wchar_t>(0xD83D) + L"b"), "a\uFFFDb");
  EXPECT_EQ(Narrow(std::wstring(1, static_cast<wchar_t>(0xDE00))), "\uFFFD");
  EXPECT_EQ(Widen("a\xFF"), L"a\uFFFD");
}

TEST_F(DialogsTest, BoxesGiveTheButtonThatWasPressed) {
  for (const std::string& text : {std::string("Enregistrer ?"), ManyLines(200)}) {
    YesNoCancel three{};
    const auto askThree = [&] { three = Shown.AskYesNoCancel("T", text, SafeAnswer::Yes); };
    Drive(askThree, PressButton(IDNO));
    EXPECT_EQ(three, YesNoCancel::No);
    Drive(askThree, PressKey(VK_ESCAPE));
    EXPECT_EQ(three, YesNoCancel::Cancel);
    Drive(askThree, PressKey(VK_RETURN));
    EXPECT_EQ(three, YesNoCancel::Yes);
    Drive([&] { three = Shown.AskYesNoCancel("T", text, SafeAnswer::No); }, PressKey(VK_RETURN));
    EXPECT_EQ(three, YesNoCancel::No);

    bool answer = true;
    Drive([&] { answer = Shown.AskOkCancel("T", text); }, PressKey(VK_ESCAPE));
    EXPECT_FALSE(answer);
    Drive([&] { answer = Shown.AskOkCancel("T", text); }, PressKey(VK_RETURN));
    EXPECT_TRUE(answer);
    // Without Cancel, Enter and Escape give the answer that loses nothing.
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_ESCAPE}}) {
      Drive([&] { answer = Shown.AskYesNo("T", text, SafeAnswer::Yes); }, PressKey(key));
      EXPECT_TRUE(answer);
      Drive([&] { answer = Shown.AskYesNo("T", text, SafeAnswer::No); }, PressKey(key));
      EXPECT_FALSE(answer);
      Drive([&] { Shown.ShowMessage(BoxIcon::Critical, "T", text); }, PressKey(key));
    }
    Drive([&] { answer = Shown.AskYesNo("T", text, SafeAnswer::No); }, PressButton(IDYES));
    EXPECT_TRUE(answer);
  }
}

TEST_F(DialogsTest, BoxesSpeakTheLanguageOfTheProgram) {
  const ButtonTexts french{"OK", "Annuler", "&Oui", "&Non"};
  DialogsWin32 boxes(
      GetModuleHandleW(nullptr), [this] { return Main.get(); }, [&] { return french; });
  YesNoCancel answer{};
  Drive([&] { answer = boxes.AskYesNoCancel("Vaxel", "Enregistrer ?", SafeAnswer::Yes); },
        [](const ShownDialog& dialog) {
          EXPECT_EQ(dialog.Text(IDYES), "&Oui");
          EXPECT_EQ(dialog.Text(IDNO), "&Non");
          EXPECT_EQ(dialog.Text(IDCANCEL), "Annuler");
          dialog.AltLetter(L'n');
        });
  EXPECT_EQ(answer, YesNoCancel::No);
}

TEST_F(DialogsTest, BoxesStayOnTheScreen) {
  const std::string lines = ManyLines(1000), word(3000, 'W'), path = "C:\\" + std::string(90, 'a') + ".dat";
  for (const std::string& text : {lines, word, path, lines + lines + lines + lines + lines + lines + lines,
                                  "The file " + path + " cannot be read: " + path}) {
    Drive([&] { Shown.ShowMessage(BoxIcon::Information, "Variables", text); },
          [&](const ShownDialog& dialog) {
            RECT frame{}, work{}, client{}, prompt{};
            GetWindowRect(dialog.Window(), &frame);
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
            EXPECT_GE(frame.left, work.left);
            EXPECT_LE(frame.right, work.right);
            EXPECT_LE(frame.bottom, work.bottom);
            GetWindowRect(dialog.Control(IDC_PROMPT), &prompt);
            GetClientRect(dialog.Window(), &client);
            MapWindowPoints(nullptr, dialog.Window(), reinterpret_cast<POINT*>(&prompt), 2);
            EXPECT_LE(prompt.right, client.right);
            EXPECT_EQ(dialog.Focus(), IDOK);
            dialog.Key(VK_RETURN);
          });
  }
  Drive([&] { Shown.ShowMessage(BoxIcon::Information, "Variables", lines); },
        [](const ShownDialog& dialog) {
          EXPECT_EQ(dialog.Caption(), "Variables");
          EXPECT_EQ(SendMessageW(dialog.Control(IDC_PROMPT), EM_GETLINECOUNT, 0, 0), 1001);
          EXPECT_TRUE(dialog.Text(IDC_PROMPT).starts_with("%V0\t0\r\n%V1\t1\r\n"));
          dialog.Key(VK_RETURN);
        });
  // A word that is broken is there to its end.
  Drive([&] { Shown.ShowMessage(BoxIcon::Information, "T", word); },
        [&](const ShownDialog& dialog) {
          EXPECT_EQ(dialog.Text(IDC_PROMPT), word);
          EXPECT_GT(SendMessageW(dialog.Control(IDC_PROMPT), EM_GETLINECOUNT, 0, 0), 10);
          dialog.Key(VK_RETURN);
        });
}

std::string ClipboardText() {
  std::string text;
  if (!OpenClipboard(nullptr)) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = Narrow(static_cast<const wchar_t*>(GlobalLock(data)));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

TEST_F(DialogsTest, CtrlCCopiesTheTextOfABox) {
  for (const std::string& text : {std::string("Ligne 3 & 4\nFichier é.dat"), ManyLines(200)}) {
    Drive([&] { Shown.ShowMessage(BoxIcon::Information, "T", text); },
          [&](const ShownDialog& dialog) {
            dialog.CtrlKey('C');
            std::string wanted = Narrow(ControlText(text));
            Await("the text on the clipboard", [&] { return ClipboardText() == wanted; });
            dialog.Key(VK_RETURN);
          });
  }
}

TEST_F(DialogsTest, AskTextProposesAndReturnsWhatWasTyped) {
  const InputDialog question{"Vaxel", "Première ligne & suite\nSeconde ligne", "12,5"};
  std::optional<std::string> answer;
  const auto ask = [&] { answer = Shown.AskText(question); };
  Drive(ask, [](const ShownDialog& dialog) {
    EXPECT_EQ(dialog.Text(IDC_PROMPT), "Première ligne & suite\r\nSeconde ligne");
    EXPECT_EQ(dialog.Focus(), IDC_TEXT1);
    EXPECT_EQ(dialog.Selected(IDC_TEXT1), "12,5");
    dialog.Key(VK_RETURN);
  });
  EXPECT_EQ(answer, "12,5");
  Drive(ask, [](const ShownDialog& dialog) {
    SetTextOf(dialog.Control(IDC_TEXT1), L"Ωµ \U0001F600" + std::wstring(1, static_cast<wchar_t>(0xD800)));
    dialog.Press(IDOK);
  });
  EXPECT_EQ(answer, "Ωµ \U0001F600\uFFFD");
  Drive(ask, PressKey(VK_ESCAPE));
  EXPECT_FALSE(answer);
  Drive([&] { answer = Shown.AskText({"Vaxel", ManyLines(300), "long"}); }, PressButton(IDOK));
  EXPECT_EQ(answer, "long");
}

// It stays with the entry selected until that is taken.
TEST_F(DialogsTest, AskTextGoesOnAfterAWrongEntry) {
  InputDialog question{"Vaxel", "Patch", ""};
  question.OnOk = [this](const std::string& entry) {
    if (entry == "3") return true;
    Shown.ShowMessage(BoxIcon::Information, "Wrong", entry);
    return false;
  };
  std::optional<std::string> answer;
  Drive([&] { answer = Shown.AskText(question); },
        [](const ShownDialog& dialog) {
          dialog.Type(IDC_TEXT1, "x");
          dialog.Key(VK_RETURN);
          const ShownDialog wrong = AwaitDialog("Wrong");
          EXPECT_EQ(wrong.Message(), "x");
          EXPECT_FALSE(IsWindowEnabled(dialog.Window()));
          wrong.Answer(IDOK);
          EXPECT_EQ(AwaitDialog().Window(), dialog.Window());
          dialog.AwaitFocus(IDC_TEXT1);
          EXPECT_EQ(dialog.Selected(IDC_TEXT1), "x");
          dialog.Type(IDC_TEXT1, "3");
          dialog.Key(VK_RETURN);
        });
  EXPECT_EQ(answer, "3");
}

TEST_F(DialogsTest, ZoomGivesBothFieldsAndEscapeNone) {
  std::vector<std::pair<std::string, std::string>> entered;
  ZoomDialog zoom;
  zoom.Caption = "Vaxel   Zoom   (F7, Ctrl-F7)";
  zoom.FactorLabel = "Facteur de zoom";
  zoom.FactorText = "2";
  zoom.ZmmLabel = "Facteur de correction pour mm";
  zoom.ZmmText = "1";
  zoom.Button = "Valider - OK";
  zoom.OnButton = [&](const std::string& factor, const std::string& zmm) -> std::optional<ZoomField> {
    if (factor == "x" || zmm == "x") return factor == "x" ? ZoomField::Factor : ZoomField::Zmm;
    entered.emplace_back(factor, zmm);
    return std::nullopt;
  };
  const auto show = [&] { Shown.ShowZoom(zoom); };
  Drive(show, [](const ShownDialog& dialog) {
    EXPECT_EQ(dialog.Caption(), "Vaxel   Zoom   (F7, Ctrl-F7)");
    EXPECT_EQ(dialog.Text(IDC_LABEL2), "Facteur de correction pour mm");
    EXPECT_EQ(dialog.Text(IDC_COMMAND1), "Valider - OK");
    EXPECT_EQ(dialog.Selected(IDC_TEXT1), "2");
    dialog.Key(VK_TAB);
    dialog.AwaitFocus(IDC_TEXT2);
    EXPECT_EQ(dialog.Selected(IDC_TEXT2), "1");
    // A wrong entry waits to be typed anew.
    dialog.Type(IDC_TEXT2, "x");
    dialog.Press(IDC_COMMAND1);
    Await("the wrong field", [&] { return dialog.Selected(IDC_TEXT2) == "x"; });
    EXPECT_EQ(dialog.Focus(), IDC_TEXT2);
    dialog.Type(IDC_TEXT1, "x");
    dialog.Key(VK_RETURN);
    dialog.AwaitFocus(IDC_TEXT1);
    dialog.Type(IDC_TEXT1, "2");
    dialog.Type(IDC_TEXT2, "254/250");
    dialog.Key(VK_RETURN);
  });
  Drive(show, [](const ShownDialog& dialog) {
    dialog.Type(IDC_TEXT1, "9");
    dialog.Key(VK_ESCAPE);
  });
  EXPECT_EQ(entered, (std::vector<std::pair<std::string, std::string>>{{"2", "254/250"}}));
}

TEST_F(DialogsTest, LanguagesAreToldAtOnce) {
  std::vector<std::string> told;
  LanguageDialog languages;
  languages.Caption = "Vaxel   Langue";
  languages.MessagesLabel = "Messages";
  languages.HelpLabel = "Aide";
  languages.Button = "&Valider - OK";
  languages.Languages = {"Français", "English", "Castellano"};
  languages.LastEntry = ". . .";
  languages.LastEntryHint = "Vous pouvez ajouter une langue";
  languages.OnMessages = [&](int index) { told.push_back("messages " + std::to_string(index)); };
  languages.OnHelp = [&](int index) { told.push_back("help " + std::to_string(index)); };
  languages.OnButton = [&] { told.push_back("button"); };
  // Nothing is chosen by the dialog itself.
  Drive([&] { Shown.ShowLanguages(languages); },
        [&](const ShownDialog& dialog) {
          EXPECT_EQ(dialog.Text(IDC_OPTION1_FIRST + 2), "Castellano");
          EXPECT_FALSE(IsWindowEnabled(dialog.Control(IDC_OPTION1_FIRST + 3)));
          EXPECT_TRUE(dialog.Text(IDC_HINT).ends_with("Vous pouvez ajouter une langue"));
          EXPECT_TRUE(told.empty());
          dialog.Click(IDC_OPTION1_FIRST + 1);
          dialog.Click(IDC_OPTION2_FIRST + 2);
          EXPECT_EQ(told, (std::vector<std::string>{"messages 2", "help 3"}));
          dialog.AltLetter(L'v');
        });
  EXPECT_EQ(told, (std::vector<std::string>{"messages 2", "help 3", "button"}));

  told.clear();
  languages.Messages = 2;
  languages.Help = 1;
  Drive([&] { Shown.ShowLanguages(languages); },
        [](const ShownDialog& dialog) {
          EXPECT_EQ(SendMessageW(dialog.Control(IDC_OPTION1_FIRST + 1), BM_GETCHECK, 0, 0), BST_CHECKED);
          EXPECT_EQ(SendMessageW(dialog.Control(IDC_OPTION2_FIRST), BM_GETCHECK, 0, 0), BST_CHECKED);
          EXPECT_EQ(dialog.Focus(), IDC_OPTION1_FIRST + 1);
          dialog.Key(VK_DOWN);
          dialog.AwaitFocus(IDC_OPTION1_FIRST + 2);
          dialog.Key(VK_TAB);
          dialog.AwaitFocus(IDC_OPTION2_FIRST);
          dialog.Key(VK_DOWN);
          dialog.AwaitFocus(IDC_OPTION2_FIRST + 1);
          dialog.Key(VK_ESCAPE);
        });
  EXPECT_EQ(told, (std::vector<std::string>{"messages 3", "help 2"}));
}

TEST_F(DialogsTest, ExportGivesWhatIsChosenAndKeepsARefusedField) {
  std::vector<std::string> told;
  ExportDialog dialog;
  dialog.Caption = "Vaxel   Exporter";
  dialog.FormatLabel = "Format";
  dialog.PageLabel = "Page";
  dialog.Formats = {"SVG", "PNG", "EMF", "PDF"};
  dialog.Pages = {"Le dessin", "Le papier"};
  dialog.Format = 2;
  dialog.Page = 1;
  dialog.DpiLabel = "&Points par pouce";
  dialog.DpiText = "300";
  dialog.OnButton = [&](int format, int page, const std::string& dpi) {
    told.push_back(std::to_string(format) + " " + std::to_string(page) + " " + dpi);
    return dpi != "wrong";
  };
  const auto show = [&] { Shown.ShowExport(dialog); };
  // By the keyboard alone.
  Drive(show, [](const ShownDialog& shown) {
    EXPECT_EQ(shown.Focus(), IDC_OPTION1_FIRST + 2);
    EXPECT_TRUE(IsWindowEnabled(shown.Control(IDC_OPTION1_FIRST + 3)));
    shown.Key(VK_DOWN);
    shown.AwaitFocus(IDC_OPTION1_FIRST + 3);
    shown.Key(VK_TAB);
    shown.AwaitFocus(IDC_OPTION2_FIRST + 1);
    shown.Key(VK_UP);
    shown.AwaitFocus(IDC_OPTION2_FIRST);
    shown.Key(VK_TAB);
    shown.AwaitFocus(IDC_TEXT1);
    EXPECT_EQ(shown.Selected(IDC_TEXT1), "300");
    shown.Type(IDC_TEXT1, "wrong");
    shown.Press(IDOK);
    Await("the selected field", [&] { return shown.Selected(IDC_TEXT1) == "wrong"; });
    EXPECT_TRUE(shown.IsOpen());
    shown.Type(IDC_TEXT1, "600");
    shown.Key(VK_RETURN);
  });
  EXPECT_EQ(told, (std::vector<std::string>{"3 0 wrong", "3 0 600"}));
  Drive(show, PressKey(VK_ESCAPE));
  EXPECT_EQ(told.size(), 2U);
}

// Where a failed action would have to pass through the system.
TEST_F(DialogsTest, FontsAreFoundByTypingAndTakenByEnterOrADoubleClick) {
  FontsDialog dialog;
  dialog.Caption = "Fonts";
  dialog.FindLabel = "&Find";
  dialog.Button = "&Insert";
  dialog.CloseButton = "Close";
  dialog.Names = {"Arial", "Courier New", "Times New Roman"};
  std::vector<std::string> typed;
  std::vector<std::size_t> chosen;
  dialog.OnFind = [&](const std::string& text) {
    typed.push_back(text);
    return std::size_t{2};
  };
  dialog.OnChosen = [&](std::size_t name) { chosen.push_back(name); };
  const auto show = [&] { Shown.ShowFonts(dialog); };
  Drive(show, [](const ShownDialog& shown) {
    shown.Type(IDC_TEXT1, "ti");
    shown.Key(VK_RETURN);
  });
  Drive(show, [](const ShownDialog& shown) {
    Send(shown.Control(IDC_LIST), LB_SETCURSEL, 1);
    PostMessageW(shown.Window(), WM_COMMAND, MAKEWPARAM(IDC_LIST, LBN_DBLCLK),
                 reinterpret_cast<LPARAM>(shown.Control(IDC_LIST)));
    shown.AwaitClosed();
  });
  Drive(show, PressKey(VK_ESCAPE));
  ASSERT_FALSE(typed.empty());
  EXPECT_EQ(typed.back(), "ti");
  EXPECT_EQ(chosen, (std::vector<std::size_t>{2, 1}));
}

PreviewPages PagesForPreview(const std::string& problem) {
  auto drawing = std::make_shared<DisplayList>();
  PreviewPages pages;
  for (int page = 0; page < 2; ++page) {
    drawing->BeginPage(200, 287);
    drawing->Add({1, Black, 1, LineShape{{10, 10}, {190, 270}}});
    pages.Sheets.push_back({{{-5, -5}, {205, 292}}, {{0, 0}, {200, 287}}});
  }
  pages.Drawing = drawing;
  pages.Printer = "A printer";
  pages.Problem = problem;
  return pages;
}

TEST_F(DialogsTest, PreviewsTellEachChangeAndPrintWithEnter) {
  PreviewDialog dialog;
  dialog.Caption = "Preview";
  dialog.PrintButton = "&Print";
  dialog.CloseButton = "Close";
  dialog.PageText = [](std::size_t page, std::size_t pages) {
    return std::to_string(page + 1) + "/" + std::to_string(pages);
  };
  dialog.Pages = PagesForPreview("");
  PreviewEntry entry;
  int prints = 0;
  dialog.OnEntry = [&](const PreviewEntry& changed) {
    entry = changed;
    return PagesForPreview(changed.Copies == "x" ? "wrong" : "");
  };
  dialog.OnPrinter = [](const PreviewEntry&) { return std::nullopt; };
  dialog.OnPrint = [&] { return ++prints > 1; };
  Drive([&] { Shown.ShowPreview(dialog); },
        [&](const ShownDialog& shown) {
          EXPECT_EQ(shown.Text(IDC_STATUS), "1/2");
          shown.Click(IDC_NEXT);
          EXPECT_EQ(shown.Text(IDC_STATUS), "2/2");
          EXPECT_FALSE(IsWindowEnabled(shown.Control(IDC_NEXT)));
          shown.Click(IDC_CHECK3);
          shown.Type(IDC_TEXT1, "x");
          Await("the problem", [&] { return shown.Text(IDC_HINT) == "wrong"; });
          shown.Click(IDC_COMMAND1);  // it is not printed, and the preview stays
          EXPECT_TRUE(shown.IsOpen());
          EXPECT_FALSE(IsWindowEnabled(Main.get()));
          shown.Answer(IDC_COMMAND1);
        });
  EXPECT_TRUE(entry.IsMirrored);
  EXPECT_FALSE(entry.Ruler);
  EXPECT_EQ(entry.Copies, "x");
  EXPECT_EQ(entry.Gap, "5");
  EXPECT_EQ(prints, 2);
  Drive([&] { Shown.ShowPreview(dialog); }, PressKey(VK_RETURN));
  EXPECT_EQ(prints, 3);
  EXPECT_TRUE(IsWindowEnabled(Main.get()));
}

TEST_F(DialogsTest, TemplatesAreDrawnAsTheyAreChosen) {
  std::vector<std::size_t> drawn, chosen;
  TemplatesDialog dialog;
  dialog.Caption = "Templates";
  dialog.Label = "&Templates";
  dialog.Button = "&Create";
  dialog.Names = {"Clock", "VU meter"};
  dialog.OnShow = [&](std::size_t place) {
    drawn.push_back(place);
    return PagesForPreview(place == 1 ? "wrong" : "");
  };
  dialog.OnChosen = [&](std::size_t place) { chosen.push_back(place); };
  const auto show = [&] { Shown.ShowTemplates(dialog); };
  Drive(show, [](const ShownDialog& shown) {
    EXPECT_EQ(shown.Text(IDC_HINT), "");
    shown.Key(VK_DOWN);
    Await("the problem", [&] { return shown.Text(IDC_HINT) == "wrong"; });
    shown.Key(VK_RETURN);
  });
  EXPECT_EQ(drawn, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(chosen, std::vector<std::size_t>{1});
  Drive(show, [](const ShownDialog& shown) {
    PostMessageW(shown.Window(), WM_COMMAND, MAKEWPARAM(IDC_LIST, LBN_DBLCLK),
                 reinterpret_cast<LPARAM>(shown.Control(IDC_LIST)));
    shown.AwaitClosed();
  });
  Drive(show, PressKey(VK_ESCAPE));
  EXPECT_EQ(chosen, (std::vector<std::size_t>{1, 0}));
}

TEST_F(DialogsTest, WhatAnActionThrowsArrivesAtTheCaller) {
  ReferenceDialog reference{"R", "L", "0,0", "OK",
                            [](const std::string&) -> bool { throw std::runtime_error("no"); }};
  Drive([&] { EXPECT_THROW(Shown.ShowReference(reference), std::runtime_error); }, PressKey(VK_RETURN));
  EXPECT_TRUE(IsWindowEnabled(Main.get()));
}

TEST_F(DialogsTest, TheOwnerKeepsItsState) {
  const auto show = [&] { Shown.ShowAbout({"Vaxel", "Vaxel\n\nVersion 1.0"}); };
  const auto isOver = [this](const ShownDialog& dialog) {
    RECT over{}, main{};
    GetWindowRect(dialog.Window(), &over);
    GetWindowRect(Main.get(), &main);
    EXPECT_FALSE(IsWindowEnabled(Main.get()));
    EXPECT_NEAR((over.left + over.right) / 2, (main.left + main.right) / 2, 1);
    EXPECT_NEAR((over.top + over.bottom) / 2, (main.top + main.bottom) / 2, 1);
    dialog.Key(VK_RETURN);
  };
  Drive(show, isOver);
  EXPECT_TRUE(IsWindowEnabled(Main.get()));
  EnableWindow(Main.get(), FALSE);
  Drive(show, isOver);
  EXPECT_FALSE(IsWindowEnabled(Main.get()));
  Drive([&] { Shown.ShowMessage(BoxIcon::Information, "T", "text"); }, PressKey(VK_RETURN));
  EXPECT_FALSE(IsWindowEnabled(Main.get()));
  ShowWindow(Main.get(), SW_HIDE);
  Drive(show, PressKey(VK_ESCAPE));
  Main.reset();
  Drive(show, PressKey(VK_ESCAPE));
  bool answer = false;
  Drive([&] { answer = Shown.AskYesNo("T", "text", SafeAnswer::No); }, PressButton(IDYES));
  EXPECT_TRUE(answer);
}

TEST_F(DialogsTest, ColoursAreReturnedAndRemembered) {
  // In the system's template of this dialog.
  constexpr int red = 706, green = 707, blue = 708;
  std::optional<std::uint32_t> colour;
  const auto choose = [&] { colour = Shown.ShowColour(); };
  Drive(choose, [](const ShownDialog& dialog) {
    dialog.Type(red, "17");
    dialog.Type(green, "34");
    dialog.Type(blue, "51");
    dialog.Press(IDOK);
  });
  EXPECT_EQ(colour, 0x332211U);
  Drive(choose, [](const ShownDialog& dialog) {
    EXPECT_EQ(dialog.Text(green), "34");
    dialog.Key(VK_ESCAPE);
  });
  EXPECT_FALSE(colour);
}

}  // namespace
}  // namespace vaxel
