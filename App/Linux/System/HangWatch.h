// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RunLoop.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace lumora {

/// A watchdog: notices when the main loop no longer turns because a library waits for something
/// that never comes. It asks once a tick, and gives up after the third tick in a row without an
/// answer; time in which the whole process stood still does not count.
class HangWatch {
 public:
  /// `hung` runs on the watch's own thread, once. `runLoop` must outlive this. Where no thread can
  /// be had nobody watches.
  HangWatch(RunLoop& runLoop, std::chrono::milliseconds tick, std::function<void()> hung);
  HangWatch(const HangWatch&) = delete;
  HangWatch& operator=(const HangWatch&) = delete;
  ~HangWatch();

 private:
  struct Asked {
    std::mutex mutex;
    bool answered = true;
  };

  void watch();

  RunLoop& runLoop_;
  std::chrono::milliseconds tick_;
  std::function<void()> hung_;
  // An answer may come after our end.
  std::shared_ptr<Asked> asked_ = std::make_shared<Asked>();
  std::condition_variable ends_;
  bool isEnding_ = false;
  std::thread thread_;
};

}  // namespace lumora
