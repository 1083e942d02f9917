#include "benchmarks/heap_meter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

bool counting = false;
std::ptrdiff_t held = 0;
std::ptrdiff_t peak = 0;

std::ptrdiff_t BlockSize(void* block) {
  return static_cast<std::ptrdiff_t>(malloc_usable_size(block) + sizeof(std::size_t));
}

void* Allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (!block) throw std::bad_alloc();
  if (counting) {
    held += BlockSize(block);
    peak = std::max(peak, held);
  }
  return block;
}

void Release(void* block) noexcept {
  if (counting && block) held -= BlockSize(block);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size);
}
void* operator new[](std::size_t size) {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  Release(block);
}
void operator delete[](void* block) noexcept {
  Release(block);
}
void operator delete(void* block, std::size_t) noexcept {
  Release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  Release(block);
}

namespace vaxel {

HeapMeter::HeapMeter() {
  held = peak = 0;
  counting = true;
}

HeapMeter::~HeapMeter() {
  counting = false;
}

double HeapMeter::Held() const {
  return static_cast<double>(held);
}

double HeapMeter::Peak() const {
  return static_cast<double>(peak);
}

}  // namespace vaxel
