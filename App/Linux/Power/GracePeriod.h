// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include <glibmm.h>

namespace lumora {

/// A grace period: the time, ten seconds unless `begin` says otherwise, that a service or device
/// which went away has to come back in, because it may just be restarting.
class GracePeriod : public sigc::trackable {
 public:
  explicit GracePeriod(std::function<void()> over) : over_(std::move(over)) {}
  GracePeriod(const GracePeriod&) = delete;
  GracePeriod& operator=(const GracePeriod&) = delete;
  ~GracePeriod() { timer_.disconnect(); }

  /// `over` runs after `length`, unless the period is cancelled. One that runs goes on.
  void begin(std::chrono::seconds length = std::chrono::seconds(10)) {
    if (timer_.connected()) return;
    timer_ = Glib::signal_timeout().connect_seconds(
        sigc::bind_return(sigc::mem_fun(*this, &GracePeriod::end), false),
        static_cast<unsigned>(length.count()));
  }

  bool isRunning() const { return timer_.connected(); }

  /// What went away is back: `over` does not run.
  void cancel() { timer_.disconnect(); }

 private:
  void end() {
    timer_ = {};
    over_();
  }

  std::function<void()> over_;
  sigc::connection timer_;
};

}  // namespace lumora
