// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/OwnFrame.h"

#include "Views/Controls/DrawnButton.h"
#include "Views/Style/OwnControls.h"
#include "Views/Style/WindowFrame.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Fonts.h"

#include <QDockWidget>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWindow>

namespace lumora {
namespace {

constexpr int kBarHeight = 40;

}  // namespace

OwnFrame::OwnFrame(QWidget& window)
    : QObject(&window), window_(window), close_(new DrawnButton(drawClose, closeSize, &window)) {
  // Qt keeps the hint only where nothing asks for a part of the desktop's frame.
  window.setWindowFlags((window.windowFlags() & Qt::WindowType_Mask) | Qt::FramelessWindowHint);
  window.setAttribute(Qt::WA_TranslucentBackground);
  window.setContentsMargins(kShadowReach, kShadowReach + kBarHeight, kShadowReach, kShadowReach);
  window.installEventFilter(this);
  // The toolkit has a translation of it.
  close_->setAccessibleName(QDockWidget::tr("Close"));
  // As in other frames: the keyboard has Esc.
  close_->setFocusPolicy(Qt::NoFocus);
  connect(close_, &QAbstractButton::clicked, &window, &QWidget::close);
}

bool OwnFrame::isAround(const QWidget& window) {
  return window.windowFlags().testFlag(Qt::FramelessWindowHint);
}

/// Of the window all but its shadow.
QRect OwnFrame::framed() const {
  return window_.rect().adjusted(kShadowReach, kShadowReach, -kShadowReach, -kShadowReach);
}

QRect OwnFrame::bar() const {
  QRect bar = framed();
  bar.setHeight(kBarHeight);
  return bar;
}

bool OwnFrame::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Paint:
      paint();
      break;
    case QEvent::Resize:
      placeButton();
      break;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
      window_.update(bar());
      break;
    case QEvent::MouseButtonPress: {
      const auto* press = static_cast<QMouseEvent*>(event);
      if (press->button() == Qt::LeftButton && bar().contains(press->pos())) {
        window_.windowHandle()->startSystemMove();
      }
      break;
    }
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void OwnFrame::placeButton() {
  const QSize size = close_->sizeHint();
  const int gap = (kBarHeight - size.height()) / 2;
  close_->setGeometry(QStyle::alignedRect(window_.layoutDirection(),
                                          Qt::AlignRight | Qt::AlignVCenter, size,
                                          bar().adjusted(gap, 0, -gap, 0)));
}

void OwnFrame::paint() {
  QPainter painter(&window_);
  const QPalette& palette = window_.palette();
  drawRoundFrame(painter, framed(), palette);
  painter.setFont(fontFor(TextRole::headline));
  const auto color = window_.isActiveWindow() ? TextColor::primary : TextColor::secondary;
  painter.setPen(textColor(color, palette));
  const QRect text = bar().adjusted(kBarHeight, 0, -kBarHeight, 0);
  painter.drawText(
      text, Qt::AlignCenter,
      painter.fontMetrics().elidedText(window_.windowTitle(), Qt::ElideRight, text.width()));
}

}  // namespace lumora
