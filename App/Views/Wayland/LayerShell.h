// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/Registry.h"
#include "Views/Wayland/Seat.h"
#include "Views/Wayland/WaylandObject.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

struct wl_output;
class QScreen;
class QWindow;

namespace lumora {

/// What of the compositor is needed to put surfaces at an edge of a screen, above the windows
/// (wlr-layer-shell). Lives no longer than Qt's connection to the display.
class LayerShell {
 public:
  /// Absent on X11, and where the compositor lacks something of it, as GNOME's does.
  static std::unique_ptr<LayerShell> find();

  wl_display* display() const { return display_; }
  zwlr_layer_shell_v1* shell() const { return shell_.get(); }
  wl_compositor* compositor() const { return compositor_.get(); }
  wp_viewporter* viewporter() const { return viewporter_.get(); }
  wl_shm* memory() const { return memory_.get(); }
  /// Tells each press of a mouse or a touch screen on a surface of this program; nobody by an empty
  /// function.
  void onPress(std::function<void(const wl_surface*)> pressed) { pressed_ = std::move(pressed); }

  /// The compositor's names of what Qt made; null before there is one.
  static wl_surface* surfaceOf(QWindow& window);
  static wl_output* outputOf(QScreen* screen);

 private:
  explicit LayerShell(wl_display* display);
  bool isComplete() const;
  void onGlobal(Registry& registry, const Registry::Global& global);

  wl_display* display_;
  WaylandObject<zwlr_layer_shell_v1> shell_;
  WaylandObject<wl_compositor> compositor_;
  WaylandObject<wp_viewporter> viewporter_;
  WaylandObject<wl_shm> memory_;
  std::vector<std::unique_ptr<Seat>> seats_;
  std::function<void(const wl_surface*)> pressed_;
};

}  // namespace lumora
