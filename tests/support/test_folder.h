#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace vaxel::test {

// Nothing when there is no such file.
std::string BytesOf(const std::filesystem::path& file);

// A folder of the running test: empty at first, and gone at last unless the test has failed.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // As the program shows it.
  std::string NameOf(const std::string& file) const;
  bool Has(const std::string& file) const;
  std::ptrdiff_t FileCount() const;
  std::string Read(const std::string& file) const;
  void Write(const std::string& file, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace vaxel::test
