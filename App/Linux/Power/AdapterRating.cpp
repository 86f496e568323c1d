// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/AdapterRating.h"

#include <cmath>
#include <fstream>
#include <string>
#include <system_error>

namespace lumora {
namespace {

// USB's own range: the default 5 V at half an ampere up to the 240 W of USB PD 3.1.
constexpr double kLeastWatts = 2.5;
constexpr double kMostWatts = 240;

template <typename T>
std::optional<T> attribute(const std::filesystem::path& supply, const char* name) {
  std::ifstream file(supply / name);
  T value{};
  return file >> value ? std::optional(value) : std::nullopt;
}

bool isOnline(const std::filesystem::path& supply) {
  // 1 for a fixed, 2 for a programmable voltage.
  return attribute<int>(supply, "online").value_or(0) > 0;
}

}  // namespace

std::optional<int> adapterRating(const std::filesystem::path& powerSupplies) {
  bool anyMains = false;
  bool mainsOnline = false;
  int chargers = 0;
  double watts = 0;
  std::error_code error;
  for (std::filesystem::directory_iterator supply(powerSupplies, error), end;
       !error && supply != end; supply.increment(error)) {
    const auto type = attribute<std::string>(supply->path(), "type");
    if (type == "Mains") {
      anyMains = true;
      mainsOnline = mainsOnline || isOnline(supply->path());
    } else if (type == "USB" && isOnline(supply->path())) {
      ++chargers;
      // Microvolts and microamperes, as for every attribute of the class.
      watts = attribute<double>(supply->path(), "voltage_max").value_or(0) *
              attribute<double>(supply->path(), "current_max").value_or(0) / 1e12;
    }
  }
  if (chargers != 1 || (anyMains && !mainsOnline)) return std::nullopt;
  if (!(watts >= kLeastWatts && watts <= kMostWatts)) return std::nullopt;
  return static_cast<int>(std::lround(watts));
}

}  // namespace lumora
