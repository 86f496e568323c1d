// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PopoverWindow.h"

#include "Views/PopoverPlace.h"
#include "Views/Theme.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace lumora {
namespace {

bool placesItself() { return !QGuiApplication::platformName().startsWith("wayland"); }

/// Null while no monitor is connected.
QScreen* screenAt(const std::optional<ScreenPoint>& click) {
  QScreen* screen = click ? QGuiApplication::screenAt({click->x, click->y}) : nullptr;
  return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

Pointer pointer() {
  const QPoint at = QCursor::pos();
  const QScreen* here = QGuiApplication::screenAt(at);
  if (here == nullptr) here = QGuiApplication::primaryScreen();
  if (here == nullptr) return {};
  // A screen begins at the display's own pixel, and counts in larger ones from there.
  const QPoint corner = here->geometry().topLeft();
  const QPoint pixels = corner + (at - corner) * here->devicePixelRatio();
  return {{at.x(), at.y()}, {pixels.x(), pixels.y()}, here->devicePixelRatio()};
}

}  // namespace

PopoverWindow::PopoverWindow(ViewsHost& host)
    : QWidget(nullptr, (placesItself() ? Qt::Popup : Qt::Window) | Qt::FramelessWindowHint) {
  setWindowTitle("Lumora");
  setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  // Grows and shrinks with its content, and by nothing else.
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(new PopoverView(host));
}

void PopoverWindow::showAt(std::optional<ScreenPoint> click) {
  click_ = click ? clickedAt(*click, pointer()) : std::nullopt;
  place();
  show();
  // What the content needs is known once it is shown.
  place();
  raise();
  activateWindow();
}

void PopoverWindow::place() {
  const QScreen* found = screenAt(click_);
  if (!placesItself() || found == nullptr) return;
  const QRect screen = found->availableGeometry();
  const ScreenPoint corner = popoverPlace(
      click_, {width(), height()}, {screen.x(), screen.y(), screen.width(), screen.height()});
  move(corner.x, corner.y);
}

bool PopoverWindow::isShownToTheUser() const {
  const bool justNow =
      sinceDismissed_.isValid() && sinceDismissed_.elapsed() < QApplication::doubleClickInterval();
  return isVisible() || justNow;
}

void PopoverWindow::hideFromTheUser() {
  sinceDismissed_.invalidate();
  close();
}

void PopoverWindow::dismiss() {
  if (isVisible()) sinceDismissed_.start();
  close();
}

bool PopoverWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate && !placesItself()) dismiss();
  return QWidget::event(event);
}

/// A popup hears of clicks elsewhere, too.
void PopoverWindow::mousePressEvent(QMouseEvent* event) {
  if (!rect().contains(event->pos())) dismiss();
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void PopoverWindow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(troughColor(palette()));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void PopoverWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isVisible()) place();
}

}  // namespace lumora
