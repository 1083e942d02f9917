// The settings' file when the program that writes it is ended at any moment, or the disk is full.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include "app/configuration.h"
#include "tests/support/test_folder.h"

namespace vaxel {
namespace {

constexpr int KillCount = 200;

class ConfigurationCrash : public testing::Test {
 protected:
  ConfigurationCrash() { folder_.Write("Vaxel.cfg", WholeFile(0)); }

  // As the n-th update leaves it; long enough to be written in several pieces.
  static std::string WholeFile(long n) {
    std::string text =
        "'Fichier de configuration du Programme Vaxel V1\r\nPlace = " + std::to_string(n) + "\r\n";
    for (int i = 0; i < 400; ++i) text += "Line " + std::to_string(i) + " that is none of ours\r\n";
    return text + "FichierDat = " + std::to_string(n) + "\r\n";
  }
  Result<> Update(long n) {
    const std::string number = std::to_string(n);
    return file_.WriteKeys({OwnLine("Place", number), {std::string(ScriptKey), " " + number}});
  }
  std::string Bytes() const { return folder_.Read("Vaxel.cfg"); }
  // A process of its own, which must be waited for; it ends without the clean-up of this one.
  static pid_t Start(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    return child;
  }

  const test::TestFolder folder_;
  ConfigurationFile file_{folder_.Path().string(), "1", true};
};

TEST_F(ConfigurationCrash, LeavesTheOldFileOrTheNewOne) {
  std::minstd_rand random(20);
  std::uniform_int_distribution<useconds_t> microseconds(0, 20000);
  long last = 0;
  int duringUpdate = 0;
  for (int kill = 0; kill < KillCount; ++kill) {
    const pid_t child = Start([&] {
      for (long n = last + 1; Update(n); ++n) continue;
      return 1;
    });
    ASSERT_GT(child, 0);
    usleep(microseconds(random));
    ::kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "an update has failed";
    if (folder_.Has("Vaxe$cfg.old")) ++duringUpdate;

    const auto reading = file_.Read({});
    ASSERT_FALSE(reading.Problem);
    const long now = std::stol("0" + reading.Settings.CurrentFile);
    ASSERT_GE(now, last);
    ASSERT_TRUE(Bytes() == WholeFile(now)) << "after " << kill << " kills, update " << now;
    last = now;
  }
  // Else the moments were not those that matter.
  EXPECT_GT(last, 0);
  EXPECT_GT(duringUpdate, 0);
}

TEST_F(ConfigurationCrash, AFullDiskLeavesTheOldFile) {
  const std::size_t size = WholeFile(0).size();
  // Too little for the copy, for the new file, and enough for both.
  for (const auto& [limit, isWritten] : {std::pair{size / 2, false}, {size, false}, {size + 2, true}}) {
    const pid_t child = Start([&, most = limit] {
      std::signal(SIGXFSZ, SIG_IGN);
      const rlimit bytes{most, most};
      setrlimit(RLIMIT_FSIZE, &bytes);
      return Update(10) ? 0 : 1;
    });
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), isWritten ? 0 : 1) << limit;
    EXPECT_TRUE(Bytes() == WholeFile(isWritten ? 10 : 0)) << limit;
    EXPECT_EQ(folder_.FileCount(), 1);
  }
}

}  // namespace
}  // namespace vaxel
