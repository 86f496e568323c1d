// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/LayerSurface.h"

#include <functional>
#include <memory>
#include <vector>

namespace lumora {

/// Hears of clicks and touches anywhere outside the popover while it lives, by invisible surfaces
/// over each screen, below the popover: compositors tell a program of no others. Such a click goes
/// to nobody else.
class ClicksElsewhere {
 public:
  ClicksElsewhere(LayerShell& shell, std::function<void()> clicked);
  ~ClicksElsewhere();

  ClicksElsewhere(const ClicksElsewhere&) = delete;
  ClicksElsewhere& operator=(const ClicksElsewhere&) = delete;

 private:
  struct Cover;

  std::unique_ptr<Cover> cover(const LayerShell& shell, wl_output* output);
  bool isOurs(const wl_surface* surface) const;

  LayerShell& shell_;
  WaylandObject<wl_buffer> transparent_;
  std::vector<std::unique_ptr<Cover>> covers_;
};

}  // namespace lumora
