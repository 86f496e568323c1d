// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Observable.h"
#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Platform/Appearance.h"

#include <list>
#include <optional>
#include <string>

namespace lumora {

/// What the settings portal tells of the user's wishes (namespace org.freedesktop.appearance, and
/// GNOME's for the font and the animations). It is asked at the start, with a timeout of 30 ms, and
/// again without one when a portal appears and when it announces a change; without a portal there
/// are no wishes. GNOME's and Plasma's is started where it does not run.
class DesktopAppearance : public sigc::trackable {
 public:
  /// `session` is the session bus; absent where there is none. `desktop` is what
  /// XDG_CURRENT_DESKTOP says: names with colons between them. The font is GNOME's to tell where
  /// the desktop is GNOME, or a compositor alone, where GTK goes by it and Qt knows none, unless
  /// `toolkitTheme` names a theme that the user has chosen for Qt; others have it told by their own
  /// means.
  DesktopAppearance(const BusConnection& session, const std::string& desktop,
                    const std::string& toolkitTheme);

  Observable<Appearance>& appearance() { return appearance_; }

 private:
  void ask();
  void take(const BusReply& reply);

  BusConnection session_;
  bool takesFont_;
  BusCall readAll_;
  Observable<Appearance> appearance_{Appearance{}};
  std::list<SignalSubscription> settingChanged_;
  std::optional<ServiceWatch> watch_;
};

}  // namespace lumora
