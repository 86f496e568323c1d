// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/TemporaryFolder.h"
#include "Views/DisplayProbe.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumora::test {
namespace {

/// A session of the test's own: no display but those it makes.
class DisplayProbe : public testing::Test {
 protected:
  DisplayProbe() {
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
      before_.insert(name, qgetenv(name));
      qunsetenv(name);
    }
  }

 public:
  ~DisplayProbe() override {
    for (auto entry = before_.cbegin(); entry != before_.cend(); ++entry) {
      if (entry.value().isNull()) {
        qunsetenv(entry.key());
      } else {
        qputenv(entry.key(), entry.value());
      }
    }
    if (compositor_ >= 0) ::close(compositor_);
  }

 protected:
  static bool answers(const char* platforms) {
    qputenv("QT_QPA_PLATFORM", platforms);
    return displayAnswers();
  }

  /// The file of Qt's that has this platform in it.
  static std::filesystem::path installedPlugin(const char* platform, const QStringList& paths) {
    for (const QString& path : paths) {
      for (const QFileInfo& file : QDir(path + "/platforms").entryInfoList({"*.so"}, QDir::Files)) {
        const QJsonObject told = QPluginLoader(file.filePath()).metaData();
        if (told["MetaData"]["Keys"].toArray().contains(platform)) {
          return file.filePath().toStdString();
        }
      }
    }
    return {};
  }

  static QByteArray chosen() { return qgetenv("QT_QPA_PLATFORM"); }

  /// Something that takes connections where a compositor would, and never says a word.
  void startHungCompositor() {
    const std::string path = (folder_.path() / "wayland-1").string();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    path.copy(address.sun_path, path.size());
    compositor_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(compositor_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(::listen(compositor_, 1), 0);
    qputenv("XDG_RUNTIME_DIR", folder_.path().c_str());
    qputenv("WAYLAND_DISPLAY", "wayland-1");
  }

  /// One that answers a client's first request.
  void startCompositor() {
    startHungCompositor();
    answering_ = std::thread([listening = compositor_] {
      const int client = ::accept(listening, nullptr, nullptr);
      // `wl_callback.done` of the object 2.
      constexpr std::array<std::uint32_t, 4> kDone = {2, 12U << 16U, 0, 0};
      std::array<std::uint32_t, 3> request{};
      if (::recv(client, request.data(), sizeof request, MSG_WAITALL) == sizeof request &&
          request == std::array<std::uint32_t, 3>{1, 12U << 16U, 2}) {
        EXPECT_EQ(::send(client, kDone.data(), 12, MSG_NOSIGNAL), 12);
      }
      ::close(client);
    });
  }

  /// Something that takes connections where an X server would, and never says a word.
  void startHungXServer() {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    compositor_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(compositor_, reinterpret_cast<const sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(compositor_, 1), 0);
    ASSERT_EQ(::getsockname(compositor_, reinterpret_cast<sockaddr*>(&address), &size), 0);
    // The numbers of displays begin at this port.
    qputenv("DISPLAY", "127.0.0.1:" + QByteArray::number(ntohs(address.sin_port) - 6000));
  }

  void stopAnswering() { answering_.join(); }

  TemporaryFolder plugins_;

 private:
  QHash<const char*, QByteArray> before_;
  TemporaryFolder folder_;
  int compositor_ = -1;
  std::thread answering_;
};

TEST_F(DisplayProbe, FindsNothingWhereThereIsNothing) {
  EXPECT_FALSE(displayAnswers());
  EXPECT_FALSE(answers("wayland;xcb"));
}

TEST_F(DisplayProbe, NeverLeavesToQtWhatItDoesNotKnow) {
  EXPECT_FALSE(answers("nonsense"));
  EXPECT_FALSE(answers("nonsense;also:nonsense"));
  EXPECT_FALSE(answers(";;"));
  EXPECT_FALSE(answers("offscreenish"));
}

TEST_F(DisplayProbe, TakesTheFirstOfAListThatAnswers) {
  EXPECT_TRUE(answers("nonsense;wayland;xcb;offscreen;minimal"));
  EXPECT_EQ(chosen(), "offscreen");
}

TEST_F(DisplayProbe, KeepsTheOptionsOfAPlatform) {
  EXPECT_TRUE(answers("wayland;minimal:debug_backingstore"));
  EXPECT_EQ(chosen(), "minimal:debug_backingstore");
}

TEST_F(DisplayProbe, AsksTheCompositorThatIsChosen) {
  startCompositor();
  EXPECT_TRUE(answers("wayland;xcb"));
  EXPECT_EQ(chosen(), "wayland");
  stopAnswering();
}

TEST_F(DisplayProbe, AsksTheCompositorFirst) {
  startCompositor();
  EXPECT_TRUE(displayAnswers());
  EXPECT_EQ(chosen(), "");
  stopAnswering();
}

TEST_F(DisplayProbe, KnowsAPluginByWhatItTellsAndNotByItsFile) {
  const auto folder = plugins_.path() / "platforms";
  std::filesystem::create_directory(folder);
  const QStringList before = QCoreApplication::libraryPaths();
  QCoreApplication::setLibraryPaths({QString::fromStdString(plugins_.path().string())});
  startCompositor();
  std::ofstream(folder / "libqwayland-generic.so") << "no plugin";
  EXPECT_FALSE(answers("wayland"));
  std::filesystem::copy_file(installedPlugin("wayland", before), folder / "libqsomething.so");
  EXPECT_TRUE(answers("wayland"));
  stopAnswering();
  QCoreApplication::setLibraryPaths(before);
}

TEST_F(DisplayProbe, WaitsForAHungCompositorForAWhile) {
  startHungCompositor();
  EXPECT_FALSE(displayAnswers());
}

TEST_F(DisplayProbe, WaitsForAHungXServerForAWhile) {
  startHungXServer();
  EXPECT_FALSE(answers("xcb"));
}

}  // namespace
}  // namespace lumora::test
