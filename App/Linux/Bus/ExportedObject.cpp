// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/ExportedObject.h"

#include "Linux/Bus/Variants.h"

#include <tuple>
#include <utility>

namespace lumora {
namespace {

using Gio::DBus::Error;

Glib::RefPtr<Gio::DBus::InterfaceInfo> firstInterface(const char* introspection) {
  const auto node = Gio::DBus::NodeInfo::create_for_xml(introspection);
  // A reference of our own: giomm hands out the node's.
  return Glib::wrap(node->gobj()->interfaces[0], true);
}

}  // namespace

ExportedObject::ExportedObject(BusConnection connection, std::string path,
                               const char* introspection, Members members)
    : connection_(std::move(connection)),
      path_(std::move(path)),
      members_(std::move(members)),
      interface_(firstInterface(introspection)),
      table_([this](const auto&, const auto&, const auto&, const auto&, const auto& method,
                    const auto& arguments,
                    const auto& invocation) { onCall(method, arguments, invocation); },
             [this](Glib::VariantBase& value, const auto&, const auto&, const auto&, const auto&,
                    const auto& name) { value = property(name); }),
      registration_(connection_->register_object(path_, interface_, table_)) {}

ExportedObject::~ExportedObject() { connection_->unregister_object(registration_); }

void ExportedObject::onCall(const Glib::ustring& method,
                            const Glib::VariantContainerBase& arguments,
                            const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation) {
  Answer answer;
  try {
    const auto found = members_.methods.find(method);
    if (found == members_.methods.end()) throw Error(Error::UNKNOWN_METHOD, method);
    answer = found->second(arguments);
  } catch (const Glib::Error& error) {
    invocation->return_error(error);
    return;
  }
  invocation->return_value(answer.values);
  if (answer.afterwards) answer.afterwards();
}

Glib::VariantBase ExportedObject::property(const Glib::ustring& name) const {
  const auto found = members_.properties.find(name);
  if (found == members_.properties.end()) throw Error(Error::UNKNOWN_PROPERTY, name);
  return found->second();
}

void ExportedObject::emit(const Glib::ustring& signal,
                          const Glib::VariantContainerBase& arguments) {
  send(interface_->gobj()->name, signal, arguments);
}

void ExportedObject::announce(const std::vector<Glib::ustring>& changed,
                              const std::vector<Glib::ustring>& invalidated) {
  Properties values;
  for (const Glib::ustring& name : changed) values.emplace(name, property(name));
  using Arguments = std::tuple<Glib::ustring, Properties, std::vector<Glib::ustring>>;
  send("org.freedesktop.DBus.Properties", "PropertiesChanged",
       Glib::Variant<Arguments>::create({interface_->gobj()->name, values, invalidated}));
}

void ExportedObject::send(const Glib::ustring& interface, const Glib::ustring& signal,
                          const Glib::VariantContainerBase& arguments) {
  try {
    connection_->emit_signal(path_, interface, signal, {}, arguments);
  } catch (const Glib::Error&) {
    // The bus has gone, and with it all who listened.
  }
}

}  // namespace lumora
