// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// The program's name on the session bus, of its desktop entry and in the permission store.
inline constexpr const char* kApplicationId = "org.lumora.Lumora";

}  // namespace lumora
