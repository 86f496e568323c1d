// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/LayerShell.h"

#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <type_traits>
#include <utility>

#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

namespace lumora {
namespace {

// KWin before 6 has an earlier one, and lays the surface over its panel.
constexpr std::uint32_t kShellVersion = 4;

// From it on, mouse and touch screen can be given up.
constexpr std::uint32_t kSeatVersion = 3;

QPlatformNativeInterface& native() { return *QGuiApplication::platformNativeInterface(); }

}  // namespace

std::unique_ptr<LayerShell> LayerShell::find() {
  wl_display* display = waylandDisplay();
  if (display == nullptr) return nullptr;
  std::unique_ptr<LayerShell> found(new LayerShell(display));
  return found->isComplete() ? std::move(found) : nullptr;
}

LayerShell::LayerShell(wl_display* display) : display_(display) {
  Registry registry(display);
  registry.forEach([&](const Registry::Global& global) { onGlobal(registry, global); });
}

bool LayerShell::isComplete() const {
  return shell_ && compositor_ && viewporter_ && memory_ && !seats_.empty();
}

void LayerShell::onGlobal(Registry& registry, const Registry::Global& global) {
  const auto take = [&](auto& object, const wl_interface& wanted, std::uint32_t version) {
    using Object = typename std::decay_t<decltype(object)>::element_type;
    if (object) return;
    object = registry.bind<Object>(global, wanted, version);
    if (object) Registry::handToQt(object);
  };
  take(shell_, zwlr_layer_shell_v1_interface, kShellVersion);
  take(compositor_, wl_compositor_interface, 1);
  take(viewporter_, wp_viewporter_interface, 1);
  take(memory_, wl_shm_interface, 1);
  WaylandObject<wl_seat> seat;
  take(seat, wl_seat_interface, kSeatVersion);
  if (!seat) return;
  const auto pressed = [this](const wl_surface* surface) {
    // It may hear no more by this.
    if (const auto tell = pressed_) tell(surface);
  };
  seats_.push_back(std::make_unique<Seat>(seat.release(), pressed));
}

wl_surface* LayerShell::surfaceOf(QWindow& window) {
  return static_cast<wl_surface*>(native().nativeResourceForWindow("surface", &window));
}

wl_output* LayerShell::outputOf(QScreen* screen) {
  if (screen == nullptr) return nullptr;
  return static_cast<wl_output*>(native().nativeResourceForScreen("output", screen));
}

}  // namespace lumora
