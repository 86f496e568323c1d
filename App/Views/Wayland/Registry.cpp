// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/Registry.h"

#include <QGuiApplication>
#include <cstring>
#include <utility>

#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

namespace lumora {

wl_display* waylandDisplay() {
  if (!QGuiApplication::platformName().startsWith("wayland")) return nullptr;
  auto* native = QGuiApplication::platformNativeInterface();
  return static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
}

Registry::Registry(wl_display* display)
    : display_(display), queue_(wl_display_create_queue(display)) {
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue_.get());
  registry_.reset(wl_display_get_registry(wrapper));
  wl_proxy_wrapper_destroy(wrapper);
}

void Registry::forEach(std::function<void(const Global&)> each) {
  static constexpr wl_registry_listener kListener = {
      .global =
          [](void* self, wl_registry*, std::uint32_t name, const char* interface,
             std::uint32_t version) {
            static_cast<Registry*>(self)->each_({name, interface, version});
          },
      .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
  each_ = std::move(each);
  wl_registry_add_listener(registry_.get(), &kListener, this);
  wait();
}

void Registry::wait() { wl_display_roundtrip_queue(display_, queue_.get()); }

void* Registry::bindAny(const Global& global, const wl_interface& wanted, std::uint32_t version) {
  if (std::strcmp(global.interface, wanted.name) != 0 || global.version < version) return nullptr;
  return wl_registry_bind(registry_.get(), global.name, &wanted, version);
}

void Registry::setQtsQueue(void* object) {
  wl_proxy_set_queue(static_cast<wl_proxy*>(object), nullptr);
}

}  // namespace lumora
