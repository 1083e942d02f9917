// Stands in for the module of font libraries: as they do, it gives up, or falls, when it gets no memory.
#include <sys/resource.h>

#include <cstdlib>
#include <string_view>

extern "C" __attribute__((visibility("default"))) void* VaxelPango() {
  constexpr rlimit nothingMore{1, 1};
  const std::string_view how = std::getenv("VAXEL_TEST_FALL");
  if (how != "alone") setrlimit(RLIMIT_AS, &nothingMore);
  if (how == "abort") std::abort();
  int* volatile none = nullptr;
  *none = 1;
  return nullptr;
}
