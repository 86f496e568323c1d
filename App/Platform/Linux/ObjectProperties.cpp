// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/ObjectProperties.h"

#include <limits>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr int kNoTimeLimit = std::numeric_limits<int>::max();

}  // namespace

ObjectProperties::ObjectProperties(const BusConnection& connection, const Glib::ustring& busName,
                                   const Glib::ustring& path, const Glib::ustring& interface,
                                   Callback fetched, Callback changed)
    : connection_(connection),
      fetched_(std::move(fetched)),
      changes_(connection, {busName, path, kProperties, "PropertiesChanged", interface},
               [changed = std::move(changed)](const Glib::VariantContainerBase& arguments) {
                 changed(argument(arguments, 1));
               }) {
  connection_->call(path, kProperties, "GetAll",
                    Glib::Variant<std::tuple<Glib::ustring>>::create({interface}),
                    sigc::mem_fun(*this, &ObjectProperties::onFetched), busName, kNoTimeLimit,
                    Gio::DBus::CallFlags::NO_AUTO_START);
}

void ObjectProperties::onFetched(const Glib::RefPtr<Gio::AsyncResult>& result) {
  Glib::VariantBase properties;
  try {
    properties = argument(connection_->call_finish(result), 0);
  } catch (const Glib::Error&) {
    // The object or its service is gone; whoever watches them hears that too.
  }
  fetched_(properties);
}

}  // namespace lumora
