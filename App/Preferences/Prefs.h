// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertKind.h"
#include "Platform/Date.h"
#include "Preferences/DefaultsStore.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace lumora {

/// The user's settings as they were when read. Nothing is checked or clamped: the ranges are the
/// settings window's. Each field is stored under its own name, a sound under `soundKey`.
struct Prefs {
  bool limitEnabled = true;        ///< The charge-limit reminder is on.
  bool repeatReminder = true;      ///< It repeats.
  bool lowEnabled = true;          ///< The low-battery reminder is on.
  bool longEnabled = true;         ///< The plugged-in-too-long reminder is on.
  bool healthEnabled = true;       ///< The battery-health reminder is on.
  bool quietEnabled = false;       ///< Quiet hours are on.
  bool lowPowerEnabled = true;     ///< The suggestion to save power is on.
  std::int64_t lowPowerAt = 30;    ///< It comes below this percent.
  std::int64_t limit = 80;         ///< Charge limit, percent.
  std::int64_t low = 20;           ///< Low-battery threshold, percent.
  std::int64_t longHours = 8;      ///< Hours above the limit before the too-long reminder.
  std::int64_t quietStart = 1320;  ///< Minutes after local midnight; inside the quiet hours.
  std::int64_t quietEnd = 420;     ///< Minutes after local midnight; outside the quiet hours.
  bool showPercent = true;         ///< The status item shows the percent.
  bool showTime = false;           ///< The status item shows the time remaining.
  /// "default", "none" or the name of a sound, by kind.
  std::map<AlertKind, std::string> sounds = {
      {AlertKind::chargeLimit, "default"}, {AlertKind::low, "default"},
      {AlertKind::tooLong, "default"},     {AlertKind::health, "default"},
      {AlertKind::lowPower, "default"},
  };

  bool operator==(const Prefs&) const = default;

  /// Whether `date` falls into the quiet hours, which may wrap past midnight. An empty window
  /// (start equal to end) is never quiet.
  bool inQuietHours(Date date) const;

  /// What the store answers for each of the twenty keys that the user never set.
  static const DefaultsStore::Values& defaults();

  /// A fresh snapshot.
  static Prefs current(DefaultsStore& store);

  /// The end of the snooze; absent when there is none or it lies not after `now`.
  static std::optional<Date> snoozeUntil(DefaultsStore& store, Date now);

  /// Absent clears it. It outlives the process.
  static void setSnoozeUntil(DefaultsStore& store, std::optional<Date> until);
};

/// The key of a kind's sound: "limitSound", "lowSound", "longSound", "healthSound",
/// "lowPowerSound".
std::string_view soundKey(AlertKind kind);

}  // namespace lumora
