// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/DeliveryGate.h"

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

// A battery that was at or below may well be empty.
constexpr std::int64_t kNearlyEmpty = 5;
// UPower asks every 30 seconds: longer than one wrong answer lasts, and told within a minute.
constexpr Seconds kDoubt{55};
constexpr Seconds kRestless{120};
constexpr Seconds kSpacing{300};

}  // namespace

void DeliveryGate::take(const BatteryState& reading, Seconds uptime) {
  if (!reading.hasBattery) {
    // The next one may be another battery.
    percent_.reset();
    fellAt_.reset();
    return;
  }
  if (pluggedIn_ && *pluggedIn_ != reading.pluggedIn) moves_ = {moves_[1], moves_[2], uptime};
  pluggedIn_ = reading.pluggedIn;
  if (reading.percent > 0) {
    fellAt_.reset();
  } else if (percent_ && *percent_ > kNearlyEmpty) {
    fellAt_ = uptime;
  }
  percent_ = reading.percent;
}

Seconds DeliveryGate::holdLeft(Seconds uptime) const {
  return fellAt_ ? std::max(*fellAt_ + kDoubt - uptime, Seconds{0}) : Seconds{0};
}

bool DeliveryGate::admit(AlertKind kind, Seconds uptime) {
  const auto [known, isFirst] = lastCame_.try_emplace(kind, uptime);
  const Seconds before = isFirst ? kNever : std::exchange(known->second, uptime);
  return !isRestless(uptime) || uptime - before >= kSpacing;
}

bool DeliveryGate::isRestless(Seconds uptime) const { return uptime - moves_.front() <= kRestless; }

}  // namespace lumora
