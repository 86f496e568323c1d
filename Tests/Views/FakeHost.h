// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "Support/FakeClock.h"
#include "Support/FakeLoginItem.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakeNotificationCentre.h"
#include "Support/FakePowerSources.h"
#include "Support/FakeRunLoop.h"
#include "Support/FakeSleepEvents.h"
#include "Support/FakeSoundPlayer.h"
#include "Support/MemoryFiles.h"
#include "Views/ViewsModule.h"

#include <optional>
#include <string>
#include <vector>

namespace lumora::test {

/// One sample a minute up to `end`: up to 100 % and down to 20 % again in twelve hours.
std::vector<Sample> minuteSamples(Date end, int minutes);

/// The program as the views see it: a real model on fakes. The model is made at the first use.
class FakeHost final : public ViewsHost {
 public:
  AppModel& model() override;
  Date now() const override { return clock.now(); }
  DefaultsStore& defaults() override { return store; }
  LoginItem& loginItem() override { return login; }
  SoundPlayer& soundPlayer() override { return sounds; }
  Observable<Appearance>& appearance() override { return appearance_; }
  void openSettings() override { calls += "settings "; }
  void quit() override { calls += "quit "; }

  /// What the battery says at the next refresh: these and a battery's usual entries.
  void setBattery(std::int64_t percent, const Dictionary& description = {},
                  const Dictionary& registry = {});

  /// What the history file holds when the model is made.
  void setHistory(const std::vector<Sample>& samples);

  FakeClock clock;
  FakeRunLoop runLoop{clock};
  FakePowerSources powerSources;
  FakeLowPowerMode lowPowerMode;
  FakeSleepEvents sleepEvents;
  FakeNotificationCentre centre;
  MemoryFiles files;
  Bundle bundle{"/Lumora.app", "org.lumora.Test"};
  FakeLoginItem login;
  FakeSoundPlayer sounds;
  DefaultsStore store{files, "/config/defaults.json"};
  std::string calls;

 private:
  Observable<Appearance> appearance_{Appearance{}};
  std::optional<AppModel> model_;
};

}  // namespace lumora::test
