#include "app/script_file.h"

#include <utility>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text.h"
#include "resources/text_id.h"

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

std::uint64_t HashOf(std::string_view bytes) {
  constexpr std::uint64_t basis = 0xCBF29CE484222325, prime = 0x100000001B3;
  std::uint64_t hash = basis;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
  return hash;
}

Result<ScriptFile> LoadScript(std::string_view fileName) {
  Result<std::string> bytes = ReadWholeFile(fileName, MaxScriptBytes);
  if (!bytes) return bytes.Why();
  const std::uint64_t hash = HashOf(*bytes);
  auto decoded = DecodeText(*std::move(bytes));
  if (!decoded) return Failure{TextId::ScriptNotAText, std::string(fileName)};
  return ScriptFile{NormaliseLineEnds(std::move(decoded->Text)), {decoded->Encoding, hash}};
}

Result<ScriptBytes> SaveScript(const std::string& fileName, std::string_view text, TextEncoding encoding) {
  const EncodedText encoded = EncodeText(WithCrLf(text), encoding);
  OutputFile file(fileName);
  file.Write(encoded.Bytes);
  if (const Result<> committed = file.Commit(); !committed) return committed.Why();
  return ScriptBytes{encoded.Encoding, HashOf(encoded.Bytes)};
}

bool HasChangedOnDisk(std::string_view fileName, std::uint64_t hash) {
  const Result<std::string> bytes = ReadWholeFile(fileName, MaxScriptBytes);
  // One that is not there any more is nothing that saving could destroy.
  return bytes ? HashOf(*bytes) != hash : bytes.Why().Fault == FileFault::IsTooLarge;
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
