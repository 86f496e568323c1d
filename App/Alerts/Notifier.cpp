// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/Notifier.h"

#include "Base/Texts.h"
#include "Preferences/SoundNames.h"

#include <utility>

namespace lumora {
namespace {

constexpr const char* kCategory = "LM_ALERT";
constexpr const char* kSnooze = "SNOOZE";

constexpr std::size_t kContinue = 0;

Dialog explanation() {
  return {translated("Allow notifications?"),
          // TRANSLATORS: Say what en.po says.
          translated("Lumora uses notifications to remind you to unplug at your chosen charge "
                     "level, when the battery is low, and when you have been plugged in too long. "
                     "macOS will ask for permission next."),
          // TRANSLATORS: The buttons below "Allow notifications?": this one allows them ...
          {translatedIn("Allow notifications?", "Continue"),
           // TRANSLATORS: ... and with this one the question comes again another time.
           translatedIn("Allow notifications?", "Not Now")}};
}

NotificationSound notificationSound(const std::string& name) {
  if (name == kNoSoundName) return Silence{};
  if (name == kDefaultSoundName) return DefaultSound{};
  return NamedSound{name};
}

}  // namespace

bool Notifier::available() const {
  return bundle_.location.extension() == ".app" && bundle_.identifier.has_value();
}

/// What may be called on any thread and even after this object's end: `task` then runs on the main
/// thread, or not at all.
std::function<void()> Notifier::onMainThread(std::function<void()> task) {
  return [&runLoop = runLoop_, guarded = lifetime_.guard(std::move(task))] {
    runLoop.runSoon(guarded);
  };
}

void Notifier::setup() {
  if (!available()) return;
  const auto snooze = onMainThread([this] {
    if (onSnooze) onSnooze();
  });
  centre_.setResponseHandler([snooze](const std::string& action, const auto& completionHandler) {
    if (action == kSnooze) snooze();
    completionHandler();
  });
  centre_.setCategories({{kCategory, {{kSnooze, translated("Snooze 1 hour")}}}});
}

void Notifier::requestIfNeeded(AskUser askUser) {
  if (!available()) return;
  const auto requestAuthorization = onMainThread([this] { centre_.requestAuthorization(); });
  const auto explain = onMainThread([requestAuthorization, askUser = std::move(askUser)] {
    askUser(explanation(), [requestAuthorization](std::size_t button) {
      if (button == kContinue) requestAuthorization();
    });
  });
  centre_.authorizationStatus([explain](AuthorizationStatus status) {
    if (status == AuthorizationStatus::notDetermined) explain();
  });
}

void Notifier::post(const PendingAlert& alert, const std::string& sound,
                    NotificationCentre::StillSo stillSo) {
  if (!available()) return;
  centre_.add({.identifier = std::string(rawValue(alert.kind)),
               .title = alert.title,
               .body = alert.body,
               .categoryIdentifier = kCategory,
               .sound = notificationSound(sound)},
              std::move(stillSo));
}

}  // namespace lumora
