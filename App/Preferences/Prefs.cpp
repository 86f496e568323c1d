// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/Prefs.h"

#include "Platform/LocalTime.h"

namespace lumora {
namespace {

constexpr const char* kSnoozeUntil = "snoozeUntil";
constexpr const char* kDefaultSound = "default";

DefaultsStore::Values registrationTable() {
  const Prefs prefs;
  DefaultsStore::Values table = {
      {"limitEnabled", prefs.limitEnabled},
      {"repeatReminder", prefs.repeatReminder},
      {"lowEnabled", prefs.lowEnabled},
      {"longEnabled", prefs.longEnabled},
      {"healthEnabled", prefs.healthEnabled},
      {"quietEnabled", prefs.quietEnabled},
      {"lowPowerEnabled", prefs.lowPowerEnabled},
      {"lowPowerAt", prefs.lowPowerAt},
      {"limit", prefs.limit},
      {"low", prefs.low},
      {"longHours", prefs.longHours},
      {"quietStart", prefs.quietStart},
      {"quietEnd", prefs.quietEnd},
      {"showPercent", prefs.showPercent},
      {"showTime", prefs.showTime},
  };
  for (const auto& [kind, sound] : prefs.sounds) table.emplace(soundKey(kind), sound);
  return table;
}

}  // namespace

std::string_view soundKey(AlertKind kind) {
  switch (kind) {
    case AlertKind::chargeLimit:
      return "limitSound";
    case AlertKind::low:
      return "lowSound";
    case AlertKind::tooLong:
      return "longSound";
    case AlertKind::health:
      return "healthSound";
    case AlertKind::lowPower:
      return "lowPowerSound";
  }
  return {};
}

bool Prefs::inQuietHours(Date date) const {
  if (!quietEnabled || quietStart == quietEnd) return false;
  const std::int64_t minute = minutesAfterMidnight(date);
  if (quietStart < quietEnd) return quietStart <= minute && minute < quietEnd;
  return minute >= quietStart || minute < quietEnd;
}

const DefaultsStore::Values& Prefs::defaults() {
  static const DefaultsStore::Values kTable = registrationTable();
  return kTable;
}

Prefs Prefs::current(DefaultsStore& store) {
  store.registerDefaults(defaults());
  store.synchronize();
  Prefs prefs{
      .limitEnabled = store.boolForKey("limitEnabled"),
      .repeatReminder = store.boolForKey("repeatReminder"),
      .lowEnabled = store.boolForKey("lowEnabled"),
      .longEnabled = store.boolForKey("longEnabled"),
      .healthEnabled = store.boolForKey("healthEnabled"),
      .quietEnabled = store.boolForKey("quietEnabled"),
      .lowPowerEnabled = store.boolForKey("lowPowerEnabled"),
      .lowPowerAt = store.integerForKey("lowPowerAt"),
      .limit = store.integerForKey("limit"),
      .low = store.integerForKey("low"),
      .longHours = store.integerForKey("longHours"),
      .quietStart = store.integerForKey("quietStart"),
      .quietEnd = store.integerForKey("quietEnd"),
      .showPercent = store.boolForKey("showPercent"),
      .showTime = store.boolForKey("showTime"),
      .sounds = {},
  };
  for (const AlertKind kind : kAllAlertKinds) {
    prefs.sounds.emplace(kind, store.stringForKey(soundKey(kind)).value_or(kDefaultSound));
  }
  return prefs;
}

std::optional<Date> Prefs::snoozeUntil(DefaultsStore& store, Date now) {
  const Date until = dateSince1970(store.doubleForKey(kSnoozeUntil));
  return now < until ? std::optional(until) : std::nullopt;
}

void Prefs::setSnoozeUntil(DefaultsStore& store, std::optional<Date> until) {
  if (until) {
    store.set(kSnoozeUntil, secondsSince1970(*until));
  } else {
    store.set(kSnoozeUntil, std::int64_t{0});
  }
}

}  // namespace lumora
