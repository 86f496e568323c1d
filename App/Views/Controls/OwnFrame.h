// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRect>
#include <QWidget>

namespace lumora {

class DrawnButton;

/// The frame of a window that neither the desktop nor the toolkit frames: round, with a shadow, and
/// with a bar that has the window's title and a button that closes it, and by which the window is
/// moved. It lies in margins around the window's content. Made before the window is shown; the
/// window owns it.
class OwnFrame : public QObject {
 public:
  explicit OwnFrame(QWidget& window);

  static bool isAround(const QWidget& window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QRect framed() const;
  QRect bar() const;
  void placeButton();
  void paint();

  QWidget& window_;
  DrawnButton* close_;
};

}  // namespace lumora
