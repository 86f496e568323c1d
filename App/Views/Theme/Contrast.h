// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <initializer_list>

namespace lumora {

/// Contrast ratio of two opaque colours as WCAG 2.1 defines it: 1 for none, 21 for black on white.
double contrast(const QColor& one, const QColor& other);

/// A translucent colour as it looks on an opaque ground.
QColor over(const QColor& ground, const QColor& color);

/// Two opaque colours mixed: `share` of the first, 0 to 1.
QColor mixed(const QColor& one, const QColor& other, double share);

/// White, or black where white has less than a contrast of 4.5 with the opaque colour; black has
/// more than that then.
QColor textOn(const QColor& ground);

/// The colour, made lighter or darker by as little as it takes to reach the contrast ratio on each
/// of the opaque grounds. Up to 4.5 can always be reached on one ground, and on several that are
/// all dark or all light; beyond that, black or white is the answer.
QColor legible(const QColor& color, std::initializer_list<QColor> grounds, double ratio);

}  // namespace lumora
