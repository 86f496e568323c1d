// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Wayland/ClicksElsewhere.h"

#include "layer-shell-client-protocol.h"
#include "viewporter-client-protocol.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

namespace lumora {
namespace {

constexpr std::int32_t kPixelBytes = 4;

/// One transparent pixel; null where there is no memory for it.
wl_buffer* transparentPixel(const LayerShell& shell) {
  const int descriptor = ::memfd_create("lumora-transparent", MFD_CLOEXEC);
  if (descriptor < 0) return nullptr;
  wl_buffer* buffer = nullptr;
  if (::ftruncate(descriptor, kPixelBytes) == 0) {
    const WaylandObject<wl_shm_pool> pool(
        wl_shm_create_pool(shell.memory(), descriptor, kPixelBytes));
    buffer = wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, kPixelBytes, WL_SHM_FORMAT_ARGB8888);
  }
  ::close(descriptor);
  return buffer;
}

}  // namespace

/// The pixel, stretched over a screen.
struct ClicksElsewhere::Cover {
  WaylandObject<wl_surface> surface;
  WaylandObject<wp_viewport> viewport;
  std::unique_ptr<LayerSurface> layer;
};

ClicksElsewhere::ClicksElsewhere(LayerShell& shell, std::function<void()> clicked)
    : shell_(shell), transparent_(transparentPixel(shell)) {
  for (QScreen* screen : QGuiApplication::screens()) {
    if (wl_output* output = LayerShell::outputOf(screen)) covers_.push_back(cover(shell, output));
  }
  shell.onPress([this, clicked = std::move(clicked)](const wl_surface* surface) {
    if (isOurs(surface)) clicked();
  });
}

ClicksElsewhere::~ClicksElsewhere() { shell_.onPress({}); }

std::unique_ptr<ClicksElsewhere::Cover> ClicksElsewhere::cover(const LayerShell& shell,
                                                               wl_output* output) {
  auto cover = std::make_unique<Cover>();
  cover->surface.reset(wl_compositor_create_surface(shell.compositor()));
  cover->viewport.reset(wp_viewporter_get_viewport(shell.viewporter(), cover->surface.get()));
  const auto stretch = [this, it = cover.get()](int width, int height) {
    if (width <= 0 || height <= 0) return;
    wl_surface_attach(it->surface.get(), transparent_.get(), 0, 0);
    wl_surface_damage(it->surface.get(), 0, 0, width, height);
    wp_viewport_set_destination(it->viewport.get(), width, height);
    wl_surface_commit(it->surface.get());
  };
  // Without its screen it need not hear anything.
  cover->layer = std::make_unique<LayerSurface>(
      shell, cover->surface.get(), output, LayerSurface::Kind::cover,
      LayerSurface::Callbacks{.configured = stretch, .closed = [] {}});
  cover->layer->cover();
  wl_surface_commit(cover->surface.get());
  return cover;
}

bool ClicksElsewhere::isOurs(const wl_surface* surface) const {
  return std::any_of(covers_.begin(), covers_.end(),
                     [surface](const auto& cover) { return cover->surface.get() == surface; });
}

}  // namespace lumora
