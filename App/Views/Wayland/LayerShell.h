// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/WaylandObject.h"

#include <cstdint>
#include <memory>

struct wl_display;
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
  /// The mouse and the touch screen; null for what is not there now. The caller's own.
  wl_pointer* makePointer() const;
  wl_touch* makeTouch() const;

  /// The compositor's names of what Qt made; null before there is one.
  static wl_surface* surfaceOf(QWindow& window);
  static wl_output* outputOf(QScreen* screen);

 private:
  explicit LayerShell(wl_display* display);
  bool isComplete() const;
  void onGlobal(wl_registry* registry, std::uint32_t name, const char* interface,
                std::uint32_t version);

  wl_display* display_;
  WaylandObject<zwlr_layer_shell_v1> shell_;
  WaylandObject<wl_compositor> compositor_;
  WaylandObject<wp_viewporter> viewporter_;
  WaylandObject<wl_shm> memory_;
  WaylandObject<wl_seat> seat_;
  std::uint32_t seatCapabilities_ = 0;
};

}  // namespace lumora
