// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Base/Value.h"
#include "History/Sample.h"

#include <vector>

namespace lumora::test {

// A Tuesday, 14:13 in Berlin.
inline constexpr Date kNow = dateSince1970(1'795'525'980);
inline constexpr int kWeekMinutes = 7 * 24 * 60;

/// What a battery of two years says of itself while it discharges.
Dictionary onBattery();
/// What the system says of one that charges, with the time that it takes.
Dictionary charging();

/// A week as people have it: asleep at night and for a while by day, charged for up to three
/// hours in the evening.
std::vector<Sample> lifelikeWeek();

}  // namespace lumora::test
