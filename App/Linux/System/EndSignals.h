// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace lumora {

/// SIGINT, SIGTERM and SIGHUP, by which a session ends its programs. There is one of these in the
/// process, for its life.
class EndSignals {
 public:
  /// `end` is called on the main loop after one of them came.
  explicit EndSignals(std::function<void()> end);
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  /// Where the main loop no longer runs: waits that long for one of them, and tells whether one
  /// came that `end` was not called for. From then on each ends the process at once.
  bool lastCame(std::chrono::milliseconds patience) const;

 private:
  std::function<void()> end_;
};

}  // namespace lumora
