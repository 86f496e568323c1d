// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Linux/Bus/Variants.h"
#include "Linux/Notifications/PermissionStore.h"
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
/// that plays sounds gets the sound as a hint; for any other it is played here. What no server took
/// is kept for the next one that comes.
class DesktopNotifications final : public NotificationCentre, public sigc::trackable {
 public:
  struct Identity {
    std::string applicationId;
    std::filesystem::path sounds;  ///< The folder of the named sounds.
    std::filesystem::path icon;    ///< The picture beside a notification.
  };

  /// `session` is the session bus; absent where there is none: nothing is shown then. The others
  /// must outlive this.
  DesktopNotifications(BusConnection session, Identity identity, PermissionStore& permissions,
                       SoundPlayer& player);

  void setResponseHandler(ResponseHandler handler) override;
  void setCategories(std::vector<NotificationCategory> categories) override;
  void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
  void requestAuthorization() override;
  void add(NotificationRequest request, StillSo stillSo) override;

 private:
  using Capabilities = std::set<std::string>;

  struct Pending {
    NotificationRequest request;
    StillSo stillSo;
    // Starts no server: one that a request brings down would be started again without end.
    bool isLate = false;
  };

  void add(Pending added);
  void begin();
  void next();
  void onAuthorization(AuthorizationStatus status);
  void onCapabilities(const BusReply& reply);
  void notify();
  ServiceWatch::Start start() const;
  void onNotified(const BusReply& reply);
  void playUnless(bool notToDisturb, const NotificationSound& sound);
  void onAction(std::uint32_t id, const std::string& action);
  void onClosed(std::uint32_t id);
  void close(std::uint32_t id);
  void onOwnerChanged(const std::string& owner);
  void keep();
  void showKept();

  Properties hintsFor(const NotificationSound& sound) const;
  std::vector<Glib::ustring> actionsFor(const std::string& categoryIdentifier) const;

  BusConnection session_;
  Identity identity_;
  PermissionStore& permissions_;
  SoundPlayer& player_;

  ResponseHandler responseHandler_;
  std::vector<NotificationCategory> categories_;
  // The first one is on its way while `busy_`.
  std::deque<Pending> requests_;
  bool busy_ = false;
  // No server took these: the newest of each identifier, in their order.
  std::vector<Pending> kept_;
  // A server has come since the first one of the requests was sent.
  bool serverCame_ = false;
  std::optional<Capabilities> capabilities_;
  std::map<std::string, std::uint32_t> ids_;

  std::optional<SignalSubscription> actionInvoked_;
  std::optional<SignalSubscription> notificationClosed_;
  std::optional<SignalSubscription> ownerChanged_;
};

}  // namespace lumora
