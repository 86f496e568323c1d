// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace lumora {

using Seconds = std::chrono::duration<double>;

/// A moment of the wall clock: seconds since 1970-01-01 00:00 UTC, fractional.
using Date = std::chrono::sys_time<Seconds>;

/// Earlier than any moment the program meets: 0001-01-01 00:00 UTC.
inline constexpr Date kDistantPast{Seconds{-62'135'596'800.0}};

constexpr Date dateSince1970(double seconds) { return Date{Seconds{seconds}}; }

constexpr double secondsSince1970(Date date) { return date.time_since_epoch().count(); }

}  // namespace lumora
