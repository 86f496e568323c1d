// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "Base/Date.h"
#include "Base/Lifetime.h"
#include "Base/Observable.h"
#include "Base/ScreenPoint.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Notifications/DesktopNotifications.h"
#include "Linux/Notifications/PermissionStore.h"
#include "Linux/Notifications/SoundProcess.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/Power/UPower.h"
#include "Linux/Session/AutostartEntry.h"
#include "Linux/Session/DesktopAppearance.h"
#include "Linux/Session/Logind.h"
#include "Linux/System/HangWatch.h"
#include "Linux/System/MainLoop.h"
#include "Linux/System/SystemClock.h"
#include "Linux/Tray/StatusNotifierItem.h"
#include "Module.h"
#include "Platform/Appearance.h"
#include "Platform/Bundle.h"
#include "Platform/LoginItem.h"
#include "Platform/SoundPlayer.h"
#include "Platform/StatusItem.h"
#include "Preferences/DefaultsStore.h"
#include "Storage/Files.h"
#include "Views/ViewsModule.h"
#include "ViewsLoader.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// Owns everything for the life of the program and wires it: the one place that sees all rooms.
class AppDelegate final : public ViewsHost {
 public:
  /// `session` is the session bus; absent where there is none. `files` must outlive this.
  /// `quit` ends the main loop. `displayHung` runs on a thread of its own where the display keeps
  /// the main one for more than a quarter of a minute while windows are in use.
  AppDelegate(BusConnection session, Files& files, std::function<void()> quit,
              std::function<void()> displayHung);

  /// Starts the model as soon as the power sources are known.
  void applicationDidFinishLaunching();

  void applicationWillTerminate();

  /// Shows the popover on a fresh reading, or closes it. Without a display nothing happens.
  void togglePopover(std::optional<ScreenPoint> click);

  /// As the views say; true while there are none.
  bool displayMayComeBack() const;

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
  void watchDisplay();
  void giveBackOnceSettled();
  void makeStatusItem();
  void updateStatusItem();
  StatusItemFace statusItemFace(TextPlace place);
  std::vector<Icon> draw(const DrawnIcon& icon);
  Menu menu();

  BusConnection session_;
  std::function<void()> quit_;
  std::function<void()> displayHung_;
  SystemClock clock_;
  MainLoop runLoop_;
  Files& files_;
  Bundle bundle_;
  DefaultsStore defaults_;
  UPower powerSources_;
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
  // While windows are in use; their end is watched, too.
  std::optional<HangWatch> displayWatch_;
  Module iconModule_;
  ViewsLoader viewsLoader_;
  bool givingBack_ = false;
  Lifetime lifetime_;
};

}  // namespace lumora
