// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the program links in place of the real functions: all of it leads to the fake bus.
#include "FakeBus.h"
#include "Fuzzer.h"

#include <map>
#include <utility>

using lumora::test::FakeBus;

namespace Gio::DBus {

void Connection::call(const Glib::ustring& /*object_path*/, const Glib::ustring& /*interface_name*/,
                      const Glib::ustring& method_name,
                      const Glib::VariantContainerBase& parameters, const SlotAsyncReady& slot,
                      const Glib::ustring& /*bus_name*/, int /*timeout_msec*/, CallFlags /*flags*/,
                      const Glib::VariantType& /*reply_type*/) {
  FakeBus::get().onCall({method_name.raw(), parameters, slot});
}

Glib::VariantContainerBase Connection::call_finish(const Glib::RefPtr<AsyncResult>& /*result*/) {
  return FakeBus::get().takeAnswer();
}

guint Connection::signal_subscribe(const SlotSignal& slot, const Glib::ustring& /*sender*/,
                                   const Glib::ustring& /*interface_name*/,
                                   const Glib::ustring& member,
                                   const Glib::ustring& /*object_path*/,
                                   const Glib::ustring& /*arg0*/, SignalFlags /*flags*/) {
  return FakeBus::get().subscribe(member.raw(), slot);
}

void Connection::signal_unsubscribe(guint subscription_id) {
  FakeBus::get().unsubscribe(subscription_id);
}

}  // namespace Gio::DBus

namespace lumora {
namespace {

/// Read once: a fuzzer makes many objects.
const Glib::RefPtr<Gio::DBus::InterfaceInfo>& interfaceOf(const char* introspection) {
  static std::map<const char*, Glib::RefPtr<Gio::DBus::InterfaceInfo>> known;
  auto& interface = known[introspection];
  if (!interface) {
    const auto node = Gio::DBus::NodeInfo::create_for_xml(introspection);
    interface = Glib::wrap(node->gobj()->interfaces[0], true);
  }
  return interface;
}

}  // namespace

ExportedObject::ExportedObject(BusConnection connection, std::string path,
                               const char* introspection, Members members)
    : connection_(std::move(connection)),
      path_(std::move(path)),
      members_(std::move(members)),
      interface_(interfaceOf(introspection)),
      table_(Gio::DBus::InterfaceVTable::SlotInterfaceMethodCall{}),
      registration_(FakeBus::get().add(path_, {interface_, &members_})) {}

ExportedObject::~ExportedObject() { FakeBus::get().remove(path_); }

void ExportedObject::emit(const Glib::ustring& signal,
                          const Glib::VariantContainerBase& /*arguments*/) {
  test::expect(g_dbus_interface_info_lookup_signal(interface_->gobj(), signal.c_str()) != nullptr,
               "a signal is one of the interface");
}

void ExportedObject::announce(const std::vector<Glib::ustring>& changed,
                              const std::vector<Glib::ustring>& invalidated) {
  test::expect(!changed.empty() || !invalidated.empty(), "something has changed");
  for (const auto& name : changed) FakeBus::get().getProperty(path_, name);
}

}  // namespace lumora
