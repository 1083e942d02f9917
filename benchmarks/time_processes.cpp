// Usage: time-processes ROUNDS <COMMANDS
//
// Times whole programs from before they are started until they have ended. A line of standard input is a
// name, a TAB and a command, its words separated by blanks; behind another TAB may follow a command whose
// time is taken off, such as the same program with nothing to do. Every round starts each command once, in an
// order of its own, after a few rounds that do not count. Outputs go to /dev/null. Prints, for each command,
// the median and the least time in milliseconds, less those of the command behind it, the median of what was
// taken off where anything was, and the ratio of its median to that of the first command.
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
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int UncountedRounds = 3;

struct Command {
  std::vector<std::string> Words;
  std::vector<double> Times{};  // ms
};

struct Row {
  std::string Name;
  Command Work, StartUp;  // without words when nothing is taken off
};

[[noreturn]] void Fail(const std::string& text) {
  std::cerr << "time-processes: " << text << '\n';
  std::exit(1);
}

std::vector<std::string> WordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<Row> ReadRows(std::istream& in) {
  std::vector<Row> rows;
  for (std::string line; std::getline(in, line);) {
    std::istringstream text(line);
    std::string name, work, startUp;
    std::getline(text, name, '\t');
    std::getline(text, work, '\t');
    std::getline(text, startUp);
    rows.push_back({name, {WordsOf(work)}, {WordsOf(startUp)}});
    if (rows.back().Work.Words.empty()) Fail("no command in the line: " + line);
  }
  if (rows.empty()) Fail("no commands");
  return rows;
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
  if (waitpid(process, &status, 0) != process || status != 0) Fail(command.Words[0] + " failed");
  return Milliseconds() - start;
}

// Both are 0 of no times.
double Least(const std::vector<double>& times) {
  return times.empty() ? 0 : *std::min_element(times.begin(), times.end());
}

double Median(std::vector<double> times) {
  if (times.empty()) return 0;
  std::sort(times.begin(), times.end());
  const std::size_t middle = times.size() / 2;
  return times.size() % 2 == 1 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
}

}  // namespace

int main(int count, char** arguments) {
  const int rounds = count == 2 ? std::atoi(arguments[1]) : 0;
  if (rounds < 1) Fail("usage: time-processes ROUNDS <COMMANDS");
  std::vector<Row> rows = ReadRows(std::cin);
  std::vector<Command*> order;
  bool takesOff = false;
  for (Row& row : rows) {
    order.push_back(&row.Work);
    if (row.StartUp.Words.empty()) continue;
    order.push_back(&row.StartUp);
    takesOff = true;
  }

  posix_spawn_file_actions_t redirections;
  posix_spawn_file_actions_init(&redirections);
  for (int stream : {STDIN_FILENO, STDOUT_FILENO}) {
    posix_spawn_file_actions_addopen(&redirections, stream, "/dev/null", O_RDWR, 0);
  }

  std::mt19937 random(1);
  for (int round = -UncountedRounds; round < rounds; ++round) {
    // A program that has just run leaves the caches to the next one as it likes: no one follows always the
    // same.
    std::shuffle(order.begin(), order.end(), random);
    for (Command* command : order) {
      const double time = TimeOnce(*command, redirections);
      if (round >= 0) command->Times.push_back(time);
    }
  }
  posix_spawn_file_actions_destroy(&redirections);

  const auto median = [](const Row& row) { return Median(row.Work.Times) - Median(row.StartUp.Times); };
  const double reference = median(rows.front());
  std::printf("%-28s %9s %9s %s%7s\n", "", "median ms", "min ms", takesOff ? " start-up " : "", "ratio");
  for (const Row& row : rows) {
    std::printf("%-28s %9.3f %9.3f ", row.Name.c_str(), median(row),
                Least(row.Work.Times) - Least(row.StartUp.Times));
    if (takesOff) std::printf("%9.3f ", Median(row.StartUp.Times));
    std::printf("%7.2f\n", median(row) / reference);
  }
}
