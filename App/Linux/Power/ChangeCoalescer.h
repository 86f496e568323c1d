// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

#include <glibmm.h>

namespace lumora {

/// Debounces: coalesces a burst of changes into one call, 100 to 200 ms after the last of them, and
/// once every 1.5 s during a burst that does not end.
class ChangeCoalescer : public sigc::trackable {
 public:
  explicit ChangeCoalescer(std::function<void()> settled);
  ChangeCoalescer(const ChangeCoalescer&) = delete;
  ChangeCoalescer& operator=(const ChangeCoalescer&) = delete;
  ~ChangeCoalescer();

  /// One more change of the burst.
  void changed();

 private:
  using Clock = std::chrono::steady_clock;

  bool onTimeout();

  std::function<void()> settled_;
  Clock::time_point first_;
  Clock::time_point last_;
  sigc::connection timer_;
};

}  // namespace lumora
