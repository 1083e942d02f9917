#include "winbase/wide_text.h"

#include <windows.h>

#include <cstddef>

namespace vaxel {

std::wstring Widen(std::string_view text) {
  const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(count), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), count);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int count = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(count), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), count, nullptr, nullptr);
  return text;
}

}  // namespace vaxel
