// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/Prefs.h"

#include "Base/LocalTime.h"

namespace lumora {
namespace {

constexpr const char* kSnoozeUntil = "snoozeUntil";

DefaultsStore::Values registrationTable() {
  const Prefs prefs;
  DefaultsStore::Values table;
  for (const auto& [key, field] : kSwitches) table.emplace(key, prefs.*field);
  for (const auto& [key, field] : kNumbers) table.emplace(key, prefs.*field);
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
  Prefs prefs;
  for (const auto& [key, field] : kSwitches) prefs.*field = store.boolForKey(key);
  for (const auto& [key, field] : kNumbers) prefs.*field = store.integerForKey(key);
  for (auto& [kind, sound] : prefs.sounds) {
    sound = store.stringForKey(soundKey(kind)).value_or(kDefaultSoundName);
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
