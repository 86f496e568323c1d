// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

namespace lumora {

/// The icon that windows carry, as Resources/Icons/org.lumora.Lumora.svg has it. It is drawn here
/// because Qt reads SVG only where a plugin for it is installed.
QIcon windowIcon();

}  // namespace lumora
