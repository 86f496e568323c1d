// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/CanberraPlayer.h"

#include <chrono>
#include <future>
#include <string>
#include <system_error>
#include <thread>

#include <canberra.h>

namespace lumora {
namespace {

constexpr int kMostAtOnce = 4;
// Longer than any event sound: a server that forgets to say when it ends holds nothing up.
constexpr std::chrono::seconds kLongest{10};

using Properties = std::unique_ptr<ca_proplist, decltype(&ca_proplist_destroy)>;
using Context = std::unique_ptr<ca_context, decltype(&ca_context_destroy)>;

Properties makeProperties() {
  ca_proplist* properties = nullptr;
  ca_proplist_create(&properties);
  return {properties, ca_proplist_destroy};
}

Context makeContext() {
  ca_context* context = nullptr;
  ca_context_create(&context);
  return {context, ca_context_destroy};
}

void onFinished(ca_context* /*context*/, std::uint32_t /*id*/, int /*error*/, void* finished) {
  static_cast<std::promise<void>*>(finished)->set_value();
}

void playToTheEnd(const char* key, const std::string& value) {
  const Properties properties = makeProperties();
  std::promise<void> finished;
  // Destroyed before the promise: no call comes later.
  const Context context = makeContext();
  if (!properties || !context) return;
  ca_context_change_props(context.get(), CA_PROP_APPLICATION_NAME, "Lumora", nullptr);
  ca_proplist_sets(properties.get(), key, value.c_str());
  ca_proplist_sets(properties.get(), CA_PROP_MEDIA_ROLE, "event");
  if (ca_context_play_full(context.get(), 0, properties.get(), onFinished, &finished) ==
      CA_SUCCESS) {
    finished.get_future().wait_for(kLongest);
  }
}

}  // namespace

std::filesystem::path soundFile(const std::filesystem::path& folder, const NamedSound& sound) {
  return folder / (std::filesystem::path(sound.name).filename().string() + ".oga");
}

void CanberraPlayer::play(const NotificationSound& sound) {
  const char* key = CA_PROP_EVENT_ID;
  std::string value = kMessageSound;
  if (std::holds_alternative<Silence>(sound)) return;
  if (const auto* named = std::get_if<NamedSound>(&sound)) {
    key = CA_PROP_MEDIA_FILENAME;
    value = soundFile(sounds_, *named);
    std::error_code error;
    if (!std::filesystem::is_regular_file(value, error)) return;
  }
  if (*playing_ >= kMostAtOnce) return;
  ++*playing_;
  try {
    std::thread([playing = playing_, key, value = std::move(value)] {
      playToTheEnd(key, value);
      --*playing;
    }).detach();
  } catch (const std::system_error&) {
    // No thread is to be had: no sound.
    --*playing_;
  }
}

}  // namespace lumora
