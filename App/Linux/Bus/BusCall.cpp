// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/BusCall.h"

#include <limits>

namespace lumora {
namespace {

int milliseconds(std::chrono::milliseconds timeout) {
  constexpr int kNone = std::numeric_limits<int>::max();
  return timeout.count() < kNone ? static_cast<int>(timeout.count()) : kNone;
}

Gio::DBus::CallFlags flags(const BusCall& call) {
  return call.start == ServiceWatch::Start::onDemand ? Gio::DBus::CallFlags::NONE
                                                     : Gio::DBus::CallFlags::NO_AUTO_START;
}

BusReply finish(const BusConnection& connection, const Glib::RefPtr<Gio::AsyncResult>& result) {
  try {
    Glib::RefPtr<Gio::UnixFDList> descriptors;
    auto values = connection->call_finish(result, descriptors);
    return BusReply::of(std::move(values), std::move(descriptors));
  } catch (const Glib::Error& error) {
    return BusReply::of(error);
  }
}

}  // namespace

BusReply BusReply::of(const Glib::Error& error) {
  // giomm's own function for the name leaks it.
  const auto told = Glib::make_unique_ptr_gfree(g_dbus_error_get_remote_error(error.gobj()));
  return {{}, {}, told ? told.get() : "org.freedesktop.DBus.Error.Failed"};
}

void callMethod(const BusConnection& connection, const BusCall& call,
                const sigc::slot<void(const BusReply&)>& answered) {
  Gio::SlotAsyncReady onResult;
  if (!answered.empty()) {
    onResult = [connection, answered](const Glib::RefPtr<Gio::AsyncResult>& result) {
      answered(finish(connection, result));
    };
  }
  connection->call(call.remote.path, call.remote.name, call.method, call.arguments, onResult,
                   call.cancellable, call.remote.service, milliseconds(call.timeout), flags(call));
}

BusReply callMethodAndWait(const BusConnection& connection, const BusCall& call) {
  try {
    return BusReply::of(connection->call_sync(call.remote.path, call.remote.name, call.method,
                                              call.arguments, call.remote.service,
                                              milliseconds(call.timeout), flags(call)));
  } catch (const Glib::Error& error) {
    return BusReply::of(error);
  }
}

}  // namespace lumora
