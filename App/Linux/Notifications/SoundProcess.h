// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SoundPlayer.h"

#include <filesystem>
#include <string>
#include <utility>

#include <glibmm.h>

namespace lumora {

/// The file of a named sound in a folder of sounds; its name cannot lead out of the folder.
std::filesystem::path soundFile(const std::filesystem::path& folder, const NamedSound& sound);

/// The freedesktop.org name of the sound for a message that arrives.
inline constexpr const char* kMessageSound = "message-new-instant";

/// Plays each sound in a process of its own, which ends with the sound: the libraries that it takes
/// are larger than this whole program, and connecting to a sound server may take its time. While
/// four are held up no more are begun.
class SoundProcess final : public SoundPlayer, public sigc::trackable {
 public:
  /// `program` is the one of SoundProgram.cpp; `sounds` holds the named sounds as "NAME.oga".
  SoundProcess(std::filesystem::path program, std::filesystem::path sounds)
      : program_(std::move(program)), sounds_(std::move(sounds)) {}

  void play(const NotificationSound& sound) override;

 private:
  void start(const std::string& option, const std::string& value);
  void onEnded(Glib::Pid process, int status);

  std::filesystem::path program_;
  std::filesystem::path sounds_;
  int playing_ = 0;
};

}  // namespace lumora
