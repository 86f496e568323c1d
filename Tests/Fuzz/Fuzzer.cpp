// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzer.h"

#include "Limits.h"

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <giomm.h>

namespace lumora::test {

void expect(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "Broken: %s\n", rule);
  std::abort();
}

}  // namespace lumora::test

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // A zone with summer time.
  setenv("TZ", "Europe/Berlin", 1);
  Gio::init();
  // A warning of a library is a mistake of ours.
  g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
  // It ends with a signal that would not keep the input.
  std::signal(SIGTRAP, [](int) { std::abort(); });
  lumora::test::countMemory();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const lumora::test::Limits limits;
  lumora::test::fuzz({reinterpret_cast<const char*>(data), size});
  return 0;
}
