// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/UPower.h"

#include "Platform/Linux/AdapterRating.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.UPower";
constexpr const char* kPath = "/org/freedesktop/UPower";
constexpr const char* kInterface = "org.freedesktop.UPower";
constexpr const char* kDeviceInterface = "org.freedesktop.UPower.Device";
constexpr int kNoTimeLimit = std::numeric_limits<int>::max();

}  // namespace

UPower::UPower(std::filesystem::path powerSupplies)
    : powerSupplies_(std::move(powerSupplies)),
      grace_([this] { onGraceOver(); }),
      changes_([this] { publish(); }),
      watch_(
          Gio::DBus::BusType::SYSTEM, kName, ServiceWatch::Start::onDemand,
          [this](const BusConnection& connection) { onAppeared(connection); },
          [this] { onVanished(); }) {}

void UPower::whenReady(std::chrono::milliseconds patience, std::function<void()> ready) {
  ready_ = std::move(ready);
  Glib::signal_timeout().connect(sigc::mem_fun(*this, &UPower::onPatienceOver),
                                 static_cast<unsigned>(patience.count()));
}

std::optional<std::vector<Dictionary>> UPower::descriptions() {
  return powerSourceDescriptions(published_);
}

std::optional<Dictionary> UPower::registryEntry() const {
  return batteryRegistryEntry(published_, adapterWatts_);
}

bool UPower::observe(std::function<void()> changed) {
  changed_ = std::move(changed);
  return true;
}

void UPower::onAppeared(const BusConnection& connection) {
  connection_ = connection;
  devices_.clear();
  enumerated_ = complete_ = false;
  added_ = std::make_unique<SignalSubscription>(
      connection, SignalSubscription::Source{kName, kPath, kInterface, "DeviceAdded"},
      [this](const Glib::VariantContainerBase& arguments) {
        addDevice(argument<Glib::DBusObjectPathString>(arguments, 0));
      });
  removed_ = std::make_unique<SignalSubscription>(
      connection, SignalSubscription::Source{kName, kPath, kInterface, "DeviceRemoved"},
      [this](const Glib::VariantContainerBase& arguments) {
        removeDevice(argument<Glib::DBusObjectPathString>(arguments, 0));
      });
  if (enumeration_) enumeration_->cancel();
  enumeration_ = Gio::Cancellable::create();
  connection->call(kPath, kInterface, "EnumerateDevices", {},
                   sigc::mem_fun(*this, &UPower::onEnumerated), enumeration_, kName, kNoTimeLimit,
                   Gio::DBus::CallFlags::NO_AUTO_START);
}

void UPower::onVanished() {
  if (enumeration_) enumeration_->cancel();
  added_.reset();
  removed_.reset();
  devices_.clear();
  enumerated_ = complete_ = false;
  if (ready_) std::exchange(ready_, nullptr)();
  if (!connection_) return;
  grace_.begin();
  askForStart();
}

void UPower::onEnumerated(const Glib::RefPtr<Gio::AsyncResult>& result) {
  try {
    const auto reply = connection_->call_finish(result);
    for (const auto& path : argument<std::vector<Glib::DBusObjectPathString>>(reply, 0)) {
      addDevice(path);
    }
  } catch (const Glib::Error&) {
    // Gone or replaced in the meantime; its watcher has taken care.
    return;
  }
  enumerated_ = true;
  checkComplete();
}

void UPower::addDevice(const std::string& path) {
  if (path.empty() || devices_.contains(path)) return;
  devices_[path].properties = std::make_unique<ObjectProperties>(
      connection_, kName, path, kDeviceInterface,
      [this, path](const Glib::VariantBase& properties) {
        devices_[path].fetched = true;
        update(path, properties);
        checkComplete();
      },
      [this, path](const Glib::VariantBase& properties) { update(path, properties); });
}

void UPower::removeDevice(const std::string& path) {
  if (devices_.erase(path) == 0) return;
  changes_.changed();
  checkComplete();
}

void UPower::update(const std::string& path, const Glib::VariantBase& properties) {
  UPowerDevice& told = devices_[path].told;
  const UPowerDevice before = told;
  told.update(properties);
  if (told != before) changes_.changed();
}

void UPower::checkComplete() {
  if (complete_ || !enumerated_) return;
  complete_ = std::all_of(devices_.begin(), devices_.end(),
                          [](const auto& device) { return device.second.fetched; });
  if (!complete_) return;
  grace_.cancel();
  // At the start somebody waits for the first account; a later one comes with its changes.
  if (ready_) {
    publish();
    std::exchange(ready_, nullptr)();
  } else {
    changes_.changed();
  }
}

void UPower::publish() {
  if (!complete_) return;
  std::vector<UPowerDevice> told;
  for (const auto& [path, device] : devices_) {
    if (device.fetched) told.push_back(device.told);
  }
  published_ = std::move(told);
  adapterWatts_ = adapterRating(powerSupplies_);
  if (changed_) changed_();
}

bool UPower::onPatienceOver() {
  if (ready_) std::exchange(ready_, nullptr)();
  return false;
}

void UPower::onGraceOver() {
  published_.clear();
  adapterWatts_.reset();
  if (changed_) changed_();
}

/// It ran before, so it should run again; nobody else may need it.
void UPower::askForStart() {
  connection_->call("/org/freedesktop/DBus", "org.freedesktop.DBus", "StartServiceByName",
                    Glib::Variant<std::tuple<Glib::ustring, std::uint32_t>>::create({kName, 0}), {},
                    "org.freedesktop.DBus");
}

}  // namespace lumora
