// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme.h"

#include <QLabel>

namespace lumora {

/// A line of plain text.
QLabel* makeLabel(TextRole role, const QString& text = {});

/// A text that goes on in the next line where it does not fit.
QLabel* makeWrapping(TextRole role, const QString& text = {});

void setTextColor(QLabel* label, const QColor& color);

}  // namespace lumora
