// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "Base/Date.h"
#include "Base/Observable.h"
#include "Base/ScreenPoint.h"
#include "Platform/Appearance.h"
#include "Platform/LoginItem.h"
#include "Platform/SoundPlayer.h"
#include "Preferences/DefaultsStore.h"

#include <optional>

namespace lumora {

/// What the views reach the program through. It outlives them.
class ViewsHost {
 public:
  virtual ~ViewsHost() = default;

  /// What is shown: the readings, the history and the snooze.
  virtual AppModel& model() = 0;

  /// By the wall clock.
  virtual Date now() const = 0;

  /// The user's settings, for the controls that show and change them.
  virtual DefaultsStore& defaults() = 0;

  /// Whether the program starts at login, for the switch that says so.
  virtual LoginItem& loginItem() = 0;

  /// Lets the user hear a sound when it is chosen.
  virtual SoundPlayer& soundPlayer() = 0;

  /// The desktop's looks as they are now, and each change of them. It is looked up at the first
  /// call, which may wait 30 ms for the desktop.
  virtual Observable<Appearance>& appearance() = 0;

  /// Closes the popover and shows the settings window.
  virtual void openSettings() = 0;

  /// Ends the program.
  virtual void quit() = 0;
};

/// The windows of the program.
class Views {
 public:
  virtual ~Views() = default;

  /// Also true right after a click elsewhere closed it: that click may be the one that asks.
  virtual bool popoverShown() const = 0;

  /// Whether the popover or the settings are on the screen.
  virtual bool anyShown() const = 0;

  /// Whether a display that is lost may come back, as a compositor may that crashed; an X server
  /// takes its session along. At any time, also in the middle of anything.
  virtual bool displayMayComeBack() const = 0;

  /// Gives up what only a window on the screen needs, until the next one is shown.
  virtual void rest() = 0;

  /// Shows the popover at the click; without one, where the desktop's tray usually is. Nothing
  /// happens while the display hangs.
  virtual void showPopover(std::optional<ScreenPoint> click) = 0;

  /// Closes it if it is open.
  virtual void closePopover() = 0;

  /// Shows the settings window, or brings it to the front.
  virtual void showSettings() = 0;

  /// Drives the main loop until `stop`: some of what the windows need happens only between the
  /// turns of the toolkit's own loop, such as sending what was said to a Wayland compositor.
  virtual void run() = 0;

  /// Has `run` return, also one that is still to come.
  virtual void stop() = 0;
};

/// The one function that the module of the views exports, by this name and type. Null when there
/// is no display to show anything on; it may be asked again.
inline constexpr const char* kMakeViewsName = "makeLumoraViews";
using MakeViews = Views* (*)(ViewsHost&);

}  // namespace lumora
