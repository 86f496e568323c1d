// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverContent.h"

#include <QColor>
#include <QPalette>

namespace lumora {

// Each colour is computed from the palette, whatever desktop it comes from: texts reach a contrast
// of 4.5 with the window and with a card, marks 3, both 7 where those are black or white.

/// What a text is, which says its colour.
enum class TextColor { primary, secondary, link, green, orange, red };

QColor textColor(TextColor color, const QPalette& palette);

/// The text colour of a tint.
TextColor textColorFor(Tint tint);

/// A filled arc or bar, a line, a switch that is on: a mark in a tint.
QColor markColor(Tint tint, const QPalette& palette);

/// A mark without a tint: a switch that is off, a tick, the outline of the chosen segment.
QColor neutralMarkColor(const QPalette& palette);

/// What an arc or a bar fills: the secondary text colour at an opacity of 0.2.
QColor trackColor(const QPalette& palette);

/// The lines behind the chart.
QColor gridColor(const QPalette& palette);

/// The soft area below the chart's line, on which all marks are seen. Translucent.
QColor areaColor(Tint tint, const QPalette& palette);

/// The knob of a switch whose track has this colour.
QColor knobColor(const QColor& track);

/// The ground of the chosen segment.
QColor raisedColor(const QPalette& palette);

/// The ground in which segments lie. Translucent.
QColor wellColor(const QPalette& palette);

/// A card of rows on the window. May be translucent.
QColor cardColor(const QPalette& palette);

/// Whether the mouse is over a control, or presses it.
enum class Touch { none, hovered, pressed };

/// The ground of a control on the window or on a card. Translucent.
QColor fieldColor(const QPalette& palette, Touch touch = Touch::none);

/// The ground of the button that Return presses, and of the chosen entry of a list: the accent.
QColor actionColor(const QPalette& palette, Touch touch = Touch::none);

/// The ground of a button that destroys something. Translucent.
QColor dangerFieldColor(const QPalette& palette, Touch touch = Touch::none);

/// The text of that button.
QColor dangerColor(const QPalette& palette);

/// The ground of lists and menus over a window.
QColor popupColor(const QPalette& palette);

/// Between rows and around cards. Translucent.
QColor hairlineColor(const QPalette& palette);

/// Around the popover, and windows that have no frame of the desktop. Translucent.
QColor outlineColor(const QPalette& palette);

/// Around what has the keyboard focus.
QColor focusColor(const QPalette& palette);

/// Whether the palette is light on dark.
bool isDark(const QPalette& palette);

/// Whether the palette is black on white or white on black: the choice of somebody who needs it.
bool isHighContrast(const QPalette& palette);

}  // namespace lumora
