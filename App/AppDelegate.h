// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel.h"
#include "Platform/Linux/CanberraPlayer.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/LocalFiles.h"
#include "Platform/Linux/Logind.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/PermissionStore.h"
#include "Platform/Linux/PowerProfiles.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/UPower.h"

namespace lumora {

/// Owns everything for the life of the program and wires it: the one place that sees all rooms.
class AppDelegate {
 public:
  /// `session` is the session bus; absent where there is none.
  explicit AppDelegate(const BusConnection& session);

  /// Starts the model as soon as the power sources are known.
  void applicationDidFinishLaunching();

  void applicationWillTerminate();

 private:
  SystemClock clock_;
  MainLoop runLoop_;
  LocalFiles files_;
  Bundle bundle_;
  DefaultsStore defaults_;
  UPower powerSources_;
  PowerProfiles lowPowerMode_;
  Logind sleepEvents_;
  CanberraPlayer soundPlayer_;
  PermissionStore permissions_;
  DesktopNotifications notifications_;
  AppModel model_;
};

}  // namespace lumora
