// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Appearance.h"

#include <QPalette>

namespace lumora {

/// The palette that follows the desktop's wishes. Only the colours that differ from the desktop's
/// own are set in it: none where its scheme is already right and it wishes no accent.
QPalette paletteFor(const Appearance& appearance, const QPalette& desktops);

/// Gives the whole of Qt the palette, the font and the motion that the desktop wishes, whenever
/// they change. Needs the QApplication.
class DesktopLooks {
 public:
  /// Follows these wishes from now on, in windows that are open, too.
  void apply(const Appearance& appearance);

 private:
  QPalette desktops_;  // As last seen while it was not covered by one of our own.
  bool covered_ = false;
};

}  // namespace lumora
