#include "app/script_file.h"

#include <functional>
#include <utility>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text.h"

namespace vaxel {
namespace {

std::string WithCrLf(std::string_view text) {
  std::string lines;
  lines.reserve(text.size() + text.size() / 32);
  for (char c : text) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  return lines;
}

}  // namespace

ScriptFile LoadScript(std::string_view fileName) {
  using Outcome = ScriptFile::Outcome;
  ScriptFile script;
  FileContent content = ReadWholeFile(fileName, MaxScriptBytes);
  if (content.Status != FileStatus::Read) {
    script.Result = content.Status == FileStatus::TooLarge ? Outcome::TooLarge : Outcome::Unreadable;
    script.Reason = std::move(content.Reason);
    return script;
  }
  script.Hash = std::hash<std::string>()(content.Bytes);
  auto decoded = DecodeText(std::move(content.Bytes));
  if (!decoded) {
    script.Result = Outcome::NoText;
    return script;
  }
  script.Text = NormaliseLineEnds(std::move(decoded->Text));
  script.Encoding = decoded->Encoding;
  return script;
}

std::string SaveScript(const std::string& fileName, std::string_view text, TextEncoding& encoding,
                       std::size_t& hash) {
  const EncodedText encoded = EncodeText(WithCrLf(text), encoding);
  OutputFile file(fileName);
  file.Write(encoded.Bytes);
  std::string error = file.Commit();
  if (!error.empty()) return error;
  hash = std::hash<std::string>()(encoded.Bytes);
  encoding = encoded.Encoding;
  return {};
}

bool HasChangedOnDisk(std::string_view fileName, std::size_t hash) {
  const FileContent content = ReadWholeFile(fileName, MaxScriptBytes);
  // One that is not there any more is nothing that saving could destroy.
  if (content.Status == FileStatus::Unreadable) return false;
  return content.Status == FileStatus::TooLarge || std::hash<std::string>()(content.Bytes) != hash;
}

std::string_view FolderOf(std::string_view fileName) {
  const std::size_t slash = fileName.find_last_of("/\\");
  return slash == std::string_view::npos ? std::string_view() : fileName.substr(0, slash + 1);
}

std::string_view NameWithoutFolder(std::string_view fileName) {
  return fileName.substr(FolderOf(fileName).size());
}

std::string DocumentNameOf(std::string_view fileName) {
  const std::string_view name = NameWithoutFolder(fileName);
  return std::string(name.substr(0, name.rfind('.')));
}

bool IsMeterFile(std::string_view fileName) {
  return UpperCase(fileName).ends_with(".MTR");
}

}  // namespace vaxel
