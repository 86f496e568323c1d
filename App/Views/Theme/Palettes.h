// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>

namespace lumora {

/// The palette where no desktop has a right one.
QPalette ownPalette(bool dark, bool highContrast);

/// Gives a palette the colour of what is chosen.
void setAccent(QPalette& palette, const QColor& accent);

/// Makes an opaque ground for windows where the desktop's theme paints pictures on them, and its
/// colour lets through what lies behind.
void groundWindows(QPalette& palette);

/// Makes the texts of what is disabled as faint as everything else of it.
void fadeDisabled(QPalette& palette);

}  // namespace lumora
