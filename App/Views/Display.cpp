// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Display.h"

#include <qpa/qplatformnativeinterface.h>

namespace lumora {

bool blendsWindows(const QScreen& screen) {
  if (isOnWayland()) return true;
  // On X11 a compositing manager may come and go.
  if (QGuiApplication::platformName() != "xcb") return false;
  auto* native = QGuiApplication::platformNativeInterface();
  return native->nativeResourceForScreen("compositingEnabled", const_cast<QScreen*>(&screen)) !=
         nullptr;
}

}  // namespace lumora
