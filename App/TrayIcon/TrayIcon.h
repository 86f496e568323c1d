// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StatusItem.h"

#include <vector>

namespace lumora {

/// Draws an icon with its text in the sizes that trays use: squares of 16 to 64 pixels, or as high
/// and as wide as the text needs. The text stands on a plate of its own, because nobody tells how
/// light a panel is.
std::vector<Icon> drawTrayIcon(const DrawnIcon& icon);

/// The one function that the module of the drawing exports, by this name and type. A module,
/// because most trays need none of it, and the library that draws is large.
inline constexpr const char* kDrawTrayIconName = "lumoraDrawTrayIcon";
using DrawTrayIcon = void (*)(const DrawnIcon& icon, std::vector<Icon>& drawn);

}  // namespace lumora
