// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Appearance.h"
#include "Views/PopoverContent.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPen>
#include <string>

namespace lumora {

/// The roles of text, from the desktop's own font.
enum class TextRole { headline, body, callout, caption, caption2 };

QFont fontFor(TextRole role);

/// The colour of a tint that reads well on the palette's window colour.
QColor colorOf(Tint tint, const QPalette& palette);

/// For what is less important than text.
QColor secondaryColor(const QPalette& palette);

/// For what stands out of its surroundings, like the chosen one of several.
QColor raisedColor(const QPalette& palette);

/// Of a card that lies on the window and holds what belongs together.
QColor cardColor(const QPalette& palette);

/// Of a place to press that lies on a card.
QColor fieldColor(const QPalette& palette);

/// Of the place in which something raised lies.
QColor wellColor(const QPalette& palette);

/// Of what a knob moves in.
QColor troughColor(const QPalette& palette);

/// Between rows and around cards.
QColor hairlineColor(const QPalette& palette);

/// Around what the keyboard works on.
QPen focusPen(const QPalette& palette);

/// The palette that follows the desktop's wishes: its own where the scheme is already right.
QPalette paletteFor(const Appearance& appearance, const QPalette& desktops);

/// A font as Pango describes it, "Cantarell 11", with its size times `scale`. What the description
/// does not say is the desktop's own.
QFont fontOf(const std::string& description, double scale);

/// Gives the whole of Qt the palette and the font that are wished. Needs the QApplication.
void applyAppearance(const Appearance& appearance);

}  // namespace lumora
