// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Preferences/AlertKind.h"
#include "Preferences/DefaultsStore.h"
#include "Preferences/SoundNames.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

/// The user's settings as they were when read. Nothing is checked or clamped: the ranges are the
/// settings window's. Each field is stored under its own name (see `Setting`), a sound under
/// `soundKey`.
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
      {AlertKind::chargeLimit, kDefaultSoundName}, {AlertKind::low, kDefaultSoundName},
      {AlertKind::tooLong, kDefaultSoundName},     {AlertKind::health, kDefaultSoundName},
      {AlertKind::lowPower, kDefaultSoundName},
  };

  bool operator==(const Prefs&) const = default;

  /// Whether `date` falls into the quiet hours, which may wrap past midnight. An empty window
  /// (start equal to end) is never quiet.
  bool inQuietHours(Date date) const;

  /// What the store answers for each key that the user never set.
  static const DefaultsStore::Values& defaults();

  /// A fresh snapshot.
  static Prefs current(DefaultsStore& store);

  /// The end of the snooze; absent when there is none or it lies not after `now`.
  static std::optional<Date> snoozeUntil(DefaultsStore& store, Date now);

  /// Absent clears it. It outlives the process.
  static void setSnoozeUntil(DefaultsStore& store, std::optional<Date> until);
};

/// A setting: its key in the defaults store and its field in the snapshot.
template <typename T>
struct Setting {
  const char* key;
  T Prefs::*field;
};

inline constexpr Setting<bool> kLimitEnabled{"limitEnabled", &Prefs::limitEnabled};
inline constexpr Setting<bool> kRepeatReminder{"repeatReminder", &Prefs::repeatReminder};
inline constexpr Setting<bool> kLowEnabled{"lowEnabled", &Prefs::lowEnabled};
inline constexpr Setting<bool> kLongEnabled{"longEnabled", &Prefs::longEnabled};
inline constexpr Setting<bool> kHealthEnabled{"healthEnabled", &Prefs::healthEnabled};
inline constexpr Setting<bool> kQuietEnabled{"quietEnabled", &Prefs::quietEnabled};
inline constexpr Setting<bool> kLowPowerEnabled{"lowPowerEnabled", &Prefs::lowPowerEnabled};
inline constexpr Setting<bool> kShowPercent{"showPercent", &Prefs::showPercent};
inline constexpr Setting<bool> kShowTime{"showTime", &Prefs::showTime};
inline constexpr Setting<std::int64_t> kLowPowerAt{"lowPowerAt", &Prefs::lowPowerAt};
inline constexpr Setting<std::int64_t> kLimit{"limit", &Prefs::limit};
inline constexpr Setting<std::int64_t> kLow{"low", &Prefs::low};
inline constexpr Setting<std::int64_t> kLongHours{"longHours", &Prefs::longHours};
inline constexpr Setting<std::int64_t> kQuietStart{"quietStart", &Prefs::quietStart};
inline constexpr Setting<std::int64_t> kQuietEnd{"quietEnd", &Prefs::quietEnd};

/// All settings but the sounds, by type: what is not listed here is neither registered nor read.
inline constexpr std::array kSwitches = {kLimitEnabled,    kRepeatReminder, kLowEnabled,
                                         kLongEnabled,     kHealthEnabled,  kQuietEnabled,
                                         kLowPowerEnabled, kShowPercent,    kShowTime};
inline constexpr std::array kNumbers = {kLowPowerAt, kLimit,      kLow,
                                        kLongHours,  kQuietStart, kQuietEnd};

/// The key of a kind's sound: "limitSound", "lowSound", "longSound", "healthSound",
/// "lowPowerSound".
std::string_view soundKey(AlertKind kind);

}  // namespace lumora
