// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/PowerProfiles.h"

#include <utility>

namespace lumora {

PowerProfiles::PowerProfiles()
    : current_(*this, "org.freedesktop.UPower.PowerProfiles",
               "/org/freedesktop/UPower/PowerProfiles"),
      former_(*this, "net.hadess.PowerProfiles", "/net/hadess/PowerProfiles") {}

PowerProfiles::Name::Name(PowerProfiles& theOwner, const char* busName, const char* path)
    : owner(theOwner),
      grace([this] { owner.update(*this, std::nullopt); }),
      watch(
          Gio::DBus::BusType::SYSTEM, busName, ServiceWatch::Start::ifRunning,
          [this, busName, path](const BusConnection& connection) {
            const auto take = [this](const Glib::VariantBase& told) {
              const auto profile = valueUnder<Glib::ustring>("ActiveProfile", told).raw();
              if (profile.empty()) return;
              grace.cancel();
              owner.update(*this, profile);
            };
            // The interface is called as the name is.
            properties =
                std::make_unique<ObjectProperties>(connection, busName, path, busName, take, take);
          },
          [this] {
            properties.reset();
            if (activeProfile) grace.begin();
          }) {}

bool PowerProfiles::isEnabled() const {
  const auto& profile = current_.activeProfile ? current_.activeProfile : former_.activeProfile;
  return profile == "power-saver";
}

void PowerProfiles::observe(std::function<void()> changed) { changed_ = std::move(changed); }

void PowerProfiles::update(Name& name, std::optional<std::string> activeProfile) {
  const bool before = isEnabled();
  name.activeProfile = std::move(activeProfile);
  if (isEnabled() != before && changed_) changed_();
}

}  // namespace lumora
