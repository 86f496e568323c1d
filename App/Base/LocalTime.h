// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <cstdint>
#include <ctime>
#include <optional>

namespace lumora {

/// The calendar day and the time of day of `date` in the time zone in force now. Absent for a date
/// no calendar can hold.
std::optional<std::tm> localTime(Date date);

/// Minutes after local midnight, 0 to 1439, as the user's clock on the wall shows them at `date`:
/// hour times 60 plus minute, in the time zone in force now. 0 for a date no calendar can hold.
std::int64_t minutesAfterMidnight(Date date);

/// The first moment of the local calendar day that lies `days` after the day of `date` (before it
/// for a negative number), in the time zone in force now. It is not midnight where the clocks are
/// put forward at that hour. `date` itself when no calendar can hold the result.
Date startOfDay(Date date, std::int64_t days = 0);

/// The moment at which the clock on the wall shows `minutes` after midnight on the local calendar
/// day of `date`. A time that is skipped when the clocks are put forward moves on by the gap.
/// Absent outside 0 to 1439 and when no calendar can hold the result.
std::optional<Date> timeOfDay(Date date, std::int64_t minutes);

}  // namespace lumora
