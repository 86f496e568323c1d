// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace lumora {

/// The main thread's loop. Everything given to it runs on the main thread.
class RunLoop {
 public:
  virtual ~RunLoop() = default;

  /// Runs `task` every `interval` for the life of the process, each time up to `tolerance` late so
  /// that the system can line wake-ups up.
  virtual void repeatEvery(std::chrono::seconds interval, std::chrono::seconds tolerance,
                           std::function<void()> task) = 0;

  /// Runs `task` once, `delay` from now.
  virtual void runAfter(std::chrono::milliseconds delay, std::function<void()> task) = 0;

  /// Runs `task` on the next turn of the loop. May be called from any thread.
  virtual void runSoon(std::function<void()> task) = 0;
};

}  // namespace lumora
