// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel.h"
#include "Platform/Appearance.h"
#include "Platform/LoginItem.h"
#include "Platform/ScreenPoint.h"
#include "Platform/SoundPlayer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumora {

/// What the views reach the program through. It outlives them.
class ViewsHost {
 public:
  virtual ~ViewsHost() = default;

  virtual AppModel& model() = 0;
  virtual Date now() const = 0;
  virtual DefaultsStore& defaults() = 0;
  virtual LoginItem& loginItem() = 0;
  virtual SoundPlayer& soundPlayer() = 0;
  virtual Observable<Appearance>& appearance() = 0;
  virtual void openSettings() = 0;
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

  /// Gives up what only a window on the screen needs, until the next one is shown.
  virtual void rest() = 0;

  /// Shows the popover at the click; without one, where the desktop's tray usually is.
  virtual void showPopover(std::optional<ScreenPoint> click) = 0;

  virtual void closePopover() = 0;

  /// Shows the settings window, or brings it to the front.
  virtual void showSettings() = 0;

  /// Drives the main loop until `stop`: some of what the windows need happens only between the
  /// turns of the toolkit's own loop, such as sending what was said to a Wayland compositor.
  virtual void run() = 0;
  virtual void stop() = 0;
};

/// The one function that the module of the views exports, by this name and type. Null when there
/// is no display to show anything on; it may be asked again.
inline constexpr const char* kMakeViewsName = "makeLumoraViews";
using MakeViews = Views* (*)(ViewsHost&);

}  // namespace lumora
