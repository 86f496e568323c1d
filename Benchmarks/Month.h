// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "History/Sample.h"

#include <vector>

namespace lumora::benchmark {

/// As many samples as thirty days hold, one a minute, the last one at `end`: the battery goes up
/// and down twice a day.
std::vector<Sample> monthOfSamples(Date end);

}  // namespace lumora::benchmark
