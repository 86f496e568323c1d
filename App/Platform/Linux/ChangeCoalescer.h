// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

#include <glibmm.h>

namespace lumora {

/// Makes one call of a burst of changes: when it has been quiet for a moment, and during a burst
/// that does not end, every so often.
class ChangeCoalescer : public sigc::trackable {
 public:
  explicit ChangeCoalescer(std::function<void()> settled);
  ChangeCoalescer(const ChangeCoalescer&) = delete;
  ChangeCoalescer& operator=(const ChangeCoalescer&) = delete;
  ~ChangeCoalescer();

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
