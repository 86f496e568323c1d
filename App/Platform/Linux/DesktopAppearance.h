// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Observable.h"
#include "Platform/Appearance.h"
#include "Platform/Linux/SignalSubscription.h"

#include <optional>

namespace lumora {

/// What the settings portal tells of the user's wishes (namespace org.freedesktop.appearance). It
/// is asked once, for at most a blink, and heard from then on; without a portal there are no
/// wishes.
class DesktopAppearance {
 public:
  /// `session` is the session bus; absent where there is none.
  explicit DesktopAppearance(const BusConnection& session);

  Observable<Appearance>& appearance() { return appearance_; }

 private:
  void take(const Glib::ustring& key, const Glib::VariantBase& value);

  Observable<Appearance> appearance_{Appearance{}};
  std::optional<SignalSubscription> settingChanged_;
};

}  // namespace lumora
