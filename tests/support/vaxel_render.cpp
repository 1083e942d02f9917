#include "tests/support/vaxel_render.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace vaxel::test {
namespace {

int StatusOf(int waited) {
  return WIFEXITED(waited) ? WEXITSTATUS(waited) : -1;
}

}  // namespace

VaxelRender::VaxelRender() {
  // Messages are in English, whoever runs the tests.
  setenv("LC_ALL", "C.UTF-8", 1);
  fs::remove_all(folder_);
  fs::create_directories(folder_);
}

VaxelRender::~VaxelRender() {
  fs::remove_all(folder_);
}

Outcome VaxelRender::Run(const std::string& arguments, const std::string& environment,
                         const fs::path& program) const {
  const std::string command = "cd '" + folder_.string() + "' && " + environment + " '" + program.string() +
                              "' " + arguments + " 2>&1";
  Outcome outcome;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> buffer{};
  while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe)) {
    outcome.Printed.append(buffer.data(), count);
  }
  outcome.Status = StatusOf(pclose(pipe));
  return outcome;
}

Outcome VaxelRender::RunOnTerminal(const std::string& arguments, const std::vector<Typing>& typed) const {
  // The program takes the place of the shell: what the terminal sends goes to it alone.
  const std::string command =
      "cd '" + folder_.string() + "' && exec '" + (Programs / "vaxel-render").string() + "' " + arguments;
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  Outcome outcome;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  auto next = typed.begin();
  for (bool isOpen = true; isOpen && std::chrono::steady_clock::now() < deadline;) {
    if (next != typed.end() && next->When(outcome.Printed)) {
      if (write(terminal, next->Keys.data(), next->Keys.size()) < 0) break;
      ++next;
    }
    pollfd ready{terminal, POLLIN, 0};
    if (poll(&ready, 1, 2) <= 0) continue;
    // The end of the program is a failure of the terminal.
    std::array<char, 4096> buffer{};
    const ssize_t count = read(terminal, buffer.data(), buffer.size());
    isOpen = count > 0;
    if (isOpen) outcome.Printed.append(buffer.data(), static_cast<std::size_t>(count));
  }
  if (std::chrono::steady_clock::now() >= deadline) kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  close(terminal);
  outcome.Status = StatusOf(status);
  return outcome;
}

int VaxelRender::Shell(const std::string& command) const {
  return std::system(("cd '" + folder_.string() + "' && { " + command + "; } >log 2>&1").c_str());
}

void VaxelRender::Write(const std::string& name, const std::string& contents) const {
  std::ofstream(folder_ / name, std::ios::binary) << contents;
}

std::string VaxelRender::Read(const std::string& name) const {
  std::ifstream file(folder_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t VaxelRender::FileCount() const {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

}  // namespace vaxel::test
