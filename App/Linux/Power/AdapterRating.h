// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>

namespace lumora {

/// What the connected adapter is rated for in watts, as far as the kernel tells: the advertised
/// maximum of the one USB-C charger that feeds the machine. Absent for other adapters, for several
/// chargers at once, and where nothing plausible is said. `powerSupplies` is the kernel's folder
/// of them.
std::optional<int> adapterRating(const std::filesystem::path& powerSupplies);

}  // namespace lumora
