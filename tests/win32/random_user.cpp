#include "tests/win32/random_user.h"

#include <algorithm>
#include <chrono>
#include <cwctype>
#include <initializer_list>
#include <thread>

#include "winbase/wide_text.h"

namespace vaxel {
namespace {

using namespace std::chrono_literals;

// The first of these buttons that a box has is pressed.
std::optional<int> FirstButton(const ShownDialog& box, std::initializer_list<int> ids) {
  for (const int id : ids) {
    if (GetDlgItem(box.Window(), id)) return id;
  }
  PostMessageW(box.Window(), WM_CLOSE, 0, 0);
  box.AwaitClosed();
  return 0;
}

}  // namespace

std::wstring WithoutCr(std::wstring text) {
  std::erase(text, L'\r');
  return text;
}

// What runs and leaving a line may change of a text is the same: the letters' case, and the comments that "?"
// writes.
std::wstring Essence(std::wstring_view text) {
  std::wstring essence;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(L'\n'), text.size());
    std::wstring_view line = text.substr(0, end);
    if (line.starts_with(L'?')) line = line.substr(0, line.find(L'\''));
    while (line.ends_with(L' ')) line.remove_suffix(1);
    for (const wchar_t unit : line) essence += static_cast<wchar_t>(std::towlower(unit));
    if (end < text.size()) essence += L'\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return essence;
}

std::optional<int> Leave(const ShownDialog& box) {
  return FirstButton(box, {IDCANCEL, IDNO, IDOK});
}

std::optional<int> Confirm(const ShownDialog& box) {
  return FirstButton(box, {IDOK, IDYES, IDCANCEL});
}

std::optional<int> Refuse(const ShownDialog& box) {
  return FirstButton(box, {IDNO, IDCANCEL, IDOK});
}

// It may ask back before it closes. Under Wine 8 the dialog crashes when it is answered twice.
std::optional<int> Name(const ShownDialog& box, const std::string& file) {
  box.AnswerFile(file);
  Await("the end of a file dialog", [&] { return !box.IsOpen() || !IsWindowEnabled(box.Window()); });
  return 0;
}

RandomUser::Range RandomUser::SomeRange() {
  std::size_t begin = Below(now_.size() + 1), end = std::min(now_.size(), begin + Below(30));
  return {begin, end};
}

std::size_t RandomUser::SomeLineEnd() {
  const std::size_t end = now_.find(L'\n', Below(now_.size() + 1));
  return std::min(end, now_.size());
}

void RandomUser::Expect(const char* what, const Wish& wish) {
  const auto end = std::chrono::steady_clock::now() + 15s;
  do {
    now_ = TextNow();
    if (wish(now_)) return;
    std::this_thread::sleep_for(10ms);
  } while (std::chrono::steady_clock::now() < end);
  throw DriveFailure(std::string(what) + "\n--- before\n" + Narrow(before_) + "\n--- now\n" + Narrow(now_) +
                     "\n---");
}

void RandomUser::ExpectText(const std::wstring& text) {
  const std::wstring essence = Essence(text);
  try {
    Expect("another text", [&](const std::wstring& now) { return Essence(now) == essence; });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + ("\n--- expected\n" + Narrow(text) + "\n---"));
  }
}

// A box of the program may come a little after the message that brings it.
void RandomUser::Settle(const Answer& answer) {
  for (int quiet = 0, boxes = 0; quiet < 3;) {
    std::this_thread::sleep_for(10ms);
    const auto box = program_->ShownBox();
    if (!box) {
      quiet = program_->IsBusy() ? 0 : quiet + 1;
      if (quiet > 0) Send(program_->Window(), WM_NULL);
      continue;
    }
    quiet = 0;
    const std::string said = box->IsMessageBox() ? box->Message() : box->Caption();
    const std::optional<int> pressed = answer ? answer(*box) : std::nullopt;
    if (!pressed || ++boxes > 20) throw DriveFailure("a box: " + said);
    if (*pressed != 0) box->Answer(*pressed);
  }
}

void RandomUser::SettleSoon(const Answer& answer) {
  std::this_thread::sleep_for(30ms);
  Settle(answer);
}

void RandomUser::PostAndSettle(MenuId item, const Answer& answer) {
  program_->Post(item);
  SettleSoon(answer);
}

void RandomUser::OpenAnother(const std::string& other, const std::function<void()>& start) {
  const bool keeps = Chance(50), gives = Chance(20);
  // What is saved is not asked about: whatever comes is about the run of the opened script.
  const bool isUnsaved = program_->Title().starts_with("*");
  bool isAsked = false, isNamed = false;
  start();
  SettleSoon([&](const ShownDialog& box) {
    if (isNamed) return Leave(box);  // the opened script is run
    if (!box.IsFileDialog()) {
      if (isAsked || !isUnsaved) return Leave(box);
      isAsked = true;
      return gives ? Leave(box) : keeps && !file_.empty() ? Confirm(box) : Refuse(box);
    }
    isNamed = true;
    return Name(box, other);
  });
  if (!isAsked && before_ != saved_) throw DriveFailure("an unsaved text was given up unasked");
  if (isAsked && gives) return ExpectSameText();
  if (isAsked && keeps && !file_.empty() && FileNow(file_) != before_)
    throw DriveFailure("the text was not saved before another was opened");
  file_ = other;
  saved_ = FileNow(other);
  before_ = saved_;
  ExpectSameText();
}

void RandomUser::ExpectReplaced(Range range, std::wstring_view by) {
  std::wstring expected = now_;
  ExpectText(expected.replace(range.Begin, range.End - range.Begin, by));
}

void RandomUser::Begin(unsigned seed) {
  random_.seed(seed);
  folder_.Write(Other, "' other\r\nTrait = 0, 0, 5, 5\r\n");
  folder_.Write("inc.dat", "Cercle = 0, 0, 3\r\n");
  folder_.Write("Vaxel.DaN", "' template\r\n");
  StartWith("Trait = 0, 0, 10, 10\r\n' é two\r\n%A = 3\r\n");
  now_ = before_ = TextNow();
  saved_ = FileNow(File);
}

void RandomUser::Check() {
  if (program_->HasEnded()) throw DriveFailure("the program has ended");
  if (const auto box = program_->ShownBox()) throw DriveFailure("a box is left: " + box->Caption());
  const bool isMarked = program_->Title().starts_with("*");
  if (!isMarked && now_ != saved_) {
    throw DriveFailure("no mark on an unsaved text\n--- saved\n" + Narrow(saved_) + "\n--- now\n" +
                       Narrow(now_));
  }
  if (!file_.empty() && FileNow(file_) != saved_) throw DriveFailure("the file was changed unasked");
  const ResourceCount use = program_->CountResources();
  if (act_ - started_ == SettledAfter) settled_ = use;
  if (act_ - started_ <= SettledAfter) return;
  most_.Handles = std::max(most_.Handles, use.Handles - settled_.Handles);
  most_.GdiObjects = std::max(most_.GdiObjects, use.GdiObjects - settled_.GdiObjects);
  most_.Kilobytes = std::max(most_.Kilobytes, use.Kilobytes - settled_.Kilobytes);
}

}  // namespace vaxel
