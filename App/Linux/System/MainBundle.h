// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Bundle.h"

#include <filesystem>

namespace lumora {

/// The bundle of an executable: the folder it lies in, named by the one desktop entry there.
Bundle bundleOf(const std::filesystem::path& executable);

/// The bundle of the running program.
Bundle mainBundle();

}  // namespace lumora
