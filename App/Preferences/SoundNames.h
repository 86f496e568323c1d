// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace lumora {

/// The notification sound that the desktop has as its own.
inline constexpr const char* kDefaultSoundName = "default";

/// Silence.
inline constexpr const char* kNoSoundName = "none";

/// The other sounds that a reminder can have, as they are shown and stored; each is a file
/// "NAME.oga" of the bundle.
inline constexpr std::array kSoundNames = {"Glass", "Ping", "Hero",   "Submarine", "Funk",
                                           "Basso", "Blow", "Bottle", "Frog",      "Morse",
                                           "Pop",   "Purr", "Sosumi", "Tink"};

}  // namespace lumora
