// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel.h"
#include "Battery/SteadyPowerSources.h"
#include "Lifetime.h"
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DesktopAppearance.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/LocalFiles.h"
#include "Platform/Linux/Logind.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/PermissionStore.h"
#include "Platform/Linux/PowerProfiles.h"
#include "Platform/Linux/SoundProcess.h"
#include "Platform/Linux/StatusNotifierItem.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/UPower.h"
#include "ViewsLoader.h"

#include <optional>

namespace lumora {

/// Owns everything for the life of the program and wires it: the one place that sees all rooms.
class AppDelegate final : public ViewsHost {
 public:
  /// `session` is the session bus; absent where there is none.
  /// `quit` ends the main loop.
  AppDelegate(BusConnection session, std::function<void()> quit);

  /// Starts the model as soon as the power sources are known.
  void applicationDidFinishLaunching();

  void applicationWillTerminate();

  /// Shows the popover on a fresh reading, or closes it. Without a display nothing happens.
  void togglePopover(std::optional<ScreenPoint> click);

  /// The desktop's leave to take the focus with the next window.
  static void takeActivationToken(const std::string& token);

  AppModel& model() override { return model_; }
  Date now() const override { return clock_.now(); }
  DefaultsStore& defaults() override { return defaults_; }
  LoginItem& loginItem() override { return loginItem_; }
  SoundPlayer& soundPlayer() override { return soundPlayer_; }
  Observable<Appearance>& appearance() override;
  void openSettings() override;
  void quit() override;

 private:
  Views* views();
  void giveBackOnceSettled();
  void makeStatusItem();
  void updateStatusItem();
  std::vector<Icon> draw(const DrawnIcon& icon);
  Menu menu();

  BusConnection session_;
  std::function<void()> quit_;
  SystemClock clock_;
  MainLoop runLoop_;
  LocalFiles files_;
  Bundle bundle_;
  DefaultsStore defaults_;
  UPower powerSources_;
  SteadyPowerSources steadyPowerSources_{powerSources_, clock_, runLoop_};
  PowerProfiles lowPowerMode_;
  Logind sleepEvents_;
  AutostartEntry loginItem_;
  SoundProcess soundPlayer_;
  PermissionStore permissions_;
  DesktopNotifications notifications_;
  AppModel model_;
  std::optional<StatusNotifierItem> statusItem_;
  std::vector<Subscription> subscriptions_;
  // From the first click on.
  std::optional<DesktopAppearance> appearance_;
  Module iconModule_;
  ViewsLoader viewsLoader_;
  bool givingBack_ = false;
  Lifetime lifetime_;
};

}  // namespace lumora
