// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SoundPlayer.h"

#include <vector>

namespace lumora::test {

class FakeSoundPlayer final : public SoundPlayer {
 public:
  void play(const NotificationSound& sound) override { played.push_back(sound); }

  std::vector<NotificationSound> played;
};

}  // namespace lumora::test
