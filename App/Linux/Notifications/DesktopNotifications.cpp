// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Notifications/DesktopNotifications.h"

#include "Linux/Notifications/DoNotDisturb.h"
#include "Linux/Notifications/SoundProcess.h"

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr RemoteInterface kServer{kName, kPath, kName};
constexpr int kServersChoice = -1;  // how long a notification stays

Glib::VariantBase hint(const Glib::ustring& text) {
  return Glib::Variant<Glib::ustring>::create(text);
}

/// Whether another request has the identifier of this one.
auto sameIdentifierAs(const NotificationRequest& request) {
  return [identifier = request.identifier](const auto& other) {
    return other.request.identifier == identifier;
  };
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
  ownerChanged_.emplace(session_,
                        SignalSubscription::Source{kMessageBus.service, kMessageBus.path,
                                                   kMessageBus.name, "NameOwnerChanged", kName},
                        [this](const Glib::VariantContainerBase& arguments) {
                          onOwnerChanged(argument<Glib::ustring>(arguments, 2));
                        });
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

void DesktopNotifications::add(NotificationRequest request, StillSo stillSo) {
  if (session_) add(Pending{std::move(request), std::move(stillSo)});
}

void DesktopNotifications::add(Pending added) {
  // The newest alone is shown.
  std::erase_if(kept_, sameIdentifierAs(added.request));
  // One that still waits its turn is replaced where it stands.
  const auto waiting = std::find_if(requests_.begin() + (busy_ ? 1 : 0), requests_.end(),
                                    sameIdentifierAs(added.request));
  if (waiting != requests_.end()) {
    *waiting = std::move(added);
  } else {
    requests_.push_back(std::move(added));
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
  callMethod(
      session_,
      {.remote = kServer, .method = "GetCapabilities", .timeout = kNoTimeout, .start = start()},
      sigc::mem_fun(*this, &DesktopNotifications::onCapabilities));
}

void DesktopNotifications::onCapabilities(const BusReply& reply) {
  // A server that does not tell can at least show a title and a body.
  if (const auto told = reply.value<std::vector<Glib::ustring>>()) {
    capabilities_.emplace(told->begin(), told->end());
  }
  notify();
}

void DesktopNotifications::notify() {
  // All that was asked before may have taken its time, and so may have the requests in front.
  if (!requests_.front().stillSo()) return next();
  const NotificationRequest& request = requests_.front().request;
  serverCame_ = false;
  const auto shown = ids_.find(request.identifier);
  const auto arguments =
      busArguments<Glib::ustring, std::uint32_t, Glib::ustring, Glib::ustring, Glib::ustring,
                   std::vector<Glib::ustring>, Properties, std::int32_t>(
          "Lumora", shown == ids_.end() ? 0 : shown->second, identity_.icon.string(), request.title,
          request.body, actionsFor(request.categoryIdentifier), hintsFor(request.sound),
          kServersChoice);
  // No timeout: a server that hangs shows the notification once it goes on, and only its reply
  // tells the id by which `ActionInvoked` names our button.
  callMethod(session_,
             {.remote = kServer,
              .method = "Notify",
              .arguments = arguments,
              .timeout = kNoTimeout,
              .start = start()},
             sigc::mem_fun(*this, &DesktopNotifications::onNotified));
}

void DesktopNotifications::onNotified(const BusReply& reply) {
  // Where it was not shown, nothing is to be heard either.
  if (!reply.succeeded()) {
    keep();
  } else {
    const NotificationRequest& request = requests_.front().request;
    const auto id = reply.value<std::uint32_t>().value_or(0);
    if (id != 0) ids_[request.identifier] = id;
    if (!capabilities_ || !capabilities_->contains("sound")) {
      // A server that shows nothing for now does not say so; then nothing is to be heard either.
      askNotToDisturb(session_, sigc::bind(sigc::mem_fun(*this, &DesktopNotifications::playUnless),
                                           request.sound));
    }
  }
  next();
}

void DesktopNotifications::playUnless(bool notToDisturb, const NotificationSound& sound) {
  if (!notToDisturb) player_.play(sound);
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
  callMethod(session_, {.remote = kServer,
                        .method = "CloseNotification",
                        .arguments = busArguments(id),
                        .timeout = kNoTimeout,
                        .start = ServiceWatch::Start::ifRunning});
}

/// Ids and capabilities are those of one run of one server.
void DesktopNotifications::onOwnerChanged(const std::string& owner) {
  ids_.clear();
  capabilities_.reset();
  if (owner.empty()) return;
  serverCame_ = true;
  showKept();
}

/// For the next server, unless a newer one of its identifier waits its turn already.
void DesktopNotifications::keep() {
  Pending& unshown = requests_.front();
  if (std::none_of(requests_.begin() + 1, requests_.end(), sameIdentifierAs(unshown.request))) {
    kept_.push_back(unshown);
  }
  // The one that was asked may have gone only after another had come.
  if (serverCame_) showKept();
}

void DesktopNotifications::showKept() {
  for (Pending& unshown : std::exchange(kept_, {})) {
    unshown.isLate = true;
    add(std::move(unshown));
  }
}

ServiceWatch::Start DesktopNotifications::start() const {
  return requests_.front().isLate ? ServiceWatch::Start::ifRunning : ServiceWatch::Start::onDemand;
}

}  // namespace lumora
