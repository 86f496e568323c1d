// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/TrayHost.h"

#include <array>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(TextPlace, DependsOnTheProcessOfTheTray) {
  struct Case {
    const char* process;
    TextPlace place;
  };
  constexpr std::array kCases = {
      Case{"gnome-shell", TextPlace::label},
      Case{"ayatana-indicat", TextPlace::label},
      Case{"waybar", TextPlace::wide},
      Case{"mate-panel", TextPlace::wide},
      Case{"notification-ar", TextPlace::wide},
      Case{"xapp-sn-watcher", TextPlace::wide},
      Case{".waybar-wrapped", TextPlace::wide},
      Case{".gnome-shell-wr", TextPlace::label},
      Case{".waybar-wrappe", TextPlace::inside},
      Case{".xfce4-panel-wr", TextPlace::inside},
      Case{"kded5", TextPlace::inside},
      Case{"plasmashell", TextPlace::inside},
      Case{"xfce4-panel", TextPlace::inside},
      Case{"lxqt-panel", TextPlace::inside},
      Case{"budgie-panel", TextPlace::inside},
      Case{"gnome-shell-cal", TextPlace::inside},
      Case{"", TextPlace::inside},
  };
  for (const Case& one : kCases) EXPECT_EQ(textPlaceOf(one.process), one.place) << one.process;
}

}  // namespace
}  // namespace lumora::test
