// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/ObjectProperties.h"

#include <utility>

namespace lumora {
namespace {

constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

}  // namespace

ObjectProperties::ObjectProperties(const BusConnection& connection, const Glib::ustring& busName,
                                   const Glib::ustring& path, const Glib::ustring& interface,
                                   Callback fetched, Callback changed)
    : fetched_(std::move(fetched)),
      changes_(connection, {busName, path, kProperties, "PropertiesChanged", interface},
               [changed = std::move(changed)](const Glib::VariantContainerBase& arguments) {
                 changed(argument(arguments, 1));
               }) {
  callMethod(connection,
             {.remote = {busName.c_str(), path.c_str(), kProperties},
              .method = "GetAll",
              .arguments = busArguments(interface),
              .timeout = kNoTimeout,
              .start = ServiceWatch::Start::ifRunning},
             sigc::mem_fun(*this, &ObjectProperties::onFetched));
}

void ObjectProperties::onFetched(const BusReply& reply) {
  // After an error the object or its service is gone; whoever watches them hears that too.
  fetched_(reply.succeeded() ? argument(reply.values(), 0) : Glib::VariantBase());
}

}  // namespace lumora
