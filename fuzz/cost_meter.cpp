#include "fuzz/cost_meter.h"

#include <time.h>

#include <algorithm>
#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define VAXEL_COUNTS_MEMORY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VAXEL_COUNTS_MEMORY
#endif
#endif

#ifdef VAXEL_COUNTS_MEMORY
// Debian's GCC has these functions, but not their header.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                              void (*released)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}
#endif

namespace vaxel::fuzz {
namespace {

bool isCounting = false;
std::int64_t heldBytes = 0, mostBytes = 0;

#ifdef VAXEL_COUNTS_MEMORY
void CountAllocation(const volatile void* /*block*/, std::size_t size) {
  if (isCounting) mostBytes = std::max(mostBytes, heldBytes += static_cast<std::int64_t>(size));
}

void CountRelease(const volatile void* block) {
  if (isCounting && block) heldBytes -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(block));
}
#endif

void CountFromNow() {
#ifdef VAXEL_COUNTS_MEMORY
  static const int installed = __sanitizer_install_malloc_and_free_hooks(CountAllocation, CountRelease);
  isCounting = installed > 0;
#endif
  heldBytes = mostBytes = 0;
}

double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

}  // namespace

CostMeter::CostMeter() {
  CountFromNow();
  start_ = ProcessorSeconds();
}

CostMeter::~CostMeter() {
  isCounting = false;
}

double CostMeter::Seconds() const {
  return ProcessorSeconds() - start_;
}

std::size_t CostMeter::PeakBytes() const {
  return static_cast<std::size_t>(mostBytes);
}

}  // namespace vaxel::fuzz
