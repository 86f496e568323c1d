// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/WaylandObject.h"

#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"

#include <wayland-client.h>

namespace lumora {

void WaylandDestroy::operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
void WaylandDestroy::operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
void WaylandDestroy::operator()(wl_event_queue* object) const { wl_event_queue_destroy(object); }
void WaylandDestroy::operator()(wl_output* object) const { wl_output_release(object); }
void WaylandDestroy::operator()(wl_pointer* object) const { wl_pointer_release(object); }
void WaylandDestroy::operator()(wl_registry* object) const { wl_registry_destroy(object); }
void WaylandDestroy::operator()(wl_seat* object) const { wl_seat_destroy(object); }
void WaylandDestroy::operator()(wl_shm* object) const { wl_shm_destroy(object); }
void WaylandDestroy::operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
void WaylandDestroy::operator()(wl_surface* object) const { wl_surface_destroy(object); }
void WaylandDestroy::operator()(wl_touch* object) const { wl_touch_release(object); }
void WaylandDestroy::operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
void WaylandDestroy::operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
void WaylandDestroy::operator()(zwlr_layer_shell_v1* object) const {
  zwlr_layer_shell_v1_destroy(object);
}
void WaylandDestroy::operator()(zwlr_layer_surface_v1* object) const {
  zwlr_layer_surface_v1_destroy(object);
}

}  // namespace lumora
