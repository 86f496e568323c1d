// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/BusCall.h"

namespace lumora {

/// Asks on the session bus whether the user does not want to be disturbed now, where a desktop says
/// so: Plasma's notification server by its property `Inhibited`, Xfce's settings for theirs. Starts
/// none of them; what does not answer within 25 s does not say so. The answer comes once.
void askNotToDisturb(const BusConnection& session, const sigc::slot<void(bool)>& answer);

}  // namespace lumora
