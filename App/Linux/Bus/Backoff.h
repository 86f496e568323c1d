// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

#include <glibmm.h>

namespace lumora {

/// Retries what failed with exponential backoff: after 1, 2, 4 … seconds, and from then on every 64
/// seconds.
class Backoff : public sigc::trackable {
 public:
  explicit Backoff(std::function<void()> retry) : retry_(std::move(retry)) {}
  Backoff(const Backoff&) = delete;
  Backoff& operator=(const Backoff&) = delete;
  ~Backoff() { timer_.disconnect(); }

  /// It failed: `retry` runs after the pause, unless it is to run already.
  void failed();

  /// It went well, or nobody needs it any more: no retry, and the next pause is the first.
  void reset();

 private:
  bool onPauseOver();

  std::function<void()> retry_;
  sigc::connection timer_;
  unsigned pause_ = 1;  // seconds
};

}  // namespace lumora
