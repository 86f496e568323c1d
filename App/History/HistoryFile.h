// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "History/Sample.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumora {

/// The history file's format: a JSON array with one object per sample, each with the keys "t"
/// (number), "p" (integer), "c" and "a" (booleans). Compact, no version.

/// Absent when a time is not a finite number: JSON has no text for it.
std::optional<std::string> encodeSamples(std::span<const Sample> samples);

/// The samples in the file's order. Any order of keys and any white space will do; further keys are
/// ignored. Absent when the text is no such array: one wrong element fails the whole. `json` keeps
/// its text and may be moved in memory.
std::optional<std::vector<Sample>> decodeSamples(std::string& json);

}  // namespace lumora
