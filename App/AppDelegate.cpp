// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppDelegate.h"

#include "ApplicationId.h"
#include "Platform/Linux/MainBundle.h"

namespace lumora {
namespace {

constexpr std::chrono::milliseconds kPatienceAtLaunch{2000};

std::filesystem::path defaultsFile() {
  return std::filesystem::path(Glib::get_user_config_dir()) / "Lumora" / "defaults.json";
}

}  // namespace

AppDelegate::AppDelegate(const BusConnection& session)
    : bundle_(mainBundle()),
      defaults_(files_, defaultsFile()),
      soundPlayer_(bundle_.location / "Resources" / "sounds"),
      permissions_(session, kApplicationId),
      notifications_(session, {kApplicationId, bundle_.location / "Resources" / "sounds"},
                     permissions_, soundPlayer_),
      model_({.clock = clock_,
              .runLoop = runLoop_,
              .powerSources = powerSources_,
              .lowPowerMode = lowPowerMode_,
              .sleepEvents = sleepEvents_,
              .notificationCentre = notifications_,
              .bundle = bundle_,
              .files = files_,
              .defaults = defaults_,
              .applicationSupport = Glib::get_user_data_dir()}) {}

void AppDelegate::applicationDidFinishLaunching() {
  powerSources_.whenReady(kPatienceAtLaunch, [this] { model_.start(); });
}

void AppDelegate::applicationWillTerminate() { model_.saveHistory(); }

}  // namespace lumora
