// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"

#include <tuple>

namespace lumora::test {
namespace {

constexpr const char* kName = "org.lumora.Laptop";
constexpr const char* kPath = "/org/lumora/Laptop";
constexpr int kPatience = 120'000;  // milliseconds

template <typename... T>
Glib::VariantContainerBase arguments(const T&... values) {
  return Glib::Variant<std::tuple<T...>>::create({values...});
}

template <typename T>
T field(const Properties& properties, const char* name) {
  const auto found = properties.find(name);
  return found == properties.end() ? T{} : valueOr<T>(found->second);
}

}  // namespace

Laptop::Laptop() : session_(Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION)) {}

Glib::VariantContainerBase Laptop::call(const Glib::ustring& method,
                                        const Glib::VariantContainerBase& arguments) const {
  return session_->call_sync(kPath, kName, method, arguments, kName, kPatience);
}

std::vector<Properties> Laptop::list(const Glib::ustring& method) const {
  return argument<std::vector<Properties>>(call(method), 0);
}

void Laptop::setBattery(const Glib::ustring& name, const Properties& values) const {
  call("SetBattery", arguments(name, values));
}

void Laptop::removeDevice(const Glib::ustring& name) const {
  call("RemoveDevice", arguments(name));
}

void Laptop::setAdapter(bool online) const { call("SetAdapter", arguments(online)); }

void Laptop::addMouse(std::int32_t percent) const { call("AddMouse", arguments(percent)); }

void Laptop::addUps(std::int32_t percent) const { call("AddUps", arguments(percent)); }

void Laptop::start(const Glib::ustring& service) const { call("Start", arguments(service)); }

void Laptop::kill(const Glib::ustring& service) const { call("Kill", arguments(service)); }

void Laptop::hang(const Glib::ustring& service) const { call("Hang", arguments(service)); }

void Laptop::resume(const Glib::ustring& service) const { call("Continue", arguments(service)); }

void Laptop::setProfile(const Glib::ustring& profile) const {
  call("SetProfile", arguments(profile));
}

void Laptop::mockProfiles(const Glib::ustring& former, const Glib::ustring& current) const {
  call("MockProfiles", arguments(former, current));
}

void Laptop::prepareForSleep(bool starting) const { call("PrepareForSleep", arguments(starting)); }

std::vector<Laptop::Inhibitor> Laptop::inhibitors() const {
  std::vector<Inhibitor> inhibitors;
  for (const Properties& told : list("Inhibitors")) {
    inhibitors.push_back({.what = field<Glib::ustring>(told, "what"),
                          .who = field<Glib::ustring>(told, "who"),
                          .mode = field<Glib::ustring>(told, "mode"),
                          .open = field<bool>(told, "open")});
  }
  return inhibitors;
}

void Laptop::refuseInhibit(std::int32_t times) const { call("RefuseInhibit", arguments(times)); }

std::vector<Laptop::Notification> Laptop::notifications() const {
  std::vector<Notification> notifications;
  for (const Properties& told : list("Notifications")) {
    notifications.push_back({.id = field<std::uint32_t>(told, "id"),
                             .replacesId = field<std::uint32_t>(told, "replaces_id"),
                             .icon = field<Glib::ustring>(told, "icon"),
                             .summary = field<Glib::ustring>(told, "summary"),
                             .body = field<Glib::ustring>(told, "body"),
                             .actions = field<std::vector<Glib::ustring>>(told, "actions"),
                             .hints = field<Properties>(told, "hints"),
                             .starts = field<bool>(told, "starts")});
  }
  return notifications;
}

void Laptop::pressAction(std::uint32_t id) const { call("PressAction", arguments(id)); }

void Laptop::dismiss(std::uint32_t id) const { call("Dismiss", arguments(id)); }

void Laptop::mockNotifications(const std::vector<Glib::ustring>& capabilities) const {
  call("MockNotifications", arguments(capabilities));
}

std::vector<Glib::ustring> Laptop::sounds() const {
  return argument<std::vector<Glib::ustring>>(call("Sounds"), 0);
}

void Laptop::mockUPower(bool owned) const { call("MockUPower", arguments(owned)); }

void Laptop::mockSlowUPower(std::chrono::milliseconds delay) const {
  call("MockSlowUPower", arguments(static_cast<std::int32_t>(delay.count())));
}

void Laptop::mockRefusingUPower(std::int32_t times) const {
  call("MockRefusingUPower", arguments(times));
}

void Laptop::setMockProperty(const Glib::ustring& name, const Glib::VariantBase& value) const {
  setNamed("SetMockProperty", name, value);
}

void Laptop::setAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const {
  setNamed("SetAppearance", key, value);
}

void Laptop::announceAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const {
  setNamed("AnnounceAppearance", key, value);
}

void Laptop::offerAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const {
  setNamed("OfferAppearance", key, value);
}

void Laptop::slowAppearance(std::chrono::milliseconds delay) const {
  call("SlowAppearance", arguments(static_cast<std::int32_t>(delay.count())));
}

void Laptop::setNamed(const Glib::ustring& method, const Glib::ustring& name,
                      const Glib::VariantBase& value) const {
  // Written out, because the create of tuples would wrap a variant in another one.
  call(method, Glib::VariantContainerBase::create_tuple(
                   {variant(name), Glib::Variant<Glib::VariantBase>::create(value)}));
}

void Laptop::propertyBurst(std::int32_t count) const { call("PropertyBurst", arguments(count)); }

}  // namespace lumora::test
