// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// Takes relative paths out of the environment's XDG_* folders, as the XDG Base Directory
/// convention asks: libraries follow them to wherever the program happens to be started. Call it
/// before any other thread or library asks for a folder.
void ignoreRelativeBaseDirectories();

}  // namespace lumora
