// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include <cairo.h>

namespace lumora {

/// How large text is drawn, in pixels. All of it is whole numbers, so that edges fall between
/// pixels.
struct GlyphSize {
  int width = 0;   ///< Of a digit.
  int height = 0;  ///< Of a digit.
  int stroke = 0;
  int gap = 0;  ///< Between two glyphs.
};

/// The width of a text. Digits, "%", ":", the middle dot and blanks are known; what is not known is
/// left out.
int textWidth(std::string_view text, const GlyphSize& size);

/// Draws a text with its top left corner at a place, in the source that is set.
void drawText(cairo_t* cairo, std::string_view text, int x, int y, const GlyphSize& size);

}  // namespace lumora
