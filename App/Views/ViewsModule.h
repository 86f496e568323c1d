// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel.h"
#include "Platform/Appearance.h"
#include "Platform/ScreenPoint.h"

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
  virtual Observable<Appearance>& appearance() = 0;
  virtual void openSettings() = 0;
  virtual void quit() = 0;
};

/// The windows of the program.
class Views {
 public:
  virtual ~Views() = default;

  virtual bool popoverShown() const = 0;

  /// Shows the popover at the click; without one, where the desktop's tray usually is.
  virtual void showPopover(std::optional<ScreenPoint> click) = 0;

  virtual void closePopover() = 0;
};

/// The one function that the module of the views exports, by this name and type. Null when there
/// is no display to show anything on; it may be asked again.
inline constexpr const char* kMakeViewsName = "makeLumoraViews";
using MakeViews = Views* (*)(ViewsHost&);

}  // namespace lumora
