// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/HangWatch.h"

#include <system_error>
#include <utility>

namespace lumora {
namespace {

constexpr int kMostMissed = 3;

}  // namespace

HangWatch::HangWatch(RunLoop& runLoop, std::chrono::milliseconds tick, std::function<void()> hung)
    : runLoop_(runLoop), tick_(tick), hung_(std::move(hung)) {
  try {
    thread_ = std::thread([this] { watch(); });
  } catch (const std::system_error&) {
    // Then as before there was a watch.
  }
}

HangWatch::~HangWatch() {
  {
    const std::scoped_lock lock(asked_->mutex);
    isEnding_ = true;
  }
  ends_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void HangWatch::watch() {
  std::unique_lock lock(asked_->mutex);
  for (int missed = 0; missed < kMostMissed;) {
    if (ends_.wait_for(lock, tick_, [this] { return isEnding_; })) return;
    if (!std::exchange(asked_->answered, false)) {
      ++missed;
      continue;
    }
    missed = 0;
    lock.unlock();
    runLoop_.runSoon([asked = asked_] {
      const std::scoped_lock answering(asked->mutex);
      asked->answered = true;
    });
    lock.lock();
  }
  lock.unlock();
  hung_();
}

}  // namespace lumora
