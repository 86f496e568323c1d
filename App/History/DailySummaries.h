// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "History/DaySummary.h"
#include "History/Sample.h"

#include <span>
#include <vector>

namespace lumora {

/// One summary for each local calendar day that has samples, newest first. A sample counts for the
/// time until the next one, wholly on its own day; not at all before a gap of more than 15 minutes
/// or at the end.
std::vector<DaySummary> summarizeDays(std::span<const Sample> samples);

}  // namespace lumora
