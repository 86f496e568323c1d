// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <optional>
#include <utility>

namespace lumora {

/// Notices that the wall clock was set: it went on by another time than the one since boot, which a
/// sleep does not do.
class ClockJumps {
 public:
  /// By how much it was set since the last look, forward or back; 0 where it was not. Less than
  /// five seconds are the network's corrections, and count as time that passed.
  Seconds look(Date now, Seconds sinceBoot) {
    const Date boot = now - sinceBoot;
    const Seconds jump = boot - std::exchange(boot_, boot).value_or(boot);
    return jump < kLeast && jump > -kLeast ? Seconds{0} : jump;
  }

 private:
  static constexpr Seconds kLeast{5};

  std::optional<Date> boot_;  ///< When the machine was started, as the clock has it.
};

}  // namespace lumora
