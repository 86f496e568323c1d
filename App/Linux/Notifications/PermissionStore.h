// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/BusCall.h"
#include "Platform/NotificationCentre.h"

#include <functional>
#include <string>

namespace lumora {

/// The desktop's record of which programs may notify: table "notifications", entry "notification"
/// of the permission store on the session bus, kept there for the notification portal. Asked at
/// every use. Where there is no such store, or none that answers within two seconds (a timeout),
/// everybody may.
class PermissionStore : public sigc::trackable {
 public:
  using Answer = std::function<void(AuthorizationStatus)>;

  /// `session` is the session bus; absent where there is none. Programs are recorded by their
  /// application ids.
  PermissionStore(BusConnection session, std::string applicationId);

  /// `answer` runs later, but not after this object's end.
  void status(const Answer& answer);

  /// Records that this program may notify; a failure is not noticed.
  void allow();

 private:
  void onLookup(const BusReply& reply, const Answer& answer);

  BusConnection session_;
  std::string applicationId_;
};

}  // namespace lumora
