// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Date.h"

#include <string>

namespace lumora {

/// The time of day as the user's locale writes it, without seconds: "14:35" or "2:35 PM". "" for a
/// moment no calendar can hold.
std::string timeOfDayText(Date date);

}  // namespace lumora
