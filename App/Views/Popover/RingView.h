// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverContent.h"
#include "Views/Theme/Glide.h"

#include <QProgressBar>
#include <QSize>
#include <QWidget>
#include <cstdint>

namespace lumora {

/// The charge level as a ring, 104 pixels square. To a screen reader it is a progress bar.
class RingView : public QProgressBar {
 public:
  static constexpr int kSide = 104;

  explicit RingView(QWidget* parent = nullptr);

  /// Fills the ring up to `percent`, 0 to 100, in the tint. Only the arc takes its time.
  void show(std::int64_t percent, Tint tint);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  Tint tint_ = Tint::accent;
  Glide arc_{*this};  // To which percent it is drawn.
};

/// The charge cycles as a thin bar.
class CycleBarView : public QProgressBar {
 public:
  explicit CycleBarView(QWidget* parent = nullptr);

  /// Fills the bar by the cycles' share of those a battery is built for, in their tint.
  void show(const CycleBar& cycles);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Tint tint_ = Tint::accent;
};

/// An empty battery, for where there is none.
class NoBatterySymbol : public QWidget {
 public:
  explicit NoBatterySymbol(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumora
