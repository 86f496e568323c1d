// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/WaylandObject.h"

#include <cstdint>
#include <functional>

struct wl_display;
struct wl_interface;

namespace lumora {

/// Qt's connection to the compositor; null on X11.
wl_display* waylandDisplay();

/// What the compositor offers, heard of on a queue of its own, so that nothing of Qt's is
/// dispatched meanwhile. Outlives what is bound and not handed to Qt.
class Registry {
 public:
  struct Global {
    std::uint32_t name;
    const char* interface;
    std::uint32_t version;
  };

  explicit Registry(wl_display* display);

  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  /// Each global that there is now, and in later waits each that has come.
  void forEach(std::function<void(const Global&)> each);

  /// Null where the global is another one, or of an earlier version.
  template <typename T>
  WaylandObject<T> bind(const Global& global, const wl_interface& wanted, std::uint32_t version) {
    return WaylandObject<T>(static_cast<T*>(bindAny(global, wanted, version)));
  }

  /// Has what was just bound tell on Qt's queue.
  template <typename T>
  static void handToQt(const WaylandObject<T>& object) {
    setQtsQueue(object.get());
  }

  /// Waits until all that was bound has told how it is.
  void wait();

 private:
  void* bindAny(const Global& global, const wl_interface& wanted, std::uint32_t version);
  static void setQtsQueue(void* object);

  wl_display* display_;
  WaylandObject<wl_event_queue> queue_;
  WaylandObject<wl_registry> registry_;
  std::function<void(const Global&)> each_;
};

}  // namespace lumora
