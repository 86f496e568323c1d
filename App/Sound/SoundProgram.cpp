// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Plays one sound through the desktop's event-sound library and ends with it:
// lumora_sound event NAME | file PATH

#include <future>
#include <memory>
#include <string>

#include <canberra.h>
#include <unistd.h>

namespace {

// Longer than any event sound takes, a server that hangs included.
constexpr unsigned kLongestSeconds = 15;

void onFinished(ca_context* /*context*/, std::uint32_t /*id*/, int /*error*/, void* finished) {
  static_cast<std::promise<void>*>(finished)->set_value();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  alarm(kLongestSeconds);
  const char* key = std::string(argv[1]) == "event" ? CA_PROP_EVENT_ID : CA_PROP_MEDIA_FILENAME;

  std::promise<void> finished;
  ca_context* context = nullptr;
  if (ca_context_create(&context) != CA_SUCCESS) return 1;
  // Destroyed before the promise: no call comes later.
  const std::unique_ptr<ca_context, decltype(&ca_context_destroy)> owner(context,
                                                                         ca_context_destroy);
  ca_proplist* properties = nullptr;
  if (ca_proplist_create(&properties) != CA_SUCCESS) return 1;
  const std::unique_ptr<ca_proplist, decltype(&ca_proplist_destroy)> propertiesOwner(
      properties, ca_proplist_destroy);
  ca_proplist_sets(properties, CA_PROP_APPLICATION_NAME, "Lumora");
  ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
  ca_proplist_sets(properties, key, argv[2]);
  if (ca_context_play_full(context, 0, properties, onFinished, &finished) != CA_SUCCESS) return 1;
  finished.get_future().wait();
}
