// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SettingsContent.h"

#include "Platform/LocalTime.h"

#include <algorithm>

namespace lumora {

std::int64_t StepRange::nearest(std::int64_t value) const { return std::clamp(value, least, most); }

std::int64_t StepRange::stepUp(std::int64_t value) const {
  return canStepUp(value) ? nearest(value + 1) : value;
}

std::int64_t StepRange::stepDown(std::int64_t value) const {
  return canStepDown(value) ? nearest(value - 1) : value;
}

std::int64_t shownMinutes(std::int64_t stored, Date now) {
  return minutesAfterMidnight(timeOfDay(now, stored).value_or(now));
}

}  // namespace lumora
