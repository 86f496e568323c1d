// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/UPower.h"

#include "Linux/Power/AdapterRating.h"
#include "Linux/System/SystemClock.h"

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.UPower";
constexpr const char* kPath = "/org/freedesktop/UPower";
constexpr const char* kInterface = "org.freedesktop.UPower";
constexpr const char* kDeviceInterface = "org.freedesktop.UPower.Device";
// Until then the driver of the battery may be loaded, and UPower started, at a slow login.
constexpr std::chrono::seconds kStart{60};

}  // namespace

UPower::UPower(std::filesystem::path powerSupplies)
    : powerSupplies_(std::move(powerSupplies)),
      grace_([this] { onGraceOver(); }),
      health_(powerSupplies_, [this] { publish(); }),
      changes_([this] { publish(); }),
      watch_(
          Gio::DBus::BusType::SYSTEM, kName, ServiceWatch::Start::onDemand,
          [this](const BusConnection& connection) { onAppeared(connection); },
          [this] { onVanished(); }) {
  grace_.begin(kStart);
}

void UPower::whenReady(std::chrono::milliseconds patience, std::function<void()> ready) {
  ready_ = std::move(ready);
  Glib::signal_timeout().connect(sigc::mem_fun(*this, &UPower::onPatienceOver),
                                 static_cast<unsigned>(patience.count()));
}

std::optional<std::vector<Dictionary>> UPower::descriptions() {
  // With the readings that are taken anyway: nothing wakes up for it.
  health_.look(SystemClock().sinceBoot());
  return powerSourceDescriptions(published_);
}

std::optional<Dictionary> UPower::registryEntry() const { return batteryRegistryEntry(published_); }

UPower::Standing UPower::standing() const {
  if (!published_.packs.empty()) return Standing::settled;
  if (!complete_ && (hadBattery_ || grace_.isRunning())) return Standing::looking;
  return grace_.isRunning() ? Standing::waiting : Standing::settled;
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
  enumerateAgain_.reset();
  enumerate();
}

void UPower::enumerate() {
  if (enumeration_) enumeration_->cancel();
  enumeration_ = Gio::Cancellable::create();
  callMethod(connection_,
             {.remote = {kName, kPath, kInterface},
              .method = "EnumerateDevices",
              .timeout = kNoTimeout,
              .start = ServiceWatch::Start::ifRunning,
              .cancellable = enumeration_},
             sigc::bind(sigc::mem_fun(*this, &UPower::onEnumerated), enumeration_));
}

void UPower::onVanished() {
  if (enumeration_) enumeration_->cancel();
  enumerateAgain_.reset();
  added_.reset();
  removed_.reset();
  devices_.clear();
  enumerated_ = complete_ = false;
  if (ready_) std::exchange(ready_, nullptr)();
  if (hadBattery_) grace_.begin();
  if (connection_ && !connection_->is_closed()) askForStart();
  connection_.reset();
}

void UPower::onEnumerated(const BusReply& reply,
                          const Glib::RefPtr<Gio::Cancellable>& enumeration) {
  // Where it is gone or replaced its watcher has taken care.
  if (enumeration->is_cancelled()) return;
  const auto paths = reply.value<std::vector<Glib::DBusObjectPathString>>();
  if (!paths) return enumerateAgain_.failed();
  for (const auto& path : *paths) addDevice(path);
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
  // At the start somebody waits for the first account; a later one comes with its changes.
  if (ready_) {
    publish();
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
  health_.take(told, SystemClock().sinceBoot());
  // A worn pack is found worn, and does not become it a moment later.
  if (health_.isAwaited()) return;
  for (UPowerDevice& device : told) health_.correct(device);
  PowerSupplies account = lumora::powerSupplies(told);
  account.adapterWatts = adapterRating(powerSupplies_);
  const bool isNews = account.packs.empty() || account != published_;
  published_ = std::move(account);
  if (!published_.packs.empty()) {
    hadBattery_ = true;
    grace_.cancel();
  } else if (hadBattery_) {
    grace_.begin();
  }
  if (isNews && changed_) changed_();
  if (ready_) std::exchange(ready_, nullptr)();
}

bool UPower::onPatienceOver() {
  if (ready_) std::exchange(ready_, nullptr)();
  return false;
}

void UPower::onGraceOver() {
  if (complete_) {
    hadBattery_ = false;
  } else {
    published_ = {};
  }
  if (changed_) changed_();
}

/// It ran before, so it should run again; nobody else may need it.
void UPower::askForStart() {
  callMethod(connection_, {.remote = kMessageBus,
                           .method = "StartServiceByName",
                           .arguments = busArguments<Glib::ustring, std::uint32_t>(kName, 0)});
}

}  // namespace lumora
