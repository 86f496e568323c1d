// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/PopoverView.h"

#include <QElapsedTimer>
#include <QWidget>
#include <optional>

namespace lumora {

/// The frameless window that holds the popover: at the click and kept on the screen where the
/// display lets windows choose their place, else where the compositor puts it. It closes when the
/// user turns to something else, and on Esc.
class PopoverWindow : public QWidget {
 public:
  explicit PopoverWindow(ViewsHost& host);

  void showAt(std::optional<ScreenPoint> click);

  /// Whether it is shown, or was until a moment ago when the user turned elsewhere: a click on the
  /// tray's item closes it first, and then asks for it.
  bool isShownToTheUser() const;

  void hideFromTheUser();

  /// Gives up the window and its picture on the display, until it is shown again.
  void leaveScreen() { destroy(); }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void place();
  void dismiss();

  std::optional<ScreenPoint> click_;
  QElapsedTimer sinceDismissed_;
};

}  // namespace lumora
