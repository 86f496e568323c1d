// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/LayerPlace.h"
#include "Views/Wayland/LayerShell.h"

#include <cstdint>
#include <functional>

namespace lumora {

/// A surface in a layer above the windows, from the compositor's first word on its size to the end
/// of this object. Then it is no longer shown.
class LayerSurface {
 public:
  struct Callbacks {
    /// The size that the compositor gives it, in pixels of the toolkit; called for each new one.
    std::function<void(int width, int height)> configured;
    /// The compositor shows it no more: its screen is gone, or the session is locked.
    std::function<void()> closed;
  };

  enum class Kind {
    popover,  ///< Over all else and beside the panels; has the keyboard.
    /// Below popovers, over the windows and panels; has no keyboard. Compositors that keep the
    /// older surface of a layer on top (sway before 1.10) leave their bar above it.
    cover,
  };

  /// `surface` has no picture yet. `output` null: the compositor chooses the screen.
  LayerSurface(const LayerShell& shell, wl_surface* surface, wl_output* output, Kind kind,
               Callbacks callbacks);

  LayerSurface(const LayerSurface&) = delete;
  LayerSurface& operator=(const LayerSurface&) = delete;

  /// Takes effect with the next picture.
  void place(const LayerPlace& place, ScreenSize size);

  /// As large as the screen.
  void cover();

  /// Waits until the compositor has said the surface's size: only then may it have a picture. False
  /// where it does not within a second, or has no screen.
  bool waitUntilConfigured();

 private:
  const LayerShell& shell_;
  wl_surface* surface_;
  Callbacks callbacks_;
  bool configured_ = false;
  bool closed_ = false;
  WaylandObject<zwlr_layer_surface_v1> layer_;
};

}  // namespace lumora
