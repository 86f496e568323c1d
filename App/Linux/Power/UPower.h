// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/Backoff.h"
#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/ObjectProperties.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Power/ChangeCoalescer.h"
#include "Linux/Power/GracePeriod.h"
#include "Linux/Power/PackHealth.h"
#include "Linux/Power/UPowerDevice.h"
#include "Platform/PowerSources.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// The power sources as UPower tells them on the system bus, kept here so that reading is free.
/// Grace periods: when UPower goes away, what it said last stands for ten seconds. When its account
/// loses the battery, that is told at once, but does not settle for ten seconds: drivers register
/// their battery anew. At the start an account without a battery does not settle for a minute.
class UPower final : public PowerSources, public sigc::trackable {
 public:
  /// `powerSupplies` is the kernel's folder of power supplies.
  explicit UPower(std::filesystem::path powerSupplies = "/sys/class/power_supply");

  /// Runs `ready` once: as soon as UPower has told everything or turned out not to be there, and
  /// after the timeout `patience` at the latest.
  void whenReady(std::chrono::milliseconds patience, std::function<void()> ready);

  std::optional<std::vector<Dictionary>> descriptions() override;
  std::optional<Dictionary> registryEntry() const override;
  Standing standing() const override;
  bool observe(std::function<void()> changed) override;

 private:
  struct Device {
    UPowerDevice told;
    bool fetched = false;
    std::unique_ptr<ObjectProperties> properties;
  };
  using Devices = std::map<std::string, Device>;

  void onAppeared(const BusConnection& connection);
  void onVanished();
  void enumerate();
  void onEnumerated(const BusReply& reply, const Glib::RefPtr<Gio::Cancellable>& enumeration);
  void addDevice(const std::string& path);
  void removeDevice(const std::string& path);
  void update(const std::string& path, const Glib::VariantBase& properties);
  void checkComplete();
  void publish();
  bool onPatienceOver();
  void onGraceOver();
  void askForStart();

  std::filesystem::path powerSupplies_;
  std::function<void()> changed_;
  std::function<void()> ready_;

  BusConnection connection_;
  Glib::RefPtr<Gio::Cancellable> enumeration_;
  Backoff enumerateAgain_{[this] { enumerate(); }};
  std::unique_ptr<SignalSubscription> added_;
  std::unique_ptr<SignalSubscription> removed_;
  Devices devices_;
  bool enumerated_ = false;
  // All devices of this run of UPower have told of themselves, so that none is missing.
  bool complete_ = false;
  GracePeriod grace_;

  PackHealthReader health_;

  // What the devices said when they last were complete: this is what is read.
  PowerSupplies published_;
  // Cleared when an account without one has settled.
  bool hadBattery_ = false;

  ChangeCoalescer changes_;
  ServiceWatch watch_;
};

}  // namespace lumora
