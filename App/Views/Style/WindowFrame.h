// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverPlace.h"

#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace lumora {

/// Of a round frame's corners; beside controls that the desktop's own style draws, that of the
/// desktop's own panels.
int cornerRadius(const QString& style);

/// How far the shadow reaches: the popover's lies in the gap that it keeps to all else.
inline constexpr int kShadowReach = kPopoverGap;

/// Draws the ground of a popover or window with round corners, its outline and the shadow around
/// it.
void drawRoundFrame(QPainter& painter, const QRect& area, const QPalette& palette);

/// Draws an outline with square corners.
void drawSquareFrame(QPainter& painter, const QRect& area, const QPalette& palette);

}  // namespace lumora
