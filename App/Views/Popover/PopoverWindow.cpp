// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/PopoverWindow.h"

#include "Content/LayerPlace.h"
#include "Content/PopoverPlace.h"
#include "Views/Display.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Theme/Colors.h"
#include "Views/Wayland/ClicksElsewhere.h"
#include "Views/Wayland/LayerShell.h"
#include "Views/Wayland/LayerSurface.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWindow>

namespace lumora {
namespace {

bool placesItself() { return !isOnWayland(); }

/// What Qt leaves without a place of its own can be given one in a layer.
Qt::WindowFlags flagsOfWindow(bool inLayer) {
  if (placesItself()) return Qt::Popup | Qt::FramelessWindowHint;
  const Qt::WindowFlags frameless = Qt::Window | Qt::FramelessWindowHint;
  return inLayer ? frameless | Qt::BypassWindowManagerHint : frameless;
}

ScreenRect rectOf(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

/// Null while no monitor is connected.
QScreen* monitorAt(const std::optional<ScreenPoint>& click) {
  QScreen* screen = click ? QGuiApplication::screenAt({click->x, click->y}) : nullptr;
  return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

/// Absent while no monitor is connected.
std::optional<Screen> screenAt(const std::optional<ScreenPoint>& click) {
  const QScreen* screen = monitorAt(click);
  if (screen == nullptr) return std::nullopt;
  return Screen{rectOf(screen->geometry()), rectOf(freeGeometry(*screen))};
}

/// What a layout needs is known to the one around it only a turn of the loop later, unless somebody
/// asks from the inmost outwards.
void settle(QWidget& widget) {
  for (QObject* child : widget.children()) {
    if (child->isWidgetType()) settle(*static_cast<QWidget*>(child));
  }
  if (widget.layout() == nullptr) return;
  widget.layout()->invalidate();
  widget.layout()->activate();
  QCoreApplication::removePostedEvents(&widget, QEvent::LayoutRequest);
}

bool isPlasma() { return qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains("KDE"); }

/// As long as nobody has changed that. Wayland does not tell.
bool panelsAreAtTheBottom() { return isPlasma(); }

/// Of the pixels in which the tray reports clicks: Plasma counts the screen's own.
double scaleOfTray() { return isPlasma() ? qApp->devicePixelRatio() : 1; }

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
    : layers_(LayerShell::find()), view_(new PopoverView(host)), scroll_(new QScrollArea) {
  setWindowFlags(flagsOfWindow(layers_ != nullptr));
  setWindowTitle("Lumora");
  setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(view_);
  // The outline shines through.
  view_->setAutoFillBackground(false);
  scroll_->viewport()->setAutoFillBackground(false);
  view_->installEventFilter(this);
}

PopoverWindow::~PopoverWindow() = default;

void PopoverWindow::showAt(std::optional<ScreenPoint> click) {
  if (layers_ == nullptr) {
    click_ = click ? clickedAt(*click, pointer()) : std::nullopt;
  } else if (const auto known = click ? clickedInLayer(*click, scaleOfTray()) : std::nullopt) {
    // Without a click it stands where it stood last.
    click_ = known;
  }
  // Before it is shown: a window that grows or moves afterwards is seen to jump.
  view_->updateContent();
  fit();
  place();
  if (layers_ != nullptr && !isVisible() && !enterLayer()) return;
  show();
  raise();
  activateWindow();
}

/// As large as its content, and no higher than the screen.
void PopoverWindow::fit() {
  const auto screen = screenAt(click_);
  settle(*view_);
  const int wanted = view_->heightForWidth(view_->width());
  const int height = screen ? popoverHeight(wanted, *screen) : wanted;
  const int scrollBar = height < wanted ? scroll_->verticalScrollBar()->sizeHint().width() : 0;
  view_->resize(view_->width(), wanted);
  setFixedSize(view_->width() + scrollBar, height);
}

/// A surface can take its place in a layer only before it has a picture, so each time it is a new
/// one; and the picture may come only once the compositor has said how large it is. False where it
/// has no screen for it.
bool PopoverWindow::enterLayer() {
  destroy();
  create();
  QScreen* screen = monitorAt(click_);
  windowHandle()->setScreen(screen);
  wl_surface* surface = LayerShell::surfaceOf(*windowHandle());
  if (surface == nullptr) return false;
  clicksElsewhere_ = std::make_unique<ClicksElsewhere>(*layers_, [this] { close(); });
  layer_ = std::make_unique<LayerSurface>(
      *layers_, surface, LayerShell::outputOf(screen), LayerSurface::Kind::popover,
      LayerSurface::Callbacks{.configured = [](int, int) {}, .closed = [this] { close(); }});
  place();
  if (layer_->waitUntilConfigured()) return true;
  setVisible(false);
  return false;
}

/// The layer goes before the surface does.
void PopoverWindow::setVisible(bool visible) {
  if (!visible) {
    layer_.reset();
    clicksElsewhere_.reset();
  }
  QWidget::setVisible(visible);
}

void PopoverWindow::place() {
  const auto screen = screenAt(click_);
  if (!screen) return;
  if (layer_) {
    layer_->place(layerPlace(click_, {width(), height()}, screen->whole, panelsAreAtTheBottom()),
                  {width(), height()});
  }
  if (!placesItself()) return;
  const ScreenPoint corner = popoverPlace(click_, {width(), height()}, *screen);
  move(corner.x, corner.y);
}

/// Grows and shrinks with its content, and by nothing else.
bool PopoverWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_ && event->type() == QEvent::LayoutRequest && isVisible()) {
    fit();
    place();
  }
  return QWidget::eventFilter(watched, event);
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
  painter.setPen(outlineColor(palette()));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace lumora
