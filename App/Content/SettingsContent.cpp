// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/SettingsContent.h"

#include "Base/LocalTime.h"

#include <algorithm>

namespace lumora {

std::int64_t StepRange::nearest(std::int64_t value) const { return std::clamp(value, least, most); }

std::int64_t StepRange::stepBy(std::int64_t value, std::int64_t steps) const {
  if (steps > 0 ? !canStepUp(value) : !canStepDown(value)) return value;
  return value == nearest(value) ? nearest(value + steps) : nearest(value);
}

std::int64_t shownMinutes(std::int64_t stored, Date now) {
  return minutesAfterMidnight(timeOfDay(now, stored).value_or(now));
}

}  // namespace lumora
