// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/Seat.h"

#include <utility>

#include <wayland-client.h>

namespace lumora {

Seat::Seat(wl_seat* seat, std::function<void(const wl_surface*)> pressed)
    : seat_(seat), pressed_(std::move(pressed)) {
  static constexpr wl_seat_listener kListener = {
      .capabilities =
          [](void* self, wl_seat*, std::uint32_t capabilities) {
            static_cast<Seat*>(self)->onCapabilities(capabilities);
          },
      .name = [](void*, wl_seat*, const char*) {}};
  wl_seat_add_listener(seat, &kListener, this);
}

void Seat::onCapabilities(std::uint32_t capabilities) {
  if ((capabilities & WL_SEAT_CAPABILITY_POINTER) == 0) {
    pointer_.reset();
    underMouse_ = nullptr;
  } else if (!pointer_) {
    hearPointer();
  }
  if ((capabilities & WL_SEAT_CAPABILITY_TOUCH) == 0) {
    touch_.reset();
  } else if (!touch_) {
    hearTouch();
  }
}

void Seat::hearPointer() {
  static constexpr wl_pointer_listener kListener = {
      .enter = [](void* self, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t,
                  wl_fixed_t) { static_cast<Seat*>(self)->underMouse_ = surface; },
      .leave = [](void* self, wl_pointer*, std::uint32_t,
                  wl_surface*) { static_cast<Seat*>(self)->underMouse_ = nullptr; },
      .motion = [](void*, wl_pointer*, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
      .button =
          [](void* data, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t,
             std::uint32_t state) {
            const auto& self = *static_cast<Seat*>(data);
            if (state == WL_POINTER_BUTTON_STATE_PRESSED) self.pressed_(self.underMouse_);
          },
      .axis = [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {}};
  pointer_.reset(wl_seat_get_pointer(seat_.get()));
  wl_pointer_add_listener(pointer_.get(), &kListener, this);
}

void Seat::hearTouch() {
  static constexpr wl_touch_listener kListener = {
      .down = [](void* self, wl_touch*, std::uint32_t, std::uint32_t, wl_surface* surface,
                 std::int32_t, wl_fixed_t,
                 wl_fixed_t) { static_cast<Seat*>(self)->pressed_(surface); },
      .up = [](void*, wl_touch*, std::uint32_t, std::uint32_t, std::int32_t) {},
      .motion = [](void*, wl_touch*, std::uint32_t, std::int32_t, wl_fixed_t, wl_fixed_t) {},
      .frame = [](void*, wl_touch*) {},
      .cancel = [](void*, wl_touch*) {}};
  touch_.reset(wl_seat_get_touch(seat_.get()));
  wl_touch_add_listener(touch_.get(), &kListener, this);
}

}  // namespace lumora
