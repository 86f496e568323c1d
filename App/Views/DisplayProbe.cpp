// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/DisplayProbe.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QStringList>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace lumora {
namespace {

// One that takes longer hangs, and Qt would wait for it for ever.
constexpr std::chrono::seconds kPatience{2};

std::string variable(const char* name) { return qgetenv(name).toStdString(); }

/// The names of the platforms that Qt has plugins for, as the plugins themselves tell: their files
/// are named differently from release to release.
QStringList platforms() {
  QStringList folders;
  for (const QString& path : QCoreApplication::libraryPaths()) folders << path + "/platforms";
  folders << qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH").split(':', Qt::SkipEmptyParts);
  QStringList names;
  for (const QString& folder : folders) {
    for (const QFileInfo& plugin : QDir(folder).entryInfoList({"*.so"}, QDir::Files)) {
      const QJsonObject told = QPluginLoader(plugin.filePath()).metaData();
      for (const QJsonValue name : told["MetaData"]["Keys"].toArray()) names << name.toString();
    }
  }
  return names;
}

bool xConnects() {
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
      xcb_connect(nullptr, nullptr), xcb_disconnect);
  return xcb_connection_has_error(connection.get()) == 0;
}

/// Connecting takes as long as the server likes: a thread that it keeps is left behind.
bool xAnswers() {
  if (variable("DISPLAY").empty()) return false;
  std::packaged_task<bool()> connect(xConnects);
  auto connected = connect.get_future();
  try {
    std::thread(std::move(connect)).detach();
  } catch (const std::system_error&) {
    return false;
  }
  return connected.wait_for(kPatience) == std::future_status::ready && connected.get();
}

/// Asks a compositor to answer when it has come so far, as each of its clients may at any time
/// (`wl_display.sync`).
bool syncs(int compositor) {
  constexpr std::uint32_t kDisplay = 1, kSync = 0, kBytes = 12, kCallback = 2;
  const std::array<std::uint32_t, 3> request = {kDisplay, kBytes << 16U | kSync, kCallback};
  if (::send(compositor, request.data(), kBytes, MSG_NOSIGNAL | MSG_DONTWAIT) != kBytes)
    return false;
  pollfd answer{.fd = compositor, .events = POLLIN, .revents = 0};
  const std::chrono::milliseconds patience = kPatience;
  return ::poll(&answer, 1, static_cast<int>(patience.count())) > 0 &&
         ::recv(compositor, &answer, 1, MSG_PEEK) > 0;
}

bool waylandAnswers() {
  const std::string display = variable("WAYLAND_DISPLAY");
  if (display.empty()) return false;
  const std::string path = std::filesystem::path(variable("XDG_RUNTIME_DIR")) / display;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) return false;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  // Where the queue of those who wait is full, it does not wait itself.
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (descriptor < 0) return false;
  const bool answers =
      ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
      syncs(descriptor);
  ::close(descriptor);
  return answers;
}

/// A platform by its name. Those that are none of a desktop's are not asked: Qt might end the
/// process.
bool answers(const QString& platform) {
  if (platform == "offscreen" || platform == "minimal") return true;
  if (platform.startsWith("wayland")) return waylandAnswers();
  return platform == "xcb" && xAnswers();
}

}  // namespace

bool displayStillAnswers() { return answers(QGuiApplication::platformName()); }

bool displayAnswers() {
  const QStringList known = platforms();
  const auto usable = [&](const QString& entry) {
    // What follows a colon are the platform's own options.
    const QString name = entry.section(':', 0, 0);
    return known.contains(name) && answers(name);
  };
  const QString chosen = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (chosen.isEmpty() && usable("wayland")) return true;
  const QStringList wanted = chosen.isEmpty() ? QStringList{"xcb"} : chosen.split(';');
  const auto found = std::find_if(wanted.begin(), wanted.end(), usable);
  if (found == wanted.end()) return false;
  qputenv("QT_QPA_PLATFORM", found->toUtf8());
  return true;
}

}  // namespace lumora
