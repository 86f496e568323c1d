// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/IconPixmaps.h"

#include <cstdint>

namespace lumora {
namespace {

constexpr std::size_t kBytesPerPixel = 4;

bool isWhole(const Icon& icon) {
  return icon.width > 0 && icon.height > 0 &&
         icon.argb.size() == static_cast<std::size_t>(icon.width) *
                                 static_cast<std::size_t>(icon.height) * kBytesPerPixel;
}

}  // namespace

/// In GLib's own terms, because glibmm would make a value of every byte.
Glib::VariantBase iconPixmaps(const std::vector<Icon>& icons) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
  for (const Icon& icon : icons) {
    if (!isWhole(icon)) continue;
    g_variant_builder_add(
        &builder, "(ii@ay)", icon.width, icon.height,
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, icon.argb.data(), icon.argb.size(), 1));
  }
  return Glib::wrap(g_variant_ref_sink(g_variant_builder_end(&builder)));
}

void markUnseen(std::vector<Icon>& icons) {
  constexpr std::uint8_t kSomeBlue = 1;
  for (Icon& icon : icons) {
    for (std::size_t pixel = 0; pixel + kBytesPerPixel <= icon.argb.size();
         pixel += kBytesPerPixel) {
      if (icon.argb[pixel] == 0) icon.argb[pixel + 3] = kSomeBlue;
    }
  }
}

}  // namespace lumora
