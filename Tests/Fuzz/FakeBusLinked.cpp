// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the program links in place of the real functions: all of it leads to the fake bus.
#include "FakeBus.h"
#include "Fuzzer.h"
#include "Linux/Power/ChangeCoalescer.h"
#include "Linux/System/Background.h"

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

void Connection::call(const Glib::ustring& /*object_path*/, const Glib::ustring& /*interface_name*/,
                      const Glib::ustring& method_name,
                      const Glib::VariantContainerBase& parameters, const SlotAsyncReady& slot,
                      const Glib::RefPtr<Cancellable>& cancellable,
                      const Glib::ustring& /*bus_name*/, int /*timeout_msec*/, CallFlags /*flags*/,
                      const Glib::VariantType& /*reply_type*/) {
  FakeBus::get().onCall({method_name.raw(), parameters, slot, cancellable});
}

Glib::VariantContainerBase Connection::call_sync(const Glib::ustring& /*object_path*/,
                                                 const Glib::ustring& /*interface_name*/,
                                                 const Glib::ustring& method_name,
                                                 const Glib::VariantContainerBase& /*parameters*/,
                                                 const Glib::ustring& /*bus_name*/,
                                                 int /*timeout_msec*/, CallFlags /*flags*/,
                                                 const Glib::VariantType& /*reply_type*/) {
  return FakeBus::get().answerNow(method_name.raw());
}

Glib::VariantContainerBase Connection::call_finish(const Glib::RefPtr<AsyncResult>& /*result*/) {
  return FakeBus::get().takeAnswer();
}

Glib::VariantContainerBase Connection::call_finish(const Glib::RefPtr<AsyncResult>& /*result*/,
                                                   Glib::RefPtr<UnixFDList>& /*out_fd_list*/) {
  return FakeBus::get().takeAnswer();
}

guint Connection::signal_subscribe(const SlotSignal& slot, const Glib::ustring& /*sender*/,
                                   const Glib::ustring& /*interface_name*/,
                                   const Glib::ustring& member, const Glib::ustring& object_path,
                                   const Glib::ustring& /*arg0*/, SignalFlags /*flags*/) {
  return FakeBus::get().subscribe({member.raw(), object_path.raw(), slot});
}

void Connection::signal_unsubscribe(guint subscription_id) {
  FakeBus::get().unsubscribe(subscription_id);
}

guint watch_name(BusType /*bus_type*/, const Glib::ustring& name,
                 const SlotNameAppeared& name_appeared_slot,
                 const SlotNameVanished& name_vanished_slot, BusNameWatcherFlags /*flags*/) {
  return FakeBus::get().watch({name.raw(), name_appeared_slot, name_vanished_slot});
}

void unwatch_name(guint watcher_id) { FakeBus::get().unwatch(watcher_id); }

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

// Without the wait: a change is settled at once.
ChangeCoalescer::ChangeCoalescer(std::function<void()> settled) : settled_(std::move(settled)) {}

ChangeCoalescer::~ChangeCoalescer() = default;

void ChangeCoalescer::changed() { settled_(); }

// Without the thread.
void runInBackground(std::function<void()> work, std::function<void()> done) {
  work();
  done();
}

}  // namespace lumora
