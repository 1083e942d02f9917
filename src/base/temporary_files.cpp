#include "base/temporary_files.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <new>
#include <system_error>
#include <thread>

#include "base/files.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vaxel {
namespace {

namespace fs = std::filesystem;

// A signal's handler reaches nothing but what lives as long as the program. It cannot wait for what it has
// broken into, so that signals are held wherever the list is changed.
struct Registry {
  std::atomic_flag IsLocked = ATOMIC_FLAG_INIT;
  std::list<fs::path> Files;
};

// It outlives every object, and every thread, and needs no memory to be made: a program that has run out of
// it may ask for it first.
Registry& AllFiles() {
  alignas(Registry) static std::array<std::byte, sizeof(Registry)> place;
  static auto* const registry = new (place.data()) Registry;
  return *registry;
}

class Locked {
 public:
  Locked() {
    while (AllFiles().IsLocked.test_and_set(std::memory_order_acquire)) std::this_thread::yield();
  }
  ~Locked() { AllFiles().IsLocked.clear(std::memory_order_release); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  SignalsHeld held_;
};

#ifdef _WIN32

std::FILE* MakeLike(const fs::path& path, const fs::path&) {
  return OpenFile(path, "wb");  // what may be done with it is inherited from the folder
}

#else

constexpr mode_t AllRights = 0777, GroupRights = 0070, OwnRights = 0700;

// Whoever may read the old file may read the new one, and nobody else, not even for a moment.
void TakeRights(int file, const struct stat& model) {
  struct stat made {};
  fstat(file, &made);
  const bool isOfGroup =
      made.st_gid == model.st_gid || fchown(file, static_cast<uid_t>(-1), model.st_gid) == 0;
  fchmod(file, model.st_mode & AllRights & ~(isOfGroup ? 0 : GroupRights));
}

std::FILE* MakeLike(const fs::path& path, const fs::path& model) {
  struct stat old {};
  const bool isThere = stat(model.c_str(), &old) == 0 && S_ISREG(old.st_mode);
  constexpr mode_t usual = 0666;  // less what the user's mask takes away
  const int file =
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, isThere ? old.st_mode & OwnRights : usual);
  if (file < 0) return nullptr;
  if (isThere) TakeRights(file, old);
  return fdopen(file, "wb");
}

#endif

}  // namespace

#ifdef _WIN32
SignalsHeld::SignalsHeld() = default;
SignalsHeld::~SignalsHeld() = default;
#else
SignalsHeld::SignalsHeld() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) sigaddset(&held, signal);
  pthread_sigmask(SIG_BLOCK, &held, &before_);
}

SignalsHeld::~SignalsHeld() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}
#endif

std::FILE* TemporaryFile::Make(const fs::path& path, const fs::path& model) {
  const Locked locked;
  entry_ = AllFiles().Files.insert(AllFiles().Files.end(), path);
  std::FILE* const file = MakeLike(path, model);
  if (file) {
    path_ = path;
  } else {
    const int why = errno;
    AllFiles().Files.erase(entry_);
    errno = why;
  }
  return file;
}

void TemporaryFile::Link(const fs::path& path, const fs::path& file) {
  const Locked locked;
  std::error_code error;
  const auto entry = AllFiles().Files.insert(AllFiles().Files.end(), path);
  fs::create_hard_link(file, path, error);
  if (error) {
    AllFiles().Files.erase(entry);
  } else {
    entry_ = entry;
    path_ = path;
  }
}

TemporaryFile::~TemporaryFile() {
  if (path_.empty()) return;
  const Locked locked;
  std::error_code ignored;
  fs::remove(path_, ignored);
  AllFiles().Files.erase(entry_);
}

std::error_code TemporaryFile::MoveTo(const fs::path& target) {
  const Locked locked;
  std::error_code error;
  fs::rename(path_, target, error);
  if (error) return error;
  AllFiles().Files.erase(entry_);
  path_.clear();
  return error;
}

void RemoveTemporaryFiles() {
  while (AllFiles().IsLocked.test_and_set(std::memory_order_acquire)) {
  }
  for (const fs::path& file : AllFiles().Files) {
#ifdef _WIN32
    _wunlink(file.c_str());
#else
    unlink(file.c_str());
#endif
  }
}

}  // namespace vaxel
