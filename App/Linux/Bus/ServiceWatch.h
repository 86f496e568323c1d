// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/Backoff.h"

#include <functional>

#include <giomm.h>

namespace lumora {

using BusConnection = Glib::RefPtr<Gio::DBus::Connection>;

/// Follows a service on a bus for as long as it lives, each time the service's name gets or loses
/// an owner. Connecting to the bus never waits. A system bus that ends or is not there is joined
/// again with a growing pause (`Backoff`); the end of the session's ends the program.
class ServiceWatch : public sigc::trackable {
 public:
  enum class Start { ifRunning, onDemand };

  /// One of the two runs soon after construction: `vanished` also when there is no such bus. Then
  /// nobody may hold the old connection any more: the process shares one, and gets a new one only
  /// when it is let go.
  ServiceWatch(Gio::DBus::BusType bus, const Glib::ustring& name, Start start,
               std::function<void(const BusConnection&)> appeared, std::function<void()> vanished);
  ServiceWatch(const ServiceWatch&) = delete;
  ServiceWatch& operator=(const ServiceWatch&) = delete;
  ~ServiceWatch();

 private:
  void watch();
  void onAppeared(const BusConnection& connection);
  void onVanished(const BusConnection& connection);
  void surviveTheEndOf(const BusConnection& connection);

  Gio::DBus::BusType bus_;
  Glib::ustring name_;
  Start start_;
  std::function<void(const BusConnection&)> appeared_;
  std::function<void()> vanished_;
  guint watch_ = 0;
  Backoff rejoin_{[this] { watch(); }};
};

}  // namespace lumora
