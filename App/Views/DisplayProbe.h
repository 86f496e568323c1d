// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// Whether a window can be shown. Qt ends the process where it finds no display or one that
/// refuses, so this asks first: each platform of QT_QPA_PLATFORM, a list with semicolons, in its
/// order, else Wayland and then X11. Where Qt might try another one than the one that answers, the
/// variable is set to that. A display that hangs is waited for two seconds.
bool displayAnswers();

/// The same of the display that Qt uses, once it does.
bool displayStillAnswers();

}  // namespace lumora
