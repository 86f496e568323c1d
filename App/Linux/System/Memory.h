// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// Has large blocks given back to the system as soon as they are free: by default the allocator
/// keeps some megabytes after the first save of a long history. To be called before all else.
void giveLargeBlocksBack();

/// Gives back what this process can have again: code and constants of the program and its
/// libraries, which lie in their files, and what the allocator has free. What is needed again comes
/// back page by page. For the moments after something large has happened that may not happen again
/// soon.
void giveBackMemory();

}  // namespace lumora
