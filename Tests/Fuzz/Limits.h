// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace lumora::test {

/// Begins to follow what is allocated. Call it once, before the first input.
void countMemory();

/// Measures one input from its making to its end, and ends the fuzzer where the input took more
/// than 50 ms of processor time, of all threads, or more than 64 MiB of memory at any moment. The
/// most that inputs took is printed in the end.
class Limits {
 public:
  Limits();
  Limits(const Limits&) = delete;
  Limits& operator=(const Limits&) = delete;
  ~Limits();

 private:
  std::int64_t startNanoseconds_;
};

}  // namespace lumora::test
