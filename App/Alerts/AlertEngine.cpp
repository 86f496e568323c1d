// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/AlertEngine.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Preferences/DefaultsStore.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace lumora {
namespace {

constexpr const char* kHealthAlertSent = "healthAlertSent";
constexpr std::int64_t kChargeRepeats = 3;
// Ten seconds short of five minutes: the fifth one-minute refresh may come a little early.
constexpr Seconds kChargeSpacing{290};
// Hysteresis: from here on the health reminder, due below 80 %, is ready again, so that a reading
// that wavers around 80 % reminds once.
constexpr double kHealthRecovered = 82;

bool chargeLimitInForce(const AlertEngine::Input& input) {
  return input.prefs.limitEnabled && input.state.pluggedIn &&
         input.state.percent >= input.prefs.limit;
}

bool lowInForce(const AlertEngine::Input& input) {
  return input.prefs.lowEnabled && !input.state.pluggedIn && input.state.percent <= input.prefs.low;
}

bool lowPowerInForce(const AlertEngine::Input& input) {
  return input.prefs.lowPowerEnabled && !input.state.pluggedIn &&
         input.state.percent < input.prefs.lowPowerAt && !input.state.lowPowerMode;
}

/// Follows the charge limit also while its own reminder is off.
bool tooLongInForce(const AlertEngine::Input& input) {
  return input.prefs.longEnabled && input.state.pluggedIn &&
         input.state.percent >= input.prefs.limit && input.since &&
         (input.now - *input.since).count() > static_cast<double>(input.prefs.longHours) * 3600;
}

/// Ends the process for a number that no integer can hold: no valid moment gives one.
std::int64_t wholeNumber(double value) {
  if (!(std::abs(value) < 9.2e18)) std::abort();
  return static_cast<std::int64_t>(value);
}

/// Keeps "healthAlertSent" true to the health seen; the reminder, if it is due now.
std::optional<PendingAlert> runHealth(const AlertEngine::Input& input, DefaultsStore& defaults) {
  const auto health = input.state.healthPercent();
  if (!health) return std::nullopt;
  const bool sent = defaults.boolForKey(kHealthAlertSent);

  if (*health < kWornBelowPercent) {
    if (sent) return std::nullopt;
    if (input.prime) {
      defaults.set(kHealthAlertSent, true);
      return std::nullopt;
    }
    if (!input.prefs.healthEnabled || !input.canDeliver) return std::nullopt;
    defaults.set(kHealthAlertSent, true);
    return PendingAlert{AlertKind::health, translated("Battery health is low"),
                        // TRANSLATORS: %1$s is a percentage, "79%".
                        filled(translated("Battery health has fallen to %1$s of its original "
                                          "capacity."),
                               {percentText(wholeNumber(std::round(*health)))})};
  }
  if (*health >= kHealthRecovered && sent) defaults.set(kHealthAlertSent, false);
  return std::nullopt;
}

}  // namespace

std::vector<PendingAlert> AlertEngine::run(const Input& input, DefaultsStore& defaults) {
  const BatteryState& state = input.state;
  if (!state.hasBattery) {
    const Date last = chargeLast;
    *this = AlertEngine{};
    chargeLast = last;
    return {};
  }

  const bool chargeLimit = chargeLimitInForce(input);
  const bool low = lowInForce(input);
  const bool lowPower = lowPowerInForce(input);
  const bool tooLong = tooLongInForce(input);
  arm(AlertKind::chargeLimit, chargeLimit, input.prime);
  arm(AlertKind::low, low, input.prime);
  arm(AlertKind::lowPower, lowPower, input.prime);
  arm(AlertKind::tooLong, tooLong, input.prime);

  std::vector<PendingAlert> alerts;
  const auto alert = [&](AlertKind kind, const char* title, const char* body) {
    alerts.push_back({kind, title, filled(body, {percentText(state.percent)})});
  };
  if (!input.prime && input.canDeliver) {
    const auto due = [this](AlertKind kind, bool inForce) {
      return inForce && !suppressed.contains(kind);
    };
    const std::int64_t repeats = input.prefs.repeatReminder ? kChargeRepeats : 0;
    if (due(AlertKind::chargeLimit, chargeLimit) && chargeSent <= repeats &&
        (chargeSent == 0 || input.now - chargeLast >= kChargeSpacing)) {
      ++chargeSent;
      chargeLast = input.now;
      alert(AlertKind::chargeLimit, translated("Charge limit reached"),
            // TRANSLATORS: %1$s is a percentage, "80%".
            translated("Battery is at %1$s. Unplug to keep it healthy."));
    }
    if (due(AlertKind::low, low) && !lowSent) {
      lowSent = true;
      // TRANSLATORS: The title of the notification.
      alert(AlertKind::low, translatedIn("notification", "Low battery"),
            // TRANSLATORS: %1$s is a percentage, "20%".
            translated("Battery is at %1$s. Plug in soon."));
    }
    if (due(AlertKind::lowPower, lowPower) && !lowPowerSent) {
      lowPowerSent = true;
      // TRANSLATORS: Say what en.po says.
      alert(AlertKind::lowPower, translated("Try Low Power Mode"),
            // TRANSLATORS: Say what en.po says. %1$s is a percentage, "29%".
            translated("Battery is at %1$s. Turn on Low Power Mode (System Settings, Battery) to "
                       "stretch it."));
    }
    if (due(AlertKind::tooLong, tooLong) && !longSent) {
      longSent = true;
      const auto hours = wholeNumber((input.now - *input.since).count() / 3600);
      const char* body = translatedFor(
          // TRANSLATORS: %2$s is a number of hours, "8", and %1$s a percentage, "80%".
          hours, "Plugged in for over %2$s h at %1$s. Unplug it to let the battery rest.",
          "Plugged in for over %2$s h at %1$s. Unplug it to let the battery rest.");
      alerts.push_back({AlertKind::tooLong, translated("Plugged in for a long time"),
                        filled(body, {percentText(state.percent), numberText(hours)})});
    }
  }

  if (auto health = runHealth(input, defaults)) alerts.push_back(std::move(*health));
  return alerts;
}

bool AlertEngine::stillSo(AlertKind kind, const Input& input) const {
  if (!input.state.hasBattery || suppressed.contains(kind)) return false;
  switch (kind) {
    case AlertKind::chargeLimit:
      return chargeLimitInForce(input);
    case AlertKind::low:
      return lowInForce(input);
    case AlertKind::tooLong:
      return tooLongInForce(input);
    case AlertKind::health:
      return input.prefs.healthEnabled &&
             input.state.healthPercent().value_or(100) < kWornBelowPercent;
    case AlertKind::lowPower:
      return lowPowerInForce(input);
  }
  return false;
}

void AlertEngine::arm(AlertKind kind, bool inForce, bool prime) {
  if (!inForce) {
    suppressed.erase(kind);
    endEpisode(kind);
  } else if (prime) {
    suppressed.insert(kind);
  }
}

void AlertEngine::endEpisode(AlertKind kind) {
  switch (kind) {
    case AlertKind::chargeLimit:
      chargeSent = 0;
      break;
    case AlertKind::low:
      lowSent = false;
      break;
    case AlertKind::tooLong:
      longSent = false;
      break;
    case AlertKind::lowPower:
      lowPowerSent = false;
      break;
    case AlertKind::health:
      break;
  }
}

}  // namespace lumora
