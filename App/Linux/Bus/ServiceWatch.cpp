// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/ServiceWatch.h"

#include <utility>

namespace lumora {

ServiceWatch::ServiceWatch(Gio::DBus::BusType bus, const Glib::ustring& name, Start start,
                           std::function<void(const BusConnection&)> appeared,
                           std::function<void()> vanished)
    : bus_(bus),
      name_(name),
      start_(start),
      appeared_(std::move(appeared)),
      vanished_(std::move(vanished)) {
  watch();
}

ServiceWatch::~ServiceWatch() { Gio::DBus::unwatch_name(watch_); }

void ServiceWatch::watch() {
  if (watch_ != 0) Gio::DBus::unwatch_name(watch_);
  watch_ = Gio::DBus::watch_name(
      bus_, name_, sigc::hide(sigc::hide(sigc::mem_fun(*this, &ServiceWatch::onAppeared))),
      sigc::hide(sigc::mem_fun(*this, &ServiceWatch::onVanished)),
      start_ == Start::onDemand ? Gio::DBus::BusNameWatcherFlags::AUTO_START
                                : Gio::DBus::BusNameWatcherFlags::NONE);
}

void ServiceWatch::onAppeared(const BusConnection& connection) {
  surviveTheEndOf(connection);
  rejoin_.reset();
  appeared_(connection);
}

void ServiceWatch::onVanished(const BusConnection& connection) {
  const bool joined = connection && !connection->is_closed();
  if (joined) {
    surviveTheEndOf(connection);
    rejoin_.reset();
  } else if (bus_ == Gio::DBus::BusType::SYSTEM) {
    rejoin_.failed();
  }
  vanished_();
}

/// By default the end of a bus ends the program. That is right for the session's alone.
void ServiceWatch::surviveTheEndOf(const BusConnection& connection) {
  if (bus_ == Gio::DBus::BusType::SYSTEM) connection->set_exit_on_close(false);
}

}  // namespace lumora
