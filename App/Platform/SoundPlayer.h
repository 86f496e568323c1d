// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NotificationCentre.h"

namespace lumora {

/// Plays one short sound. Never waits; without a sound server, or for a name that names no sound,
/// nothing is heard.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  /// Starts to play and returns at once; a sound that cannot be played is silence.
  virtual void play(const NotificationSound& sound) = 0;
};

}  // namespace lumora
