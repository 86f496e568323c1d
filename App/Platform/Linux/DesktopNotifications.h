// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/PermissionStore.h"
#include "Platform/Linux/SignalSubscription.h"
#include "Platform/Linux/Variants.h"
#include "Platform/NotificationCentre.h"
#include "Platform/SoundPlayer.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumora {

/// The notification server of the session (org.freedesktop.Notifications, version 1.2 of its
/// interface). Requests are sent one after the other, so that a later one can replace an
/// earlier one by the id that the server gave it; ids are forgotten when the server goes. A server
/// that plays sounds gets the sound as a hint; for any other it is played here.
class DesktopNotifications final : public NotificationCentre, public sigc::trackable {
 public:
  struct Identity {
    std::string applicationId;
    std::filesystem::path sounds;  ///< The folder of the named sounds.
  };

  /// `session` is the session bus; absent where there is none: nothing is shown then. The others
  /// must outlive this.
  DesktopNotifications(BusConnection session, Identity identity, PermissionStore& permissions,
                       SoundPlayer& player);

  void setResponseHandler(ResponseHandler handler) override;
  void setCategories(std::vector<NotificationCategory> categories) override;
  void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
  void requestAuthorization() override;
  void add(NotificationRequest request) override;

 private:
  using Capabilities = std::set<std::string>;
  using Result = Glib::RefPtr<Gio::AsyncResult>;

  void begin();
  void next();
  void onAuthorization(AuthorizationStatus status);
  void onCapabilities(const Result& result);
  void notify();
  void onNotified(const Result& result);
  void onAction(std::uint32_t id, const std::string& action);
  void onClosed(std::uint32_t id);
  void close(std::uint32_t id);
  void forget();

  Properties hintsFor(const NotificationSound& sound) const;
  std::vector<Glib::ustring> actionsFor(const std::string& categoryIdentifier) const;

  BusConnection session_;
  Identity identity_;
  PermissionStore& permissions_;
  SoundPlayer& player_;

  ResponseHandler responseHandler_;
  std::vector<NotificationCategory> categories_;
  // The first one is on its way while `busy_`.
  std::deque<NotificationRequest> requests_;
  bool busy_ = false;
  std::optional<Capabilities> capabilities_;
  std::map<std::string, std::uint32_t> ids_;

  std::optional<SignalSubscription> actionInvoked_;
  std::optional<SignalSubscription> notificationClosed_;
  std::optional<SignalSubscription> ownerChanged_;
};

}  // namespace lumora
