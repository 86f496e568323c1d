// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/TrayIcon.h"

extern "C" __attribute__((visibility("default"))) void lumoraDrawTrayIcon(
    const lumora::DrawnIcon& icon, std::vector<lumora::Icon>& drawn) {
  drawn = lumora::drawTrayIcon(icon);
}
