// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme.h"

#include <QLabel>

namespace lumora {

/// Gives a widget the role's font.
void setFontRole(QWidget* widget, TextRole role);

/// Gives everything within that has a role the role's font again, after the desktop's changed.
void renewFonts(const QWidget* whole);

/// A line of plain text.
QLabel* makeLabel(TextRole role, const QString& text = {});

/// A text that goes on in the next line where it does not fit.
QLabel* makeWrapping(TextRole role, const QString& text = {});

void setTextColor(QLabel* label, const QColor& color);

}  // namespace lumora
