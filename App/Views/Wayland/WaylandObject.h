// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

struct wl_buffer;
struct wl_compositor;
struct wl_event_queue;
struct wl_output;
struct wl_pointer;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_shm_pool;
struct wl_surface;
struct wl_touch;
struct wp_viewport;
struct wp_viewporter;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

namespace lumora {

/// Gives an object on the compositor's display up.
struct WaylandDestroy {
  void operator()(wl_buffer* object) const;
  void operator()(wl_compositor* object) const;
  void operator()(wl_event_queue* object) const;
  void operator()(wl_output* object) const;
  void operator()(wl_pointer* object) const;
  void operator()(wl_registry* object) const;
  void operator()(wl_seat* object) const;
  void operator()(wl_shm* object) const;
  void operator()(wl_shm_pool* object) const;
  void operator()(wl_surface* object) const;
  void operator()(wl_touch* object) const;
  void operator()(wp_viewport* object) const;
  void operator()(wp_viewporter* object) const;
  void operator()(zwlr_layer_shell_v1* object) const;
  void operator()(zwlr_layer_surface_v1* object) const;
};

/// An object on the compositor's display that is given up with its owner.
template <typename T>
using WaylandObject = std::unique_ptr<T, WaylandDestroy>;

}  // namespace lumora
