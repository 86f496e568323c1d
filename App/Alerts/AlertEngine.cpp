// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/AlertEngine.h"

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
constexpr double kHealthLow = 80;
// Above the alert's own threshold, so that a reading that wavers around it alerts once.
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

std::string atPercent(const BatteryState& state) { return std::to_string(state.percent) + "%"; }

std::optional<double> healthPercent(const BatteryState& state) {
  if (!state.designCapacity || !state.fullCapacity || *state.designCapacity <= 0) {
    return std::nullopt;
  }
  return static_cast<double>(*state.fullCapacity) / static_cast<double>(*state.designCapacity) *
         100;
}

/// Keeps "healthAlertSent" true to the health seen; the reminder, if it is due now.
std::optional<PendingAlert> runHealth(const AlertEngine::Input& input, DefaultsStore& defaults) {
  const auto health = healthPercent(input.state);
  if (!health) return std::nullopt;
  const bool sent = defaults.boolForKey(kHealthAlertSent);

  if (*health < kHealthLow) {
    if (sent) return std::nullopt;
    if (input.prime) {
      defaults.set(kHealthAlertSent, true);
      return std::nullopt;
    }
    if (!input.prefs.healthEnabled || !input.canDeliver) return std::nullopt;
    defaults.set(kHealthAlertSent, true);
    const std::string rounded = std::to_string(wholeNumber(std::round(*health)));
    return PendingAlert{AlertKind::health, "Battery health is low",
                        "Battery health has fallen to " + rounded + "% of its original capacity."};
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
  if (!input.prime && input.canDeliver) {
    const auto due = [this](AlertKind kind, bool inForce) {
      return inForce && !suppressed.contains(kind);
    };
    const std::int64_t repeats = input.prefs.repeatReminder ? kChargeRepeats : 0;
    if (due(AlertKind::chargeLimit, chargeLimit) && chargeSent <= repeats &&
        (chargeSent == 0 || input.now - chargeLast >= kChargeSpacing)) {
      ++chargeSent;
      chargeLast = input.now;
      alerts.push_back({AlertKind::chargeLimit, "Charge limit reached",
                        "Battery is at " + atPercent(state) + ". Unplug to keep it healthy."});
    }
    if (due(AlertKind::low, low) && !lowSent) {
      lowSent = true;
      alerts.push_back(
          {AlertKind::low, "Low battery", "Battery is at " + atPercent(state) + ". Plug in soon."});
    }
    if (due(AlertKind::lowPower, lowPower) && !lowPowerSent) {
      lowPowerSent = true;
      alerts.push_back({AlertKind::lowPower, "Try Low Power Mode",
                        "Battery is at " + atPercent(state) +
                            ". Turn on Low Power Mode (System Settings, Battery) to stretch it."});
    }
    if (due(AlertKind::tooLong, tooLong) && !longSent) {
      longSent = true;
      const auto hours = wholeNumber((input.now - *input.since).count() / 3600);
      alerts.push_back({AlertKind::tooLong, "Plugged in for a long time",
                        "Plugged in for over " + std::to_string(hours) + " h at " +
                            atPercent(state) + ". Unplug it to let the battery rest."});
    }
  }

  if (auto alert = runHealth(input, defaults)) alerts.push_back(std::move(*alert));
  return alerts;
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
