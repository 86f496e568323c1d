// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/WaylandObject.h"

#include <cstdint>
#include <functional>

namespace lumora {

/// Hears where the mouse and the touch screen of a seat press, while it has them.
class Seat {
 public:
  /// `seat` is of version 3 and has not told what it has; `pressed` gets the surface, one of this
  /// program's.
  Seat(wl_seat* seat, std::function<void(const wl_surface*)> pressed);

  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

 private:
  void onCapabilities(std::uint32_t capabilities);
  void hearPointer();
  void hearTouch();

  WaylandObject<wl_seat> seat_;
  std::function<void(const wl_surface*)> pressed_;
  const wl_surface* underMouse_ = nullptr;
  WaylandObject<wl_pointer> pointer_;
  WaylandObject<wl_touch> touch_;
};

}  // namespace lumora
