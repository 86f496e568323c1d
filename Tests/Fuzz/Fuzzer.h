// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

#include <string_view>

namespace lumora::test {

/// What a fuzzer does with one input, which may be anything. Every fuzzer defines its own; it keeps
/// nothing for the next input.
void fuzz(std::string_view input);

/// The moment at which every input is looked at.
inline constexpr Date kNow = dateSince1970(1'700'000'000);

/// Ends the fuzzer, which keeps the input, unless the rule holds.
void expect(bool holds, const char* rule);

}  // namespace lumora::test
