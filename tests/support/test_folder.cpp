#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/files.h"

namespace vaxel::test {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TestFolder::TestFolder() {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(test.test_suite_name()) + "." + test.name();
  std::replace(name.begin(), name.end(), '/', '.');
  path_ = fs::path(VAXEL_BINARY_DIR) / "test-folders" / name;
  fs::remove_all(path_);
  fs::create_directories(path_);
  path_ = fs::canonical(path_);
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  if (!testing::Test::HasFailure()) fs::remove_all(path_, ignored);
}

std::string TestFolder::NameOf(const std::string& file) const {
  return vaxel::NameOf((path_ / PathOf(file)).make_preferred());
}

bool TestFolder::Has(const std::string& file) const {
  return fs::exists(path_ / PathOf(file));
}

std::ptrdiff_t TestFolder::FileCount() const {
  return std::distance(fs::directory_iterator(path_), fs::directory_iterator());
}

std::string TestFolder::Read(const std::string& file) const {
  return BytesOf(path_ / PathOf(file));
}

void TestFolder::Write(const std::string& file, std::string_view bytes) const {
  std::ofstream(path_ / PathOf(file), std::ios::binary) << bytes;
}

}  // namespace vaxel::test
