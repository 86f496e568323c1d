// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Contrast.h"

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

/// Relative luminance, 0 for black to 1 for white.
double luminance(const QColor& color) {
  const auto linear = [](float part) {
    return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  constexpr double kFlare = 0.05;
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + kFlare) / (darker + kFlare);
}

QColor over(const QColor& ground, const QColor& color) {
  QColor opaque = color;
  opaque.setAlpha(255);
  return mixed(opaque, ground, color.alphaF());
}

QColor mixed(const QColor& one, const QColor& other, double share) {
  const auto part = [share](int first, int second) {
    return static_cast<int>(std::lround(first * share + second * (1 - share)));
  };
  return {part(one.red(), other.red()), part(one.green(), other.green()),
          part(one.blue(), other.blue())};
}

QColor textOn(const QColor& ground) {
  return contrast(Qt::white, ground) >= 4.5 ? Qt::white : Qt::black;
}

QColor legible(const QColor& color, std::initializer_list<QColor> grounds, double ratio) {
  constexpr int kSteps = 64;
  const auto least = [&grounds](const QColor& on) {
    double lowest = 21;
    for (const QColor& ground : grounds) lowest = std::min(lowest, contrast(on, ground));
    return lowest;
  };
  const QColor end = least(Qt::white) > least(Qt::black) ? Qt::white : Qt::black;
  for (int step = 0; step < kSteps; ++step) {
    const QColor nearer = mixed(end, color, static_cast<double>(step) / kSteps);
    if (least(nearer) >= ratio) return nearer;
  }
  return end;
}

}  // namespace lumora
