// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/TimeText.h"

#include <string_view>

#include <glibmm.h>
#include <langinfo.h>

namespace lumora {

std::string timeOfDayText(Date date) {
  const std::string_view locales = nl_langinfo(T_FMT);
  const bool twelveHours = locales.find("%r") != std::string_view::npos ||
                           locales.find("%p") != std::string_view::npos ||
                           locales.find("%I") != std::string_view::npos;
  const auto moment =
      Glib::DateTime::create_now_local(static_cast<std::int64_t>(secondsSince1970(date)));
  return moment ? moment.format(twelveHours ? "%-I:%M %p" : "%H:%M").raw() : std::string();
}

}  // namespace lumora
