#include "win32/file_dialogs.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <cstddef>

#include "win32/wide_text.h"

namespace vaxel {
namespace {

constexpr std::size_t OneName = 32768, ManyNames = 65536, MostCharacters = 1 << 22;

// The flag that should do this does not for opening.
class KeptFolder {
 public:
  KeptFolder() : folder_(GetCurrentDirectoryW(0, nullptr), L'\0') {
    GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data());
  }
  ~KeptFolder() { SetCurrentDirectoryW(folder_.c_str()); }
  KeptFolder(const KeptFolder&) = delete;
  KeptFolder& operator=(const KeptFolder&) = delete;

 private:
  std::wstring folder_;
};

// Each description and pattern is ended by NUL, the list by another one.
std::wstring FilterList(const std::string& filter) {
  std::wstring list = Wide(filter);
  if (list.empty()) return list;
  if (!list.ends_with(L'|')) list += L'|';
  std::replace(list.begin(), list.end(), L'|', L'\0');
  return list += L'\0';
}

std::wstring FolderName(const std::string& folder) {
  std::wstring name = Wide(folder);
  std::replace(name.begin(), name.end(), L'/', L'\\');
  return name;
}

}  // namespace

std::vector<std::wstring> NamesInBuffer(std::wstring_view buffer) {
  std::vector<std::wstring> names;
  while (!buffer.empty() && buffer.front() != L'\0') {
    const std::size_t end = std::min(buffer.find(L'\0'), buffer.size());
    names.emplace_back(buffer.substr(0, end));
    buffer.remove_prefix(std::min(end + 1, buffer.size()));
  }
  if (names.size() < 2) return names;
  std::wstring folder = names.front();
  if (!folder.ends_with(L'\\')) folder += L'\\';
  names.erase(names.begin());
  for (std::wstring& name : names) name.insert(0, folder);
  return names;
}

std::wstring ProposedName(std::wstring_view name) {
  constexpr std::size_t longest = 200;
  constexpr std::wstring_view refused = L"<>:\"/\\|?*";
  std::wstring proposed;
  for (const wchar_t c : name.substr(0, longest)) {
    proposed += c < L' ' || refused.find(c) != std::wstring_view::npos ? L'_' : c;
  }
  while (proposed.ends_with(L'.') || proposed.ends_with(L' ')) proposed.pop_back();
  return proposed;
}

std::vector<std::wstring> ChooseFiles(HWND owner, const FileDialog& dialog, FilePurpose purpose) {
  const std::wstring filter = FilterList(dialog.Filter), folder = FolderName(dialog.Folder);
  const std::wstring extension = Wide(dialog.DefaultExtension);
  std::wstring proposed = ProposedName(Wide(dialog.FileName));
  std::size_t size = dialog.Flags & MultipleSelection ? ManyNames : OneName;
  const KeptFolder kept;
  while (true) {
    std::wstring buffer = proposed;
    buffer.resize(size);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof(request);
    request.hwndOwner = owner;
    request.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
    request.nFilterIndex = 1;
    request.lpstrFile = buffer.data();
    request.nMaxFile = static_cast<DWORD>(buffer.size());
    request.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    request.Flags = dialog.Flags | OFN_NOCHANGEDIR | OFN_EXPLORER | OFN_LONGNAMES;
    if (purpose == FilePurpose::Open ? GetOpenFileNameW(&request) : GetSaveFileNameW(&request)) {
      return NamesInBuffer(buffer);
    }
    // The dialog has gone by now: what was chosen must be chosen again.
    const DWORD error = CommDlgExtendedError();
    if (error == FNERR_BUFFERTOOSMALL && size < MostCharacters) {
      size *= 8;
    } else if (error == FNERR_INVALIDFILENAME && !proposed.empty()) {
      proposed.clear();
    } else {
      return {};
    }
  }
}

}  // namespace vaxel
