// Usage: run-script FILE
//
// Runs a script into a display list and writes nothing: what of vaxel-render's time is the script's own.
#include <cstdio>
#include <utility>

#include "benchmarks/script_lines.h"
#include "drawing/display_list.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: run-script FILE\n", stderr);
    return 2;
  }
  vaxel::DisplayList list;
  vaxel::RunInto(list, vaxel::ReadScript(arguments[1]));
}
