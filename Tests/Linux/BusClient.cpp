// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/BusClient.h"

#include "Linux/WaitFor.h"

#include <utility>

namespace lumora::test {
namespace {

constexpr int kPatienceMs = std::chrono::milliseconds(kPatience).count();

BusConnection connectAgain() {
  using Flags = Gio::DBus::ConnectionFlags;
  // giomm's own function leaks the address.
  const auto address = Glib::make_unique_ptr_gfree(
      g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  return Gio::DBus::Connection::create_for_address_sync(
      address.get(), Flags::AUTHENTICATION_CLIENT | Flags::MESSAGE_BUS_CONNECTION);
}

std::string remoteError(const Glib::Error& error) {
  const auto name = Glib::make_unique_ptr_gfree(g_dbus_error_get_remote_error(error.gobj()));
  return name ? name.get() : "no remote error";
}

}  // namespace

BusClient::BusClient() : connection_(connectAgain()) { connection_->set_exit_on_close(false); }

BusClient::Reply BusClient::call(const Glib::ustring& name, const Glib::ustring& path,
                                 const Glib::ustring& interface, const Glib::ustring& method,
                                 const Glib::VariantContainerBase& arguments) const {
  std::optional<Reply> reply;
  connection_->call(
      path, interface, method, arguments,
      [&](const Glib::RefPtr<Gio::AsyncResult>& result) {
        try {
          reply = Reply{connection_->call_finish(result), {}};
        } catch (const Glib::Error& error) {
          reply = Reply{{}, remoteError(error)};
        }
      },
      name, kPatienceMs);
  // The call itself gives up in time.
  while (!reply) Glib::MainContext::get_default()->iteration(true);
  return *reply;
}

Properties BusClient::properties(const Glib::ustring& name, const Glib::ustring& path,
                                 const Glib::ustring& interface) const {
  return call(name, path, "org.freedesktop.DBus.Properties", "GetAll", arguments(interface))
      .get<Properties>();
}

void BusClient::hear(const Glib::ustring& path) {
  hearing_ = connection_->signal_subscribe(
      [this](const auto&, const auto&, const auto&, const auto&, const Glib::ustring& member,
             const auto&) { heard_.push_back(member); },
      {}, {}, {}, path);
}

std::vector<std::string> BusClient::heard(const Glib::ustring& sender) {
  // What was sent before the reply arrives before the reply.
  call(sender, "/", "org.freedesktop.DBus.Peer", "Ping");
  drainMainLoop();
  return std::exchange(heard_, {});
}

}  // namespace lumora::test
