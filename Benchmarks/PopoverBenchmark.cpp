// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// From the request to the first frame that can be seen on the screen, as a click has it: the first
// time the module of the views is loaded, later it is there. Run it in the simulated laptop, whose
// screen is empty: popover_benchmark MODULE

#include "Month.h"
#include "Views/FakeHost.h"
#include "ViewsLoader.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

#include <giomm.h>
#include <xcb/xcb.h>

namespace lumora::benchmark {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kOpenings = 50;

/// The screen as another program sees it.
class Screen {
 public:
  Screen() : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
  }

  /// Whether something is drawn in the corner where the popover opens.
  bool isPainted() const {
    constexpr int kX = 1100;
    constexpr int kY = 60;
    const auto cookie =
        xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_, kX, kY, 4, 4, ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&free)> image(
        xcb_get_image_reply(connection_.get(), cookie, nullptr), free);
    if (!image) return false;
    const std::uint8_t* bytes = xcb_get_image_data(image.get());
    return std::any_of(bytes, bytes + 3, [](std::uint8_t byte) { return byte != 0; });
  }

 private:
  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
  xcb_window_t root_;
};

double milliseconds(Clock::duration duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

double middle(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + kOpenings / 2, times.end());
  return times[kOpenings / 2];
}

int measure(const char* module) {
  test::FakeHost host;
  host.setBattery(73);
  host.clock.time = std::chrono::system_clock::now();
  host.setHistory(monthOfSamples(host.now()));
  host.model().refresh(AppModel::Reason::launch);
  ViewsLoader loader(module, host);
  const Screen screen;
  const auto context = Glib::MainContext::get_default();
  const auto turnUntil = [&](const std::function<bool()>& condition) {
    while (!condition()) context->iteration(false);
  };

  double first = 0;
  std::vector<double> later;
  std::vector<double> rested;
  for (int i = 0; i <= 2 * kOpenings; ++i) {
    const auto start = Clock::now();
    host.model().refresh(AppModel::Reason::change);
    Views* views = loader.load();
    if (views == nullptr) {
      std::fputs("the views cannot be loaded\n", stderr);
      return 1;
    }
    views->showPopover(std::nullopt);
    turnUntil([&] { return screen.isPainted(); });
    const double taken = milliseconds(Clock::now() - start);
    if (i == 0) {
      first = taken;
    } else {
      (i <= kOpenings ? later : rested).push_back(taken);
    }
    views->closePopover();
    turnUntil([&] { return !screen.isPainted(); });
    if (i >= kOpenings) views->rest();
  }
  std::printf("first opening          %6.1f ms  at most 60\n", first);
  std::printf("later, middle          %6.1f ms  at most 16\n", middle(later));
  std::printf("after a rest, middle   %6.1f ms  at most 16\n", middle(rested));
  return first <= 60 && middle(later) <= 16 && middle(rested) <= 16 ? 0 : 1;
}

}  // namespace
}  // namespace lumora::benchmark

int main(int argc, char** argv) {
  Gio::init();
  return argc < 2 ? 2 : lumora::benchmark::measure(argv[1]);
}
