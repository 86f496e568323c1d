// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StatusItem.h"

#include <cairo.h>

namespace lumora {

/// The sign that tells a battery's state by its shape alone: a plug, a bolt, a check mark or an
/// exclamation mark. On battery has none, and neither has no battery.
/// Its width in pixels when it is so high; 0 for none.
int markWidth(BatteryPicture picture, int height);

/// Adds the sign to the path, with its top left corner at a place.
void addMark(cairo_t* cairo, BatteryPicture picture, int x, int y, int height);

}  // namespace lumora
