// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/ScreenModes.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <wayland-client.h>

namespace lumora {

ScreenModes::ScreenModes(wl_display* display) : registry_(display) {
  constexpr std::uint32_t kNamesVersion = 4;
  registry_.forEach([this](const Registry::Global& global) {
    auto output = registry_.bind<wl_output>(global, wl_output_interface, kNamesVersion);
    if (!output) return;
    monitors_.push_back({.output = std::move(output), .name = {}});
    hear(monitors_.back());
  });
}

std::map<std::string, int> ScreenModes::longerSides() {
  // What has come since is bound first, and then tells.
  registry_.wait();
  registry_.wait();
  std::map<std::string, int> sides;
  for (const Monitor& monitor : monitors_) {
    if (monitor.longerSide > 0) sides[monitor.name] = monitor.longerSide;
  }
  return sides;
}

void ScreenModes::hear(Monitor& monitor) {
  static constexpr wl_output_listener kListener = {
      .geometry = [](void*, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                     std::int32_t, const char*, const char*, std::int32_t) {},
      .mode =
          [](void* self, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
             std::int32_t) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) == 0) return;
            static_cast<Monitor*>(self)->longerSide = std::max(width, height);
          },
      .done = [](void*, wl_output*) {},
      .scale = [](void*, wl_output*, std::int32_t) {},
      .name = [](void* self, wl_output*,
                 const char* name) { static_cast<Monitor*>(self)->name = name; },
      .description = [](void*, wl_output*, const char*) {}};
  wl_output_add_listener(monitor.output.get(), &kListener, &monitor);
}

}  // namespace lumora
