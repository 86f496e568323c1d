// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/BusName.h"

#include <tuple>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr std::uint32_t kDoNotQueue = 4;

}  // namespace

BusName::BusName(BusConnection connection, Glib::ustring name)
    : connection_(std::move(connection)), name_(std::move(name)) {
  connection_->call(
      kBusPath, kBus, "RequestName",
      Glib::Variant<std::tuple<Glib::ustring, std::uint32_t>>::create({name_, kDoNotQueue}), {},
      kBus);
}

BusName::~BusName() {
  connection_->call(kBusPath, kBus, "ReleaseName",
                    Glib::Variant<std::tuple<Glib::ustring>>::create({name_}), {}, kBus);
}

}  // namespace lumora
