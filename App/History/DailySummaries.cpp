// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/DailySummaries.h"

#include "Base/LocalTime.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace lumora {
namespace {

struct Acc {
  double w = 0;    // total weight, seconds
  double sum = 0;  // weight times percent
  std::int64_t lo = 100;
  std::int64_t hi = 0;
  double chg = 0;  // charging weight, seconds
};

/// The calendar day of one sample after the other; the calendar is asked once a day.
class CalendarDay {
 public:
  double startFor(double time) {
    if (time < start_ || time >= end_) {
      start_ = secondsSince1970(startOfDay(dateSince1970(time)));
      end_ = secondsSince1970(startOfDay(dateSince1970(time), 1));
    }
    return start_;
  }

 private:
  double start_ = 0;
  double end_ = 0;
};

DaySummary summary(double day, const Acc& acc) {
  return {.day = dateSince1970(day),
          .avgPercent = acc.w > 0 ? std::llround(acc.sum / acc.w) : acc.hi,
          .minPercent = acc.lo,
          .maxPercent = acc.hi,
          .chargingMinutes = static_cast<std::int64_t>(acc.chg / 60)};
}

}  // namespace

std::vector<DaySummary> summarizeDays(std::span<const Sample> samples) {
  std::map<double, Acc, std::greater<>> days;
  CalendarDay calendarDay;
  Acc* acc = nullptr;
  double accDay = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const Sample& sample = samples[i];
    const double day = calendarDay.startFor(sample.t);
    if (acc == nullptr || day != accDay) {
      acc = &days[day];
      accDay = day;
    }
    acc->lo = std::min(acc->lo, sample.p);
    acc->hi = std::max(acc->hi, sample.p);
    if (i + 1 == samples.size()) break;
    const double duration = samples[i + 1].t - sample.t;
    if (!(duration > 0 && duration <= kLongestKnownSpan)) continue;
    acc->w += duration;
    acc->sum += duration * static_cast<double>(sample.p);
    if (sample.c) acc->chg += duration;
  }

  std::vector<DaySummary> summaries;
  summaries.reserve(days.size());
  for (const auto& [day, sums] : days) summaries.push_back(summary(day, sums));
  return summaries;
}

}  // namespace lumora
