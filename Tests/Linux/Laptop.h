// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/Variants.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <giomm.h>

namespace lumora::test {

/// The simulated laptop that the test runs in, as its hands: the battery, the adapter and the
/// services do what is asked before a call returns.
class Laptop {
 public:
  /// What the notification server was sent.
  struct Notification {
    std::uint32_t id = 0;  ///< What the server answered.
    std::uint32_t replacesId = 0;
    std::string icon;
    std::string summary;
    std::string body;
    std::vector<Glib::ustring> actions;
    Properties hints;
    bool starts = false;  ///< A server that does not run may be started for it.
  };

  /// What was asked of logind.
  struct Inhibitor {
    std::string what;
    std::string who;
    std::string mode;
    bool open = false;
  };

  Laptop();

  /// As a laptop is at first: one battery at 60 %, discharging, every service running.
  void reset() const { call("Reset"); }

  void setBattery(const Glib::ustring& name, const Properties& values) const;
  void removeDevice(const Glib::ustring& name) const;
  void setAdapter(bool online) const;
  void addMouse(std::int32_t percent) const;
  void addUps(std::int32_t percent) const;

  /// Services: "upower", "profiles", "logind", "permissions", "notifications".
  void start(const Glib::ustring& service) const;
  void kill(const Glib::ustring& service) const;
  void hang(const Glib::ustring& service) const;
  void resume(const Glib::ustring& service) const;

  void setProfile(const Glib::ustring& profile) const;
  /// Has a service with a profile of its own under either of its bus names; "" leaves a name
  /// without owner.
  void mockProfiles(const Glib::ustring& former, const Glib::ustring& current) const;
  void setAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const;
  /// Whether it is so or not.
  void announceAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const;
  /// With a portal that does not run until a program starts it.
  void offerAppearance(const Glib::ustring& key, const Glib::VariantBase& value) const;
  void slowAppearance(std::chrono::milliseconds delay) const;
  void prepareForSleep(bool starting) const;
  std::vector<Inhibitor> inhibitors() const;
  /// Logind hands out no lock for the next so many times.
  void refuseInhibit(std::int32_t times) const;

  std::vector<Notification> notifications() const;
  void pressAction(std::uint32_t id) const;
  void dismiss(std::uint32_t id) const;
  void mockNotifications(const std::vector<Glib::ustring>& capabilities) const;
  std::vector<Glib::ustring> sounds() const;

  void mockUPower(bool owned) const;
  /// One whose battery thinks before it answers; the adapter does not.
  void mockSlowUPower(std::chrono::milliseconds delay) const;
  /// One that does not tell its devices for the first so many times.
  void mockRefusingUPower(std::int32_t times) const;
  void setMockProperty(const Glib::ustring& name, const Glib::VariantBase& value) const;
  void propertyBurst(std::int32_t count) const;

  const Glib::RefPtr<Gio::DBus::Connection>& session() const { return session_; }

 private:
  void setNamed(const Glib::ustring& method, const Glib::ustring& name,
                const Glib::VariantBase& value) const;
  Glib::VariantContainerBase call(const Glib::ustring& method,
                                  const Glib::VariantContainerBase& arguments = {}) const;
  std::vector<Properties> list(const Glib::ustring& method) const;

  Glib::RefPtr<Gio::DBus::Connection> session_;
};

template <typename T>
Glib::VariantBase variant(const T& value) {
  return Glib::Variant<T>::create(value);
}
inline Glib::VariantBase variant(const char* value) { return variant(Glib::ustring(value)); }

}  // namespace lumora::test
