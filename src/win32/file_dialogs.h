// The common dialogs for files.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/dialogs.h"

namespace vaxel {

enum class FilePurpose { Open, Save };

// Returns full names; there are none when the dialog was cancelled. The working folder stays what it was.
std::vector<std::wstring> ChooseFiles(HWND owner, const FileDialog& dialog, FilePurpose purpose);

// The names in what the dialogs return: one full name, or a folder and names in it, each ended by NUL, the
// list by another.
std::vector<std::wstring> NamesInBuffer(std::wstring_view buffer);

// A name that the dialogs take as their proposal: they refuse to open with one that no file can have.
std::wstring ProposedName(std::wstring_view name);

}  // namespace vaxel
