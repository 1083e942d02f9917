// A day in the life of the real program: what its user does, at random, and after each act what must hold. It
// takes long, so nothing runs it by itself; scripts/check does.
//
//   VAXEL_DAY_ACTS   how many acts (default: 300)
//   VAXEL_DAY_SEED   which (default: 1)
//   VAXEL_DAY_TELL   not empty: each act is told before it is done
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "tests/win32/random_user.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

using namespace std::chrono_literals;

constexpr std::wstring_view Lines[] = {
    L"Trait = 0, 0, 10, 20, Rouge",
    L"cercle 0, 0, 12",
    L"%Rayon = 40 ' the needle's",
    L"ARCM = 0, 0, %Rayon, 45, 135",
    L"TexteC = 0, 20, 0, 4, \"µA é°\"",
    L"Grad = 10, 5",
    L"' a remark, with accents: é è ñ",
    L"? = %Rayon",
    L"Fichier = inc.dat",
    L"Nonsense = 1",
    L"NPage",
    L"Pour %I = 1, 5",
    L"  Trait = 0, %I, 30, %I",
    L"Suivant",
    L"",
};
constexpr wchar_t Typed[] = L"abcdefg 0123456789.,%='µ";

class ADayInTheLife : public RandomUser {
 protected:
  struct Act {
    const char* Name;
    int Weight;
    void (ADayInTheLife::*Do)();
  };
  static const std::vector<Act> Acts;

  void Live(int acts);
  void ExpectSaved(const char* file);

  void TypeLine();
  void TypeCharacters();
  void TypeOver();
  void TakeBack();
  void UndoAndRedo();
  void ThereAndBack();
  void DuplicateLine();
  void CutAndPaste();
  void CompleteAWord();
  void Save();
  void SaveInVain();
  void SaveWithoutFolder();
  void SaveOnAFullDisk();
  void OpenTheOther();
  void DropTheOther();
  void NewScript();
  void RunIt();
  void Look();
  void ToggleOptions();
  void AskAndLeave();
  void PrintIt();
  void MovePointerAbout();
  void ResizeIt();
  void KillAndComeBack();

  void ComeBack(bool withCopy);

  int refused_ = 0;     // because the disk was full
  int assertions_ = 0;  // of Wine's edit control
};

const std::vector<ADayInTheLife::Act> ADayInTheLife::Acts = {
    {"type a line", 20, &ADayInTheLife::TypeLine},
    {"type characters", 20, &ADayInTheLife::TypeCharacters},
    {"type over", 6, &ADayInTheLife::TypeOver},
    {"take back", 8, &ADayInTheLife::TakeBack},
    {"undo and redo", 8, &ADayInTheLife::UndoAndRedo},
    {"there and back", 8, &ADayInTheLife::ThereAndBack},
    {"duplicate a line", 3, &ADayInTheLife::DuplicateLine},
    {"cut and paste", 5, &ADayInTheLife::CutAndPaste},
    {"complete a word", 4, &ADayInTheLife::CompleteAWord},
    {"save", 6, &ADayInTheLife::Save},
    {"save in vain", 2, &ADayInTheLife::SaveInVain},
    {"save without folder", 1, &ADayInTheLife::SaveWithoutFolder},
    {"save on a full disk", 1, &ADayInTheLife::SaveOnAFullDisk},
    {"open the other", 3, &ADayInTheLife::OpenTheOther},
    {"drop the other", 2, &ADayInTheLife::DropTheOther},
    {"new script", 2, &ADayInTheLife::NewScript},
    {"run", 10, &ADayInTheLife::RunIt},
    {"look", 10, &ADayInTheLife::Look},
    {"toggle options", 6, &ADayInTheLife::ToggleOptions},
    {"ask and leave", 6, &ADayInTheLife::AskAndLeave},
    {"print", 1, &ADayInTheLife::PrintIt},
    {"move the pointer", 8, &ADayInTheLife::MovePointerAbout},
    {"resize", 4, &ADayInTheLife::ResizeIt},
    {"kill and come back", 1, &ADayInTheLife::KillAndComeBack},
};

void ADayInTheLife::TypeLine() {
  const std::size_t at = SomeLineEnd();
  const std::wstring_view line = OneOf(Lines);
  Select({at, at});
  program_->Key(VK_ESCAPE);
  program_->Key(VK_RETURN);
  ExpectReplaced({at, at}, L"\n");
  program_->TypeIntoEditor(Narrow(line));
  std::wstring expected = before_;
  ExpectText(expected.insert(at, L"\n" + std::wstring(line)));
  program_->Key(VK_ESCAPE);
}

void ADayInTheLife::TypeCharacters() {
  const std::size_t at = Below(now_.size() + 1);
  std::wstring typed;
  for (std::size_t count = 1 + Below(12); count > 0; --count) typed += Typed[Below(std::size(Typed) - 1)];
  Select({at, at});
  program_->TypeIntoEditor(Narrow(typed));
  ExpectReplaced({at, at}, typed);
  program_->Key(VK_ESCAPE);
}

void ADayInTheLife::TypeOver() {
  const Range range = SomeRange();
  Select(range);
  program_->TypeIntoEditor("x");
  ExpectReplaced(range, L"x");
  program_->Key(VK_ESCAPE);
}

void ADayInTheLife::TakeBack() {
  const std::size_t at = 1 + Below(now_.size() + 1);
  if (at > now_.size()) return;
  Select({at, at});
  program_->Key(VK_BACK);
  ExpectReplaced({at - 1, at}, L"");
  program_->Key(VK_ESCAPE);
}

// As far as undoing went, doing again brings it back.
void ADayInTheLife::UndoAndRedo() try {
  const std::size_t wanted = 1 + Below(4);
  std::size_t steps = 0;
  for (std::wstring text = TextNow(); steps < wanted; ++steps) {
    program_->Command(MenuId::Mnu_Annuler);
    if (std::exchange(text, TextNow()) == text) break;
  }
  for (; steps > 0; --steps) program_->Command(MenuId::Mnu_Refaire);
  ExpectSameText();
} catch (const DriveFailure&) {
  // The edit control of Wine 8 fails an assertion of its own (riched20/caret.c:232) in doing some steps
  // again. So would the program end if it gave up itself: whoever counts more of these looks for the
  // assertion in the output.
  constexpr int aborted = 3;
  if (!program_->HasEnded() || program_->AwaitExit() != aborted) throw;
  ++assertions_;
  ComeBack(false);
}

void ADayInTheLife::ThereAndBack() {
  using enum MenuId;
  constexpr std::pair<MenuId, MenuId> pairs[] = {{Mnu_Indenter, Mnu_Desindenter},
                                                 {Mnu_Commenter, Mnu_Annuler},
                                                 {Mnu_Dupliquer, Mnu_Annuler},
                                                 {Mnu_SupprimerLignes, Mnu_Annuler},
                                                 {Mnu_Couper, Mnu_Annuler}};
  const auto& [there, back] = OneOf(pairs);
  const Range range = SomeRange();
  const bool isOneLine = now_.substr(range.Begin, range.End - range.Begin).find(L'\n') == std::wstring::npos;
  if (range.Begin == range.End || isOneLine) return;
  Select(range);
  program_->Command(there);
  const bool isChanged = TextNow() != before_;
  if (isChanged || there == Mnu_Indenter) program_->Command(back);
  if (there != Mnu_Indenter) return ExpectSameText();
  // Blank lines are not indented, and what was indented before may lose two blanks of its own.
  Expect("other lines", [this](const std::wstring& now) {
    return std::count(now.begin(), now.end(), L'\n') == std::count(before_.begin(), before_.end(), L'\n');
  });
}

void ADayInTheLife::DuplicateLine() {
  const std::size_t end = SomeLineEnd();
  const std::size_t begin = end == 0 ? 0 : now_.rfind(L'\n', end - 1) + 1;
  const std::wstring line = now_.substr(begin, end - begin);
  if (line.empty()) return;
  Select({begin, begin});
  program_->Command(MenuId::Mnu_Dupliquer);
  ExpectReplaced({end, end}, L"\n" + line);
}

void ADayInTheLife::CutAndPaste() {
  const Range range = SomeRange();
  if (range.Begin == range.End) return;
  Select(range);
  program_->Command(MenuId::Mnu_Couper);
  std::wstring cut = before_;
  ExpectText(cut.erase(range.Begin, range.End - range.Begin));
  program_->Command(MenuId::Mnu_Coller);
  ExpectSameText();
}

void ADayInTheLife::CompleteAWord() {
  const std::size_t at = SomeLineEnd();
  Select({at, at});
  program_->Key(VK_ESCAPE);
  program_->Key(VK_RETURN);
  ExpectReplaced({at, at}, L"\n");
  const std::wstring opened = now_;
  program_->TypeIntoEditor("cerc");
  program_->Key(VK_TAB);
  // A line that goes on from the one before offers nothing, and Tab stands there.
  Expect("no completion", [&](const std::wstring& now) {
    const std::wstring_view line(now.data() + at + 1, std::min(now.find(L'\n', at + 1), now.size()) - at - 1);
    std::wstring rest = now;
    rest.erase(at + 1, line.size());
    return Essence(line).starts_with(L"cerc") && line.size() > 4 && Essence(rest) == Essence(opened);
  });
  program_->Key(VK_ESCAPE);
}

void ADayInTheLife::ExpectSaved(const char* file) {
  std::wstring written;
  try {
    Expect("a file that holds another text", [&](const std::wstring& now) {
      written = FileNow(file);
      return written == now;
    });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + ("\n--- in the file, under the title " + program_->Title() + "\n") +
                       Narrow(written) + "\n---");
  }
  saved_ = written;
  file_ = file;
}

void ADayInTheLife::Save() {
  if (file_.empty()) {
    PostAndSettle(MenuId::Mnu_EnregistrerS, [](const ShownDialog& box) {
      if (!box.IsFileDialog()) return Confirm(box);  // whether to write over the file
      return Name(box, File);
    });
    ExpectSaved(File);
  } else {
    program_->Command(MenuId::Mnu_EnregistrerS);
    ExpectSaved(file_.c_str());
  }
  ExpectSameText();
}

void ADayInTheLife::SaveInVain() {
  if (file_.empty()) return;
  const std::wstring name = (folder_.Path() / file_).wstring();
  const HANDLE held = CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (held == INVALID_HANDLE_VALUE) throw DriveFailure("the file cannot be held");
  int told = 0;
  PostAndSettle(MenuId::Mnu_EnregistrerS, [&](const ShownDialog& box) {
    ++told;
    return Leave(box);
  });
  CloseHandle(held);
  if (told == 0 && before_ != saved_) throw DriveFailure("a file that was held was saved in silence");
  ExpectSameText();
}

// The stick is drawn out, and put in again.
void ADayInTheLife::SaveWithoutFolder() {
  if (file_.empty()) return;
  const auto away = folder_.Path() / "away", name = folder_.Path() / file_;
  std::filesystem::rename(name, away);
  std::filesystem::create_directory(name);  // where the file was, nothing can be written
  PostAndSettle(MenuId::Mnu_EnregistrerS, Leave);
  std::filesystem::remove(name);
  std::filesystem::rename(away, name);
  ExpectSameText();
}

// Where scripts/day could make a small disk. What was saved before stays, whatever becomes of the rest.
void ADayInTheLife::SaveOnAFullDisk() {
  if (file_.empty() || Environment("VAXEL_DAY_SMALL_DISK").empty()) return;
  const auto rest = folder_.Path() / "rest";
  {
    std::ofstream filler(rest, std::ios::binary);
    const std::string much(1 << 16, 'x');
    while (filler.write(much.data(), static_cast<std::streamsize>(much.size())).flush()) continue;
  }
  int told = 0;
  PostAndSettle(MenuId::Mnu_EnregistrerS, [&](const ShownDialog& box) {
    ++told;
    return Leave(box);
  });
  std::filesystem::remove(rest);
  if (told == 0)
    ExpectSaved(file_.c_str());
  else
    ++refused_;
  ExpectSameText();
}

void ADayInTheLife::OpenTheOther() {
  OpenAnother(file_ == Other ? File : Other, [this] { program_->Post(MenuId::Mnu_Ouvrir); });
}

void ADayInTheLife::DropTheOther() {
  const std::string other = file_ == Other ? File : Other;
  OpenAnother(other, [&] { program_->Drop(folder_.NameOf(other)); });
}

void ADayInTheLife::NewScript() {
  PostAndSettle(MenuId::Mnu_Nouveau, Refuse);
  file_.clear();
  saved_ = before_ = L"' template\n";
  ExpectSameText();
}

void ADayInTheLife::RunIt() {
  PostAndSettle(Chance(70) ? MenuId::Mnu_Visualiser : MenuId::Mnu_RefCurseur, Confirm);
  ExpectSameText();
}

void ADayInTheLife::Look() {
  using enum MenuId;
  constexpr MenuId looks[] = {Mnu_Zoom,           Mnu_Ajuster,      Mnu_TailleReelle,
                              Mnu_PagePrecedente, Mnu_PageSuivante, Mnu_Syntaxe,
                              Mnu_ErreurSuivante, Mnu_Recolorer,    Mnu_CentreCurseur};
  PostAndSettle(OneOf(looks), Leave);
  ExpectSameText();
}

void ADayInTheLife::ToggleOptions() {
  using enum MenuId;
  constexpr MenuId options[] = {Mnu_DblClick, Mnu_DessinDirect, Mnu_AgrandirCode, Mnu_IniCode,
                                Mnu_Feuille,  Mnu_Regles,       Mnu_BarreOutils};
  PostAndSettle(OneOf(options), Confirm);
  ExpectSameText();
}

void ADayInTheLife::AskAndLeave() {
  using enum MenuId;
  constexpr MenuId asking[] = {Mnu_NouveauModele, Mnu_OuvrirMeter, Mnu_Enregistrer, Mnu_Exporter,
                               Mnu_Imprimante,    Mnu_Calibrage,   Mnu_Apercu,      Mnu_Chercher,
                               Mnu_AllerLigne,    Mnu_TaillCar,    Mnu_Patchs,      Mnu_Langue,
                               Mnu_Couleur,       Mnu_AProposDe};
  const MenuId item = OneOf(asking);
  // Who is asked whether to give up the text keeps it.
  PostAndSettle(item, Leave);
  ExpectSameText();
}

void ADayInTheLife::PrintIt() {
  PostAndSettle(MenuId::Mnu_Imprimer, Confirm);
  ExpectSameText();
}

void ADayInTheLife::MovePointerAbout() {
  const SIZE size = program_->GraphicSize();
  const int width = std::max(1L, size.cx), height = std::max(1L, size.cy);
  for (int move = 0; move < 5; ++move)
    program_->MovePointer(static_cast<int>(Below(static_cast<std::size_t>(width))),
                          static_cast<int>(Below(static_cast<std::size_t>(height))));
  if (Chance(30)) {
    const LPARAM place = MAKELPARAM(width / 2, height / 2);
    Send(program_->Control(GraphicId), WM_LBUTTONDOWN, MK_LBUTTON, place);
    Send(program_->Control(GraphicId), WM_LBUTTONUP, 0, place);
  }
  Settle({});
  ExpectSameText();
}

void ADayInTheLife::ResizeIt() {
  program_->Resize(300 + static_cast<int>(Below(1000)), 200 + static_cast<int>(Below(800)));
  ExpectSameText();
}

// What was typed more than a moment before the program died is there again; the copy that it writes every ten
// seconds is waited for.
void ADayInTheLife::KillAndComeBack() {
  if (!Chance(30)) return;  // in a long life what grows is seen
  const bool isUnsaved = program_->Title().starts_with("*");
  const std::string essence = Narrow(Essence(now_));
  if (isUnsaved) {
    Await(
        "a recovery copy of the text",
        [&] {
          for (const auto& copy : FilesIn(folder_.Path(), ".rec")) {
            const std::wstring bytes = WithoutCr(Widen(test::BytesOf(copy)));
            const std::size_t head = bytes.find(L'\n');
            if (head != std::wstring::npos && Narrow(Essence(bytes.substr(head + 1))) == essence) return true;
          }
          return false;
        },
        40s);
  }
  program_->Kill();
  ComeBack(isUnsaved);
}

// withCopy: the copy of a text that was not saved is offered, and taken; else it is left, where there is one.
void ADayInTheLife::ComeBack(bool withCopy) {
  program_.emplace(folder_);
  bool isOffered = false;
  Await("the window", [&] {
    if (const auto box = program_->ShownBox()) {
      isOffered = box->IsMessageBox();
      if (box->IsFileDialog())
        box->Answer(IDCANCEL);
      else
        box->Answer(!GetDlgItem(box->Window(), IDYES) ? IDOK : withCopy ? IDYES : IDNO);
    }
    return program_->Window() && !program_->IsBusy() && (isOffered || !withCopy);
  });
  Settle(Leave);
  if (!withCopy) {
    // Whichever file it opens by itself.
    const bool isOther = program_->Title().find(Other) != std::string::npos;
    file_ = isOther ? Other : File;
    saved_ = before_ = FileNow(file_);
  }
  ExpectSameText();
  started_ = act_;
  settled_ = {};
}

void ADayInTheLife::Live(int acts) {
  std::vector<int> weights;
  for (const Act& act : Acts) weights.push_back(act.Weight);
  std::discrete_distribution<std::size_t> which(weights.begin(), weights.end());
  constexpr std::size_t longest = 2000;  // more only makes everything slower
  for (act_ = 1; act_ <= acts; ++act_) {
    const Act& act = now_.size() > longest ? Acts[2] : Acts[which(random_)];
    before_ = now_;
    if (!Environment("VAXEL_DAY_TELL").empty()) {
      std::printf("%d %s\n", act_, act.Name);
      std::fflush(stdout);
    }
    try {
      (this->*act.Do)();
      now_ = TextNow();
      Check();
    } catch (const DriveFailure& failure) {
      throw DriveFailure("act " + std::to_string(act_) + ", " + act.Name + ": " + failure.what());
    }
    if (act_ % 500 == 0) {
      const ResourceCount use = program_->CountResources();
      std::printf("%d acts: %d handles, %d GDI objects, %d KB\n", act_, use.Handles, use.GdiObjects,
                  use.Kilobytes);
      std::fflush(stdout);
    }
  }
}

TEST_F(ADayInTheLife, DISABLED_KeepsEverything) {
  const std::string acts = Environment("VAXEL_DAY_ACTS"), seed = Environment("VAXEL_DAY_SEED");
  Begin(seed.empty() ? 1U : static_cast<unsigned>(std::stoul(seed)));
  Live(acts.empty() ? 300 : std::stoi(acts));
  std::printf("at most %d handles, %d GDI objects and %d KB more than after %d acts\n", most_.Handles,
              most_.GdiObjects, most_.Kilobytes, SettledAfter);
  std::printf("%d times the disk was full, %d times the edit control ended the program\n", refused_,
              assertions_);
  EXPECT_LE(most_.Handles, 40);
  EXPECT_LE(most_.GdiObjects, 60);
  EXPECT_LE(most_.Kilobytes, 200'000);
  program_->Close();
  for (int box = 0; box < 3 && !program_->HasEnded(); ++box) {
    std::this_thread::sleep_for(300ms);
    if (const auto shown = program_->ShownBox()) shown->Answer(IDNO);
  }
  EXPECT_EQ(program_->AwaitExit(), 0);
}

}  // namespace
}  // namespace vaxel
