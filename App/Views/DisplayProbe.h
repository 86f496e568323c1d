// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// Whether a window can be shown. Qt ends the process where it finds no display or one that
/// refuses, so this asks first. Where Wayland does not answer but X11 does, Qt is told to use that.
bool displayAnswers();

}  // namespace lumora
