// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/LayerSurface.h"

#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"

#include <chrono>
#include <utility>

#include <wayland-client.h>

namespace lumora {
namespace {

// By this compositors' settings tell surfaces apart.
constexpr const char* kNamespace = "lumora";
constexpr std::chrono::seconds kPatience{1};

struct Role {
  std::uint32_t layer;
  std::int32_t exclusiveZone;
  std::uint32_t keyboard;
};

Role roleOf(LayerSurface::Kind kind) {
  // Zones: 0 keeps the surface beside the panels, -1 lets it lie over them.
  if (kind == LayerSurface::Kind::cover) {
    return {ZWLR_LAYER_SHELL_V1_LAYER_TOP, -1, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE};
  }
  return {ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, 0,
          ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE};
}

}  // namespace

LayerSurface::LayerSurface(const LayerShell& shell, wl_surface* surface, wl_output* output,
                           Kind kind, Callbacks callbacks)
    : shell_(shell),
      surface_(surface),
      callbacks_(std::move(callbacks)),
      layer_(zwlr_layer_shell_v1_get_layer_surface(shell.shell(), surface, output,
                                                   roleOf(kind).layer, kNamespace)) {
  static constexpr zwlr_layer_surface_v1_listener kListener = {
      .configure =
          [](void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
             std::uint32_t height) {
            auto& self = *static_cast<LayerSurface*>(data);
            zwlr_layer_surface_v1_ack_configure(layer, serial);
            self.configured_ = true;
            self.callbacks_.configured(static_cast<int>(width), static_cast<int>(height));
          },
      .closed =
          [](void* data, zwlr_layer_surface_v1*) {
            auto& self = *static_cast<LayerSurface*>(data);
            self.closed_ = true;
            // It may be destroyed by this.
            const auto closed = self.callbacks_.closed;
            closed();
          }};
  zwlr_layer_surface_v1_add_listener(layer_.get(), &kListener, this);
  zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), roleOf(kind).exclusiveZone);
  zwlr_layer_surface_v1_set_keyboard_interactivity(layer_.get(), roleOf(kind).keyboard);
}

void LayerSurface::place(const LayerPlace& place, ScreenSize size) {
  const std::uint32_t vertical =
      place.atTop ? ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP : ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM;
  const std::uint32_t horizontal =
      place.atLeft ? ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT : ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
  zwlr_layer_surface_v1_set_anchor(layer_.get(), vertical | horizontal);
  // Those of the edges that it does not hang on mean nothing.
  zwlr_layer_surface_v1_set_margin(layer_.get(), place.marginY, place.marginX, place.marginY,
                                   place.marginX);
  zwlr_layer_surface_v1_set_size(layer_.get(), static_cast<std::uint32_t>(size.width),
                                 static_cast<std::uint32_t>(size.height));
}

void LayerSurface::cover() {
  zwlr_layer_surface_v1_set_anchor(
      layer_.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                        ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
}

bool LayerSurface::waitUntilConfigured() {
  wl_surface_commit(surface_);
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!configured_ && !closed_ && std::chrono::steady_clock::now() < deadline) {
    if (wl_display_roundtrip(shell_.display()) < 0) break;
  }
  return configured_ && !closed_;
}

}  // namespace lumora
