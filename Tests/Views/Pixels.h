// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>
#include <QVariantAnimation>
#include <QWidget>
#include <algorithm>
#include <cstdlib>

namespace lumora::test {

/// How far two colours are apart, 0 to 255: the part in which they differ most.
inline int distance(const QColor& one, const QColor& other) {
  return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                   std::abs(one.blue() - other.blue())});
}

/// How many pixels of two pictures of one size differ enough to be seen.
inline int differences(const QImage& one, const QImage& other) {
  constexpr int kSeen = 40;
  int count = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      count += distance(one.pixelColor(x, y), other.pixelColor(x, y)) > kSeen ? 1 : 0;
    }
  }
  return count;
}

/// Whether a pixel within `reach` of a place is `alike` the colour: no further apart.
inline bool hasNear(const QImage& image, QPoint place, const QColor& color, int reach = 1,
                    int alike = 24) {
  const QRect area =
      QRect(place - QPoint(reach, reach), place + QPoint(reach, reach)) & image.rect();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (distance(image.pixelColor(x, y), color) <= alike) return true;
    }
  }
  return false;
}

/// Has what moves in a widget arrive.
inline void arrive(QWidget& widget) {
  for (auto* way : widget.findChildren<QVariantAnimation*>()) {
    if (way->state() != QVariantAnimation::Stopped) way->setCurrentTime(way->totalDuration());
  }
}

/// A widget as it looks now, once nothing moves any more.
inline QImage picture(QWidget& widget) {
  QCoreApplication::processEvents();
  arrive(widget);
  return widget.grab().toImage();
}

/// The desktop's font in another size, until it goes out of scope.
class ScopedFontSize {
 public:
  explicit ScopedFontSize(double points) {
    QFont larger = usual_;
    larger.setPointSizeF(points);
    QApplication::setFont(larger);
    QCoreApplication::processEvents();
  }
  ~ScopedFontSize() {
    QApplication::setFont(usual_);
    QCoreApplication::processEvents();
  }
  ScopedFontSize(const ScopedFontSize&) = delete;
  ScopedFontSize& operator=(const ScopedFontSize&) = delete;

 private:
  QFont usual_ = QApplication::font();
};

}  // namespace lumora::test
