// Writes behind what it was given, so that scripts/heap-check can see that this would be noticed.
#include <memory>

int main() {
  const auto given = std::make_unique<char[]>(40);
  volatile char* behind = given.get() + 40;
  behind[0] = 'x';
}
