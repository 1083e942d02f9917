// Usage: time-processes ROUNDS <COMMANDS
//
// Times whole programs from before they are started until they have ended. A line of standard input is a
// name, a TAB and a command, its words separated by blanks. Every round starts each command once, in an order
// of its own, after a few rounds that do not count. Outputs go to /dev/null. Prints, for each command, the
// median and the least time in milliseconds and the ratio of its median to that of the first command.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int UncountedRounds = 3;

struct Command {
  std::string Name;
  std::vector<std::string> Words;
  std::vector<double> Times;  // ms
};

[[noreturn]] void Fail(const std::string& text) {
  std::cerr << "time-processes: " << text << '\n';
  std::exit(1);
}

std::vector<Command> ReadCommands(std::istream& in) {
  std::vector<Command> commands;
  for (std::string line; std::getline(in, line);) {
    Command command;
    std::istringstream text(line);
    std::getline(text, command.Name, '\t');
    for (std::string word; text >> word;) command.Words.push_back(word);
    if (command.Words.empty()) Fail("no command in the line: " + line);
    commands.push_back(command);
  }
  if (commands.empty()) Fail("no commands");
  return commands;
}

double Milliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double TimeOnce(const Command& command, const posix_spawn_file_actions_t& redirections) {
  std::vector<char*> arguments;
  for (const std::string& word : command.Words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const double start = Milliseconds();
  pid_t process = 0;
  if (posix_spawnp(&process, arguments[0], &redirections, nullptr, arguments.data(), environ) != 0) {
    Fail("cannot start " + command.Words[0]);
  }
  int status = 0;
  if (waitpid(process, &status, 0) != process || status != 0) Fail(command.Name + " failed");
  return Milliseconds() - start;
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  const std::size_t middle = times.size() / 2;
  return times.size() % 2 == 1 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
}

}  // namespace

int main(int count, char** arguments) {
  const int rounds = count == 2 ? std::atoi(arguments[1]) : 0;
  if (rounds < 1) Fail("usage: time-processes ROUNDS <COMMANDS");
  std::vector<Command> commands = ReadCommands(std::cin);

  posix_spawn_file_actions_t redirections;
  posix_spawn_file_actions_init(&redirections);
  for (int stream : {STDIN_FILENO, STDOUT_FILENO}) {
    posix_spawn_file_actions_addopen(&redirections, stream, "/dev/null", O_RDWR, 0);
  }

  std::mt19937 random(1);
  for (int round = -UncountedRounds; round < rounds; ++round) {
    // A program that has just run leaves the caches to the next one as it likes: no one follows always the
    // same.
    std::vector<Command*> order;
    for (Command& command : commands) order.push_back(&command);
    std::shuffle(order.begin(), order.end(), random);
    for (Command* command : order) {
      const double time = TimeOnce(*command, redirections);
      if (round >= 0) command->Times.push_back(time);
    }
  }
  posix_spawn_file_actions_destroy(&redirections);

  const double reference = Median(commands.front().Times);
  std::printf("%-28s %9s %9s %7s\n", "", "median ms", "min ms", "ratio");
  for (const Command& command : commands) {
    const double median = Median(command.Times);
    std::printf("%-28s %9.3f %9.3f %7.2f\n", command.Name.c_str(), median,
                *std::min_element(command.Times.begin(), command.Times.end()), median / reference);
  }
}
