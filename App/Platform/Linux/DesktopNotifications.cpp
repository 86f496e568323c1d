// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopNotifications.h"

#include "Platform/Linux/SoundProcess.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr int kServersChoice = -1;  // how long a notification stays
// A server that hangs shows what it was sent when it goes on; only then is the id known by which
// its button is ours.
constexpr int kNoTimeLimit = std::numeric_limits<int>::max();

Glib::VariantBase hint(const Glib::ustring& text) {
  return Glib::Variant<Glib::ustring>::create(text);
}

}  // namespace

DesktopNotifications::DesktopNotifications(BusConnection session, Identity identity,
                                           PermissionStore& permissions, SoundPlayer& player)
    : session_(std::move(session)),
      identity_(std::move(identity)),
      permissions_(permissions),
      player_(player) {
  if (!session_) return;
  actionInvoked_.emplace(session_, SignalSubscription::Source{kName, kPath, kName, "ActionInvoked"},
                         [this](const Glib::VariantContainerBase& arguments) {
                           onAction(argument<std::uint32_t>(arguments, 0),
                                    argument<Glib::ustring>(arguments, 1));
                         });
  notificationClosed_.emplace(session_,
                              SignalSubscription::Source{kName, kPath, kName, "NotificationClosed"},
                              [this](const Glib::VariantContainerBase& arguments) {
                                onClosed(argument<std::uint32_t>(arguments, 0));
                              });
  ownerChanged_.emplace(
      session_,
      SignalSubscription::Source{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus", "NameOwnerChanged", kName},
      [this](const Glib::VariantContainerBase& /*arguments*/) { forget(); });
}

void DesktopNotifications::setResponseHandler(ResponseHandler handler) {
  responseHandler_ = std::move(handler);
}

void DesktopNotifications::setCategories(std::vector<NotificationCategory> categories) {
  categories_ = std::move(categories);
}

void DesktopNotifications::authorizationStatus(std::function<void(AuthorizationStatus)> answer) {
  permissions_.status(answer);
}

void DesktopNotifications::requestAuthorization() { permissions_.allow(); }

void DesktopNotifications::add(NotificationRequest request) {
  if (!session_) return;
  // One that still waits its turn is replaced where it stands.
  const auto waiting = std::find_if(
      requests_.begin() + (busy_ ? 1 : 0), requests_.end(),
      [&](const NotificationRequest& other) { return other.identifier == request.identifier; });
  if (waiting != requests_.end()) {
    *waiting = std::move(request);
  } else {
    requests_.push_back(std::move(request));
  }
  if (!busy_) begin();
}

/// Takes the first request through its steps: may we notify, what can the server do, show it.
void DesktopNotifications::begin() {
  busy_ = !requests_.empty();
  if (!busy_) return;
  // A slot, because the answer may come after our end.
  permissions_.status(sigc::slot<void(AuthorizationStatus)>(
      sigc::mem_fun(*this, &DesktopNotifications::onAuthorization)));
}

void DesktopNotifications::next() {
  requests_.pop_front();
  begin();
}

void DesktopNotifications::onAuthorization(AuthorizationStatus status) {
  if (status == AuthorizationStatus::denied) return next();
  if (capabilities_) return notify();
  session_->call(kPath, kName, "GetCapabilities", {},
                 sigc::mem_fun(*this, &DesktopNotifications::onCapabilities), kName, kNoTimeLimit);
}

void DesktopNotifications::onCapabilities(const Result& result) {
  try {
    const auto told = argument<std::vector<Glib::ustring>>(session_->call_finish(result), 0);
    capabilities_.emplace(told.begin(), told.end());
  } catch (const Glib::Error&) {
    // A server that does not tell can at least show a title and a body.
  }
  notify();
}

void DesktopNotifications::notify() {
  const NotificationRequest& request = requests_.front();
  const auto shown = ids_.find(request.identifier);
  using Arguments = std::tuple<Glib::ustring, std::uint32_t, Glib::ustring, Glib::ustring,
                               Glib::ustring, std::vector<Glib::ustring>, Properties, std::int32_t>;
  const Arguments arguments = {"Lumora",
                               shown == ids_.end() ? 0 : shown->second,
                               "battery",
                               request.title,
                               request.body,
                               actionsFor(request.categoryIdentifier),
                               hintsFor(request.sound),
                               kServersChoice};
  session_->call(kPath, kName, "Notify", Glib::Variant<Arguments>::create(arguments),
                 sigc::mem_fun(*this, &DesktopNotifications::onNotified), kName, kNoTimeLimit);
}

void DesktopNotifications::onNotified(const Result& result) {
  try {
    const NotificationRequest& request = requests_.front();
    const auto id = argument<std::uint32_t>(session_->call_finish(result), 0);
    if (id != 0) ids_[request.identifier] = id;
    if (!capabilities_ || !capabilities_->contains("sound")) player_.play(request.sound);
  } catch (const Glib::Error&) {
    // Not shown, so nothing is to be heard either.
  }
  next();
}

Properties DesktopNotifications::hintsFor(const NotificationSound& sound) const {
  Properties hints = {{"desktop-entry", hint(identity_.applicationId)}};
  const bool playsSounds = capabilities_ && capabilities_->contains("sound");
  if (!playsSounds || std::holds_alternative<Silence>(sound)) {
    hints.emplace("suppress-sound", Glib::Variant<bool>::create(true));
  } else if (const auto* named = std::get_if<NamedSound>(&sound)) {
    const Glib::ustring file = soundFile(identity_.sounds, *named).string();
    if (file.validate()) hints.emplace("sound-file", hint(file));
  } else {
    hints.emplace("sound-name", hint(kMessageSound));
  }
  return hints;
}

std::vector<Glib::ustring> DesktopNotifications::actionsFor(
    const std::string& categoryIdentifier) const {
  std::vector<Glib::ustring> actions;
  if (!capabilities_ || !capabilities_->contains("actions")) return actions;
  for (const NotificationCategory& category : categories_) {
    if (category.identifier != categoryIdentifier) continue;
    for (const NotificationAction& action : category.actions) {
      actions.insert(actions.end(), {action.identifier, action.title});
    }
  }
  return actions;
}

void DesktopNotifications::onAction(std::uint32_t id, const std::string& action) {
  const bool ours =
      std::any_of(ids_.begin(), ids_.end(), [id](const auto& shown) { return shown.second == id; });
  if (!ours || !responseHandler_) return;
  responseHandler_(action, [this, id] { close(id); });
}

void DesktopNotifications::onClosed(std::uint32_t id) {
  std::erase_if(ids_, [id](const auto& shown) { return shown.second == id; });
}

/// Some servers leave a notification standing after its button was pressed.
void DesktopNotifications::close(std::uint32_t id) {
  session_->call(kPath, kName, "CloseNotification",
                 Glib::Variant<std::tuple<std::uint32_t>>::create({id}), {}, kName, kNoTimeLimit,
                 Gio::DBus::CallFlags::NO_AUTO_START);
}

/// Ids and capabilities are those of one run of one server.
void DesktopNotifications::forget() {
  ids_.clear();
  capabilities_.reset();
}

}  // namespace lumora
