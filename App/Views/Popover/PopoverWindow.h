// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverPlace.h"
#include "Views/Display.h"
#include "Views/ViewsModule.h"

#include <QElapsedTimer>
#include <QWidget>
#include <memory>
#include <optional>

class QScrollArea;

namespace lumora {

class ClicksElsewhere;
class LayerShell;
class LayerSurface;
class ScreenModes;
class PopoverView;

/// The frameless window that holds the popover, at the click and kept on the screen. It is as large
/// as its content, which scrolls where the screen is too low for it. Where windows may be
/// translucent it is round, and the window larger by the shadow around it. It closes when the user
/// turns to something else, and on Esc.
class PopoverWindow : public QWidget {
 public:
  /// How the popover comes to stand at the click.
  enum class Placing {
    itself,  ///< The display lets windows choose their place.
    layer,   ///< The compositor has layers for what belongs to a panel.
    spread,  ///< Neither: the window is transparent and as large as panels let it be, and the
             ///< popover stands in it, so that it hears of most clicks elsewhere, too.
  };

  /// `blends` is asked at each opening whether windows may be translucent; `choosesPlace` tells
  /// whether the display lets them choose their place.
  explicit PopoverWindow(ViewsHost& host, bool (*blends)(const QScreen&) = blendsWindows,
                         bool choosesPlace = !isOnWayland());
  ~PopoverWindow() override;

  /// Shows it at a click, in the tray's coordinates, or where the tray usually is.
  void showAt(std::optional<ScreenPoint> click);

  /// Whether it is shown, or was until less than a double click's time ago, when the user turned
  /// elsewhere: a click on the tray's item closes it first, and then asks for it.
  bool isShownToTheUser() const;

  /// Closes it because the user asked for that; the next click opens it again.
  void hideFromTheUser();

  /// Gives up the window and its picture on the display, until it is shown again.
  void leaveScreen() { destroy(); }

  void setVisible(bool visible) override;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void dress();
  void follow(const QScreen& screen);
  bool isRound() const;
  int reach() const;
  QRect popover() const;
  void fit();
  void clip(const QSize& size);
  void placeInLayer();
  void placeInWindow(const Screen& screen, const QSize& size);
  void dismiss();
  bool enterLayer();

  // Null where there are none.
  std::unique_ptr<LayerShell> layers_;
  // Null where the tray reports clicks as Qt counts.
  std::unique_ptr<ScreenModes> modes_;
  const Placing placing_;
  PopoverView* view_;
  QScrollArea* scroll_;
  bool (*blends_)(const QScreen&);
  std::optional<ScreenPoint> click_;
  // The changes of the screen that it was last shown on.
  QMetaObject::Connection following_;
  QElapsedTimer sinceDismissed_;
  // While it is shown in a layer.
  std::unique_ptr<LayerSurface> layer_;
  std::unique_ptr<ClicksElsewhere> clicksElsewhere_;
};

}  // namespace lumora
