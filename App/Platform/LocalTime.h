// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Date.h"

#include <cstdint>

namespace lumora {

/// Minutes after local midnight, 0 to 1439, as the user's clock on the wall shows them at `date`:
/// hour times 60 plus minute, in the time zone in force now. 0 for a date no calendar can hold.
std::int64_t minutesAfterMidnight(Date date);

}  // namespace lumora
