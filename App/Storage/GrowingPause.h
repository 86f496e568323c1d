// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

namespace lumora {

/// When to retry what failed, with exponential backoff counted in occasions that come anyway: at
/// the next one, then at the second after that, the fourth, and so on up to every 64th. With a
/// refresh a minute that is about once an hour in the end.
class GrowingPause {
 public:
  /// Begins the pause after a failure; each is twice as long as the one before.
  void begin() {
    length_ = std::clamp(length_ * 2, 1, kLongest);
    left_ = length_;
  }

  /// It went well: no pause, and the next one is the first.
  void reset() { *this = {}; }

  /// Call it once on each occasion. True when the pause is over, and until the next one begins.
  bool isOver() {
    if (left_ > 0) --left_;
    return left_ == 0;
  }

 private:
  static constexpr int kLongest = 64;

  int length_ = 0;
  int left_ = 0;
};

}  // namespace lumora
