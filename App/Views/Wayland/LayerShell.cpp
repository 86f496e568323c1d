// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/LayerShell.h"

#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cstring>

#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

namespace lumora {
namespace {

// KWin before 6 has an earlier one, and lays the surface over its panel.
constexpr std::uint32_t kShellVersion = 4;

QPlatformNativeInterface& native() { return *QGuiApplication::platformNativeInterface(); }

}  // namespace

std::unique_ptr<LayerShell> LayerShell::find() {
  if (!QGuiApplication::platformName().startsWith("wayland")) return nullptr;
  auto* display = static_cast<wl_display*>(native().nativeResourceForIntegration("wl_display"));
  if (display == nullptr) return nullptr;
  std::unique_ptr<LayerShell> found(new LayerShell(display));
  return found->isComplete() ? std::move(found) : nullptr;
}

/// Looks at what the compositor has on a queue of its own, so that nothing of Qt's is dispatched
/// meanwhile; what is made from it later is heard of on Qt's.
LayerShell::LayerShell(wl_display* display) : display_(display) {
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(display));
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue.get());
  const WaylandObject<wl_registry> registry(wl_display_get_registry(wrapper));
  wl_proxy_wrapper_destroy(wrapper);
  static constexpr wl_registry_listener kListener = {
      .global =
          [](void* self, wl_registry* from, std::uint32_t name, const char* interface,
             std::uint32_t version) {
            static_cast<LayerShell*>(self)->onGlobal(from, name, interface, version);
          },
      .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
  wl_registry_add_listener(registry.get(), &kListener, this);
  wl_display_roundtrip_queue(display, queue.get());
  // Once more for what the seat has.
  wl_display_roundtrip_queue(display, queue.get());
  const auto handToQt = [](auto& object) {
    if (object) wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(object.get()), nullptr);
  };
  handToQt(shell_);
  handToQt(compositor_);
  handToQt(viewporter_);
  handToQt(memory_);
  handToQt(seat_);
}

bool LayerShell::isComplete() const {
  return shell_ && compositor_ && viewporter_ && memory_ && seat_;
}

void LayerShell::onGlobal(wl_registry* registry, std::uint32_t name, const char* interface,
                          std::uint32_t version) {
  const auto take = [&](auto& object, const wl_interface& wanted, std::uint32_t wantedVersion) {
    if (object || std::strcmp(interface, wanted.name) != 0 || version < wantedVersion) return;
    using Object = decltype(object.get());
    object.reset(static_cast<Object>(wl_registry_bind(registry, name, &wanted, wantedVersion)));
  };
  take(shell_, zwlr_layer_shell_v1_interface, kShellVersion);
  take(compositor_, wl_compositor_interface, 1);
  take(viewporter_, wp_viewporter_interface, 1);
  take(memory_, wl_shm_interface, 1);
  const bool hadSeat = seat_ != nullptr;
  take(seat_, wl_seat_interface, 1);
  if (hadSeat || !seat_) return;
  static constexpr wl_seat_listener kListener = {
      .capabilities = [](void* self, wl_seat*, std::uint32_t capabilities) {
        static_cast<LayerShell*>(self)->seatCapabilities_ = capabilities;
      }};
  wl_seat_add_listener(seat_.get(), &kListener, this);
}

wl_pointer* LayerShell::makePointer() const {
  const bool there = (seatCapabilities_ & WL_SEAT_CAPABILITY_POINTER) != 0;
  return there ? wl_seat_get_pointer(seat_.get()) : nullptr;
}

wl_touch* LayerShell::makeTouch() const {
  const bool there = (seatCapabilities_ & WL_SEAT_CAPABILITY_TOUCH) != 0;
  return there ? wl_seat_get_touch(seat_.get()) : nullptr;
}

wl_surface* LayerShell::surfaceOf(QWindow& window) {
  return static_cast<wl_surface*>(native().nativeResourceForWindow("surface", &window));
}

wl_output* LayerShell::outputOf(QScreen* screen) {
  if (screen == nullptr) return nullptr;
  return static_cast<wl_output*>(native().nativeResourceForScreen("output", screen));
}

}  // namespace lumora
