// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SoundPlayer.h"

#include <atomic>
#include <filesystem>
#include <memory>

namespace lumora {

/// The file of a named sound in a folder of sounds; its name cannot lead out of the folder.
std::filesystem::path soundFile(const std::filesystem::path& folder, const NamedSound& sound);

/// The desktop's event-sound name for a message that arrives, as in the freedesktop.org sound
/// naming specification.
inline constexpr const char* kMessageSound = "message-new-instant";

/// Plays through the desktop's event-sound library. Each sound has a short-lived thread, because
/// connecting to a sound server may take its time; while several are held up no more are begun.
class CanberraPlayer final : public SoundPlayer {
 public:
  /// `sounds` holds the named sounds as "NAME.oga".
  explicit CanberraPlayer(std::filesystem::path sounds) : sounds_(std::move(sounds)) {}

  void play(const NotificationSound& sound) override;

 private:
  std::filesystem::path sounds_;
  std::shared_ptr<std::atomic<int>> playing_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace lumora
