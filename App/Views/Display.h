// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGuiApplication>
#include <QRect>
#include <QScreen>

namespace lumora {

/// Whether a Wayland compositor shows the windows: it places them, and tells nothing of its panels.
inline bool isOnWayland() { return QGuiApplication::platformName().startsWith("wayland"); }

/// What panels leave of a screen; on Wayland, which does not tell, what one at the top or bottom
/// leaves that is at most 60 pixels high: Plasma's floats and takes 52.
inline QRect freeGeometry(const QScreen& screen) {
  constexpr int kPanel = 60;
  return isOnWayland() ? screen.geometry().adjusted(0, 0, 0, -kPanel) : screen.availableGeometry();
}

/// Whether windows get a frame, by the desktop or by the toolkit.
bool framesWindows();

/// Whether something blends the windows on a screen with what lies behind them, so that they may be
/// translucent.
bool blendsWindows(const QScreen& screen);

}  // namespace lumora
