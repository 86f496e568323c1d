// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFontMetrics>
#include <algorithm>

namespace lumora {

// The measures of everything that is drawn, in pixels: steps of 4, and of 2 within a control. The
// colours are in Colors.h, the fonts in Fonts.h.

/// A control is at least as high, so that it is easily hit.
inline constexpr int kControlHeight = 32;
/// Above and below a control's text, where the font is too large for that height.
inline constexpr int kTextMargin = 6;
/// Beside a control's text.
inline constexpr int kControlPadding = 12;
/// Between a control's text and its sign.
inline constexpr int kSignGap = 8;
/// The place of a sign: an arrow, a check mark.
inline constexpr int kSignSide = 16;
inline constexpr double kSignLine = 1.75;

inline constexpr double kControlRadius = 6;
/// What lies within a control: an entry of a list, the chosen segment.
inline constexpr double kInnerRadius = 4;
inline constexpr double kCardRadius = 10;
/// Lists, menus and tips over a window.
inline constexpr double kPopupRadius = 8;

inline constexpr double kLine = 1;
inline constexpr double kFocusLine = 2;
/// Room for the ring that marks the focus, and for a gap that parts it from what it surrounds.
inline constexpr int kFocusRoom = 4;

/// Of what is disabled, its label included.
inline constexpr double kDisabledOpacity = 0.5;

/// The height of a control with a text in this font.
inline int controlHeight(const QFontMetrics& metrics) {
  return std::max(kControlHeight, metrics.height() + 2 * kTextMargin);
}

}  // namespace lumora
