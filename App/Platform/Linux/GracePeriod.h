// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

#include <glibmm.h>

namespace lumora {

/// The time that a service which went away has to come back, before what it said last no longer
/// holds: it may just be restarting.
class GracePeriod : public sigc::trackable {
 public:
  explicit GracePeriod(std::function<void()> over) : over_(std::move(over)) {}
  GracePeriod(const GracePeriod&) = delete;
  GracePeriod& operator=(const GracePeriod&) = delete;
  ~GracePeriod() { timer_.disconnect(); }

  void begin() {
    constexpr unsigned kSeconds = 10;
    if (timer_.connected()) return;
    timer_ = Glib::signal_timeout().connect_seconds(
        sigc::bind_return(sigc::mem_fun(*this, &GracePeriod::end), false), kSeconds);
  }

  void cancel() { timer_.disconnect(); }

 private:
  void end() { over_(); }

  std::function<void()> over_;
  sigc::connection timer_;
};

}  // namespace lumora
