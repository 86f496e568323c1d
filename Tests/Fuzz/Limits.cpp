// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Limits.h"

#include "Fuzzer.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>

#include <sanitizer/allocator_interface.h>

namespace lumora::test {
namespace {

constexpr std::int64_t kMostNanoseconds = 50'000'000;
constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;

std::atomic<std::int64_t> held{0};
std::atomic<std::int64_t> mostHeld{0};

void onMalloc(const volatile void* /*block*/, std::size_t size) {
  const std::int64_t now = held += static_cast<std::int64_t>(size);
  if (now > mostHeld) mostHeld = now;
}

void onFree(const volatile void* block) {
  held -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(const_cast<const void*>(block)));
}

std::int64_t processorNanoseconds() {
  std::timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// The most that any input took.
struct Most {
  std::int64_t nanoseconds = 0;
  std::int64_t bytes = 0;

  ~Most() {
    std::fprintf(stderr, "slowest input: %.2f ms\nlargest input: %.2f MiB\n",
                 static_cast<double>(nanoseconds) / 1e6, static_cast<double>(bytes) / (1 << 20));
  }
};

Most most;

}  // namespace

void countMemory() { __sanitizer_install_malloc_and_free_hooks(onMalloc, onFree); }

Limits::Limits() : startNanoseconds_(processorNanoseconds()) {
  held = 0;
  mostHeld = 0;
}

Limits::~Limits() {
  const std::int64_t nanoseconds = processorNanoseconds() - startNanoseconds_;
  most.nanoseconds = std::max(most.nanoseconds, nanoseconds);
  most.bytes = std::max<std::int64_t>(most.bytes, mostHeld);
  expect(nanoseconds <= kMostNanoseconds, "an input takes at most 50 ms");
  expect(mostHeld <= kMostBytes, "an input takes at most 64 MiB");
}

}  // namespace lumora::test
