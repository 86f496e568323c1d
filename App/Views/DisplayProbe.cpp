// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/DisplayProbe.h"

#include <QLibraryInfo>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace lumora {
namespace {

std::string variable(const char* name) { return qgetenv(name).toStdString(); }

bool hasPlugin(const char* name) {
  const std::filesystem::path plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString();
  return std::filesystem::exists(plugins / "platforms" / (std::string("libq") + name + ".so"));
}

bool xAnswers() {
  if (variable("DISPLAY").empty() || !hasPlugin("xcb")) return false;
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
      xcb_connect(nullptr, nullptr), xcb_disconnect);
  return xcb_connection_has_error(connection.get()) == 0;
}

bool waylandAnswers() {
  const std::string display = variable("WAYLAND_DISPLAY");
  if (display.empty() || !hasPlugin("wayland-generic")) return false;
  const std::string path = std::filesystem::path(variable("XDG_RUNTIME_DIR")) / display;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) return false;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return false;
  const bool answers =
      ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  ::close(descriptor);
  return answers;
}

}  // namespace

bool displayAnswers() {
  const std::string chosen = variable("QT_QPA_PLATFORM");
  if (chosen.starts_with("offscreen")) return hasPlugin("offscreen");
  if (chosen.starts_with("wayland")) return waylandAnswers();
  if (chosen.starts_with("xcb")) return xAnswers();
  if (waylandAnswers()) return true;
  if (!xAnswers()) return false;
  qputenv("QT_QPA_PLATFORM", "xcb");
  return true;
}

}  // namespace lumora
