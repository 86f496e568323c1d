// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverPlace.h"

#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace lumora {

/// Of the popover's corners, where it is not square; beside controls that the desktop's own style
/// draws, that of the desktop's own panels.
int cornerRadius(const QString& style);

/// How far the shadow reaches: it lies in the gap that the popover keeps to all else.
inline constexpr int kShadowReach = kPopoverGap;

/// Draws the popover's ground with round corners, its outline and the shadow around it.
void drawRoundFrame(QPainter& painter, const QRect& popover, const QPalette& palette);

/// Draws its outline with square corners.
void drawSquareFrame(QPainter& painter, const QRect& popover, const QPalette& palette);

}  // namespace lumora
