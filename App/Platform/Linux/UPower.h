// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/ChangeCoalescer.h"
#include "Platform/Linux/GracePeriod.h"
#include "Platform/Linux/ObjectProperties.h"
#include "Platform/Linux/ServiceWatch.h"
#include "Platform/Linux/UPowerDevice.h"
#include "Platform/PowerSources.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace lumora {

/// The power sources as UPower tells them on the system bus, kept here so that reading is free.
/// When UPower goes away, what it said last stands for some seconds: it may just be restarting.
class UPower final : public PowerSources, public sigc::trackable {
 public:
  /// `powerSupplies` is the kernel's folder of power supplies.
  explicit UPower(std::filesystem::path powerSupplies = "/sys/class/power_supply");

  /// Runs `ready` once: as soon as UPower has told everything or turned out not to be there, and
  /// after `patience` at the latest.
  void whenReady(std::chrono::milliseconds patience, std::function<void()> ready);

  std::optional<std::vector<Dictionary>> descriptions() override;
  std::optional<Dictionary> registryEntry() const override;
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
  void onEnumerated(const Glib::RefPtr<Gio::AsyncResult>& result);
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
  std::unique_ptr<SignalSubscription> added_;
  std::unique_ptr<SignalSubscription> removed_;
  Devices devices_;
  bool enumerated_ = false;
  // All devices of this run of UPower have told of themselves, so that none is missing.
  bool complete_ = false;
  GracePeriod grace_;

  // What the devices said when they last were complete: this is what is read.
  std::vector<UPowerDevice> published_;
  std::optional<int> adapterWatts_;

  ChangeCoalescer changes_;
  ServiceWatch watch_;
};

}  // namespace lumora
