// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Display.h"

#include "Views/Wayland/Registry.h"

#include <QLibraryInfo>
#include <QVersionNumber>
#include <string_view>

#include <qpa/qplatformnativeinterface.h>

namespace lumora {

bool framesWindows() {
  wl_display* display = waylandDisplay();
  // From 6.8 on Qt frames windows itself where the compositor does not, as GNOME's; before, only
  // those that share buffers with the graphics card, which Lumora's do not.
  if (display == nullptr || QLibraryInfo::version() >= QVersionNumber(6, 8)) return true;
  bool offered = false;
  Registry(display).forEach([&](const Registry::Global& global) {
    offered |= std::string_view(global.interface) == "zxdg_decoration_manager_v1";
  });
  return offered;
}

bool blendsWindows(const QScreen& screen) {
  if (isOnWayland()) return true;
  // On X11 a compositing manager may come and go.
  if (QGuiApplication::platformName() != "xcb") return false;
  auto* native = QGuiApplication::platformNativeInterface();
  return native->nativeResourceForScreen("compositingEnabled", const_cast<QScreen*>(&screen)) !=
         nullptr;
}

}  // namespace lumora
