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

/// Makes pictures others that look the same: the first pixel that is wholly transparent gets
/// another colour, in each that has one.
void markUnseen(std::vector<Icon>& icons);

}  // namespace lumora
