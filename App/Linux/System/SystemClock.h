// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Platform/Clock.h"

#include <chrono>
#include <ctime>

namespace lumora {

/// The machine's clocks: the real-time clock and CLOCK_BOOTTIME.
class SystemClock final : public Clock {
 public:
  Date now() const override { return std::chrono::system_clock::now(); }

  Seconds sinceBoot() const override {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
  }
};

}  // namespace lumora
