// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/TimeText.h"

#include <cmath>
#include <string_view>

#include <glibmm.h>
#include <langinfo.h>

namespace lumora {

std::string timeOfDayText(Date date) {
  constexpr double kLastRepresentable = 9.0e15;
  const double seconds = secondsSince1970(date);
  if (!(std::abs(seconds) < kLastRepresentable)) return {};

  const std::string_view locales = nl_langinfo(T_FMT);
  const bool twelveHours = locales.find("%r") != std::string_view::npos ||
                           locales.find("%p") != std::string_view::npos ||
                           locales.find("%I") != std::string_view::npos;
  const auto moment = Glib::DateTime::create_now_local(static_cast<std::int64_t>(seconds));
  return moment ? moment.format(twelveHours ? "%-I:%M %p" : "%H:%M").raw() : std::string();
}

}  // namespace lumora
