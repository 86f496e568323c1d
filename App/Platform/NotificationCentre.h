// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace lumora {

struct NotificationAction {
  std::string identifier;
  std::string title;

  bool operator==(const NotificationAction&) const = default;
};

/// A kind of notification and the buttons it carries.
struct NotificationCategory {
  std::string identifier;
  std::vector<NotificationAction> actions;

  bool operator==(const NotificationCategory&) const = default;
};

struct Silence {
  bool operator==(const Silence&) const = default;
};

/// The desktop's own sound for a message.
struct DefaultSound {
  bool operator==(const DefaultSound&) const = default;
};

/// One of the named sounds; a name that names no sound is silent.
struct NamedSound {
  std::string name;

  bool operator==(const NamedSound&) const = default;
};

using NotificationSound = std::variant<Silence, DefaultSound, NamedSound>;

struct NotificationRequest {
  /// A request with the identifier of one still shown replaces it.
  std::string identifier;
  std::string title;
  std::string body;
  std::string categoryIdentifier;
  NotificationSound sound;

  bool operator==(const NotificationRequest&) const = default;
};

enum class AuthorizationStatus { notDetermined, denied, authorized };

/// The desktop's notifications. Nothing here waits, and no failure is reported.
class NotificationCentre {
 public:
  /// Whether a notification is still right. Asked on the main thread, just before it is shown.
  using StillSo = std::function<bool()>;

  /// Hears that the user picked an action of a notification, on any thread. `completionHandler` is
  /// to be called once the answer is taken.
  using ResponseHandler = std::function<void(const std::string& actionIdentifier,
                                             const std::function<void()>& completionHandler)>;

  virtual ~NotificationCentre() = default;

  virtual void setResponseHandler(ResponseHandler handler) = 0;

  /// Makes these the categories there are, in place of any others.
  virtual void setCategories(std::vector<NotificationCategory> categories) = 0;

  /// Tells whether the user lets this program notify; `answer` comes later, on any thread.
  virtual void authorizationStatus(std::function<void(AuthorizationStatus)> answer) = 0;

  /// Asks for leave to show alerts and play sounds; the system remembers the outcome.
  virtual void requestAuthorization() = 0;

  /// Shows a notification as soon as can be, unless the user has denied it or it is no longer right
  /// then. While nobody is there to show it, the newest one of each identifier is kept for who
  /// comes next.
  virtual void add(NotificationRequest request, StillSo stillSo) = 0;
};

}  // namespace lumora
