// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StatusItem.h"

#include <vector>

#include <glibmm.h>

namespace lumora {

/// Pictures as trays take them: a(iiay). One whose bytes are not those of its size is left out;
/// trays read past the end of such a one.
Glib::VariantBase iconPixmaps(const std::vector<Icon>& icons);

/// Makes pictures others that look the same: every pixel that is wholly transparent gets another
/// colour. Cinnamon's tray compares bytes of which it has let go before, so one would not do.
void markUnseen(std::vector<Icon>& icons);

}  // namespace lumora
