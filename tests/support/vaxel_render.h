// The program vaxel-render in a folder of the test's own, with messages in English.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vaxel::test {

namespace fs = std::filesystem;

inline const fs::path Programs = fs::path(VAXEL_BINARY_DIR) / "bin";

struct Outcome {
  int Status = -1;      // -1: a signal has ended it
  std::string Printed;  // standard output and error
};

// What is typed on a terminal, once the time for it has come.
struct Typing {
  std::function<bool(const std::string& printed)> When;
  std::string Keys;
};

class VaxelRender : public testing::Test {
 protected:
  VaxelRender();
  ~VaxelRender() override;

  // Runs the program in the test's folder; arguments as a shell reads them.
  Outcome Run(const std::string& arguments, const std::string& environment = "",
              const fs::path& program = Programs / "vaxel-render") const;
  // The same on a terminal. A program that does not end in time is ended by a signal.
  Outcome RunOnTerminal(const std::string& arguments, const std::vector<Typing>& typed) const;
  // The exit status of a command in the test's folder.
  int Shell(const std::string& command) const;

  void Write(const std::string& name, const std::string& contents) const;
  std::string Read(const std::string& name) const;
  std::size_t FileCount() const;

  const fs::path folder_ =
      fs::path(VAXEL_BINARY_DIR) / "cli-test" / testing::UnitTest::GetInstance()->current_test_info()->name();
};

}  // namespace vaxel::test
