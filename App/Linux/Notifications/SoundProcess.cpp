// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Notifications/SoundProcess.h"

#include <string>
#include <system_error>
#include <vector>

namespace lumora {
namespace {

constexpr int kMostAtOnce = 4;

}  // namespace

std::filesystem::path soundFile(const std::filesystem::path& folder, const NamedSound& sound) {
  return folder / (std::filesystem::path(sound.name).filename().string() + ".oga");
}

void SoundProcess::play(const NotificationSound& sound) {
  if (std::holds_alternative<DefaultSound>(sound)) return start("event", kMessageSound);
  const auto* named = std::get_if<NamedSound>(&sound);
  if (named == nullptr) return;
  const auto file = soundFile(sounds_, *named);
  std::error_code error;
  if (std::filesystem::is_regular_file(file, error)) start("file", file);
}

void SoundProcess::start(const std::string& option, const std::string& value) {
  if (playing_ >= kMostAtOnce) return;
  try {
    Glib::Pid process{};
    Glib::spawn_async({}, std::vector<std::string>{program_, option, value},
                      Glib::SpawnFlags::DO_NOT_REAP_CHILD, {}, &process);
    ++playing_;
    Glib::signal_child_watch().connect(sigc::mem_fun(*this, &SoundProcess::onEnded), process);
  } catch (const Glib::Error&) {
    // No process is to be had: no sound.
  }
}

void SoundProcess::onEnded(Glib::Pid process, int /*status*/) {
  Glib::spawn_close_pid(process);
  --playing_;
}

}  // namespace lumora
