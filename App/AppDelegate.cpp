// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppDelegate.h"

#include "ApplicationId.h"
#include "Platform/Linux/MainBundle.h"

#include <utility>

namespace lumora {
namespace {

constexpr std::chrono::milliseconds kPatienceAtLaunch{2000};

std::filesystem::path settingsFolder() {
  return std::filesystem::path(Glib::get_user_config_dir()) / "Lumora";
}

}  // namespace

AppDelegate::AppDelegate(BusConnection session, std::function<void()> quit)
    : session_(std::move(session)),
      quit_(std::move(quit)),
      bundle_(mainBundle()),
      defaults_(files_, settingsFolder() / "defaults.json"),
      loginItem_(bundle_.location / "lumora", kApplicationId,
                 AutostartEntry::configurationFolders()),
      soundPlayer_(bundle_.location / "lumora_sound", bundle_.location / "Resources" / "sounds"),
      permissions_(session_, kApplicationId),
      notifications_(session_, {kApplicationId, bundle_.location / "Resources" / "sounds"},
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
              .applicationSupport = Glib::get_user_data_dir()}),
      views_(bundle_.location / "lumora_views.so", *this) {}

void AppDelegate::applicationDidFinishLaunching() {
  powerSources_.whenReady(kPatienceAtLaunch, [this] { model_.start(); });
}

void AppDelegate::applicationWillTerminate() { model_.saveHistory(); }

void AppDelegate::togglePopover(std::optional<ScreenPoint> click) {
  Views* views = views_.load();
  if (views == nullptr) return;
  if (views->popoverShown()) {
    views->closePopover();
    return;
  }
  model_.refresh(AppModel::Reason::change);
  views->showPopover(click);
}

Observable<Appearance>& AppDelegate::appearance() {
  if (!appearance_) appearance_.emplace(session_);
  return appearance_->appearance();
}

void AppDelegate::openSettings() {
  Views* views = views_.load();
  if (views == nullptr) return;
  views->closePopover();
  views->showSettings();
}

}  // namespace lumora
