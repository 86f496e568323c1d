// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/ChartPoints.h"

#include <span>
#include <string>

namespace lumora {

/// What the chart tells of a point: "14:35 · 80% · Charging", with the weekday before it where the
/// chart shows more than one day.
std::string pointText(const ChartPoint& point, int days);

/// The chart for those who do not see it: its newest point, from where to where the charge went,
/// and how long it charged, if it did: "14:35 · 80% · Charging. Range · 41–80%. Charging · 1 h 5
/// min".
/// "" without points.
std::string chartText(std::span<const ChartPoint> points, int days);

}  // namespace lumora
