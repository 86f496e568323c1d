// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/Notifier.h"

#include <utility>

namespace lumora {
namespace {

constexpr const char* kCategory = "LM_ALERT";
constexpr const char* kSnooze = "SNOOZE";

const Dialog kExplanation = {
    "Allow notifications?",
    "Lumora uses notifications to remind you to unplug at your chosen charge level, when the "
    "battery is low, and when you have been plugged in too long. macOS will ask for permission "
    "next.",
    {"Continue", "Not Now"}};
constexpr std::size_t kContinue = 0;

NotificationSound notificationSound(const std::string& name) {
  if (name == "none") return Silence{};
  if (name == "default") return DefaultSound{};
  return NamedSound{name};
}

}  // namespace

bool Notifier::available() const {
  return bundle_.location.extension() == ".app" && bundle_.identifier.has_value();
}

/// Answers come on any thread and perhaps after this object's end.
template <typename Task>
void Notifier::runSoonIfAlive(Task task) {
  runLoop_.runSoon([alive = std::weak_ptr(alive_), task = std::move(task)] {
    if (!alive.expired()) task();
  });
}

void Notifier::setup() {
  if (!available()) return;
  centre_.setResponseHandler([this](const std::string& action, const auto& completionHandler) {
    if (action == kSnooze) {
      runSoonIfAlive([this] {
        if (onSnooze) onSnooze();
      });
    }
    completionHandler();
  });
  centre_.setCategories({{kCategory, {{kSnooze, "Snooze 1 hour"}}}});
}

void Notifier::requestIfNeeded(AskUser askUser) {
  if (!available()) return;
  centre_.authorizationStatus([this, askUser = std::move(askUser)](AuthorizationStatus status) {
    if (status != AuthorizationStatus::notDetermined) return;
    runSoonIfAlive([this, askUser] {
      askUser(kExplanation, [this](std::size_t button) {
        if (button == kContinue) centre_.requestAuthorization();
      });
    });
  });
}

void Notifier::post(const PendingAlert& alert, const std::string& sound) {
  if (!available()) return;
  centre_.add({.identifier = std::string(rawValue(alert.kind)),
               .title = alert.title,
               .body = alert.body,
               .categoryIdentifier = kCategory,
               .sound = notificationSound(sound)});
}

}  // namespace lumora
