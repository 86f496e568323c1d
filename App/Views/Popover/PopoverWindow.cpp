// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/PopoverWindow.h"

#include "Content/LayerPlace.h"
#include "Views/Popover/PopoverFrame.h"
#include "Views/Popover/PopoverView.h"
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

/// Both in one step: one after the other they would be seen as a jump.
void setFixedGeometry(QWidget& window, const QRect& geometry) {
  window.setMinimumSize(0, 0);
  window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  window.setGeometry(geometry);
  window.setFixedSize(geometry.size());
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

PopoverWindow::PopoverWindow(ViewsHost& host, bool (*blends)(const QScreen&))
    : layers_(LayerShell::find()),
      view_(new PopoverView(host)),
      scroll_(new QScrollArea),
      blends_(blends) {
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
  for (const auto end : {Qt::AlignTop, Qt::AlignBottom}) {
    auto* empty = new QWidget;
    empty->setFixedHeight(0);
    scroll_->addScrollBarWidget(empty, end);
  }
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
  if (!isVisible()) dress();
  // Before it is shown: a window that grows or moves afterwards is seen to jump.
  view_->updateContent();
  fit();
  if (layers_ != nullptr && !isVisible() && !enterLayer()) return;
  show();
  raise();
  activateWindow();
}

/// A window is translucent from its beginning or not at all.
void PopoverWindow::dress() {
  const QScreen* screen = monitorAt(click_);
  const bool round = screen != nullptr && blends_(*screen);
  if (round == isRound()) return;
  destroy();
  setAttribute(Qt::WA_TranslucentBackground, round);
  setAttribute(Qt::WA_NoSystemBackground, round);
  setAutoFillBackground(!round);
  layout()->setContentsMargins(reach(), reach(), reach(), reach());
  // The scroll bar keeps out of the corners.
  for (QWidget* end : scroll_->scrollBarWidgets(Qt::AlignTop | Qt::AlignBottom)) {
    end->setFixedHeight(round ? kCornerRadius : 0);
  }
}

bool PopoverWindow::isRound() const { return testAttribute(Qt::WA_TranslucentBackground); }

/// Of the window beyond the popover, on each side.
int PopoverWindow::reach() const { return isRound() ? kShadowReach : 0; }

/// Within the window.
QRect PopoverWindow::popover() const {
  return rect().adjusted(reach(), reach(), -reach(), -reach());
}

/// As large as its content, and no higher than the screen; where it belongs.
void PopoverWindow::fit() {
  const auto screen = screenAt(click_);
  const int wanted = view_->wantedHeight();
  const int height = screen ? popoverHeight(wanted, *screen) : wanted;
  const int scrollBar = height < wanted ? scroll_->verticalScrollBar()->sizeHint().width() : 0;
  view_->resize(view_->width(), wanted);
  const QSize size(view_->width() + scrollBar, height);
  const QMargins around(reach(), reach(), reach(), reach());
  QRect geometry(pos(), size.grownBy(around));
  if (screen && placesItself()) {
    const ScreenPoint corner = popoverPlace(click_, {size.width(), size.height()}, *screen);
    geometry.moveTopLeft({corner.x - reach(), corner.y - reach()});
  }
  setFixedGeometry(*this, geometry);
  placeInLayer();
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
  placeInLayer();
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

/// The layer's gap to the screen's edges has the shadow in it.
void PopoverWindow::placeInLayer() {
  const auto screen = screenAt(click_);
  if (!layer_ || !screen) return;
  LayerPlace place = layerPlace(click_, {popover().width(), popover().height()}, screen->whole,
                                panelsAreAtTheBottom());
  place.marginX -= reach();
  place.marginY -= reach();
  layer_->place(place, {width(), height()});
}

/// Grows and shrinks with its content, and by nothing else.
bool PopoverWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_ && event->type() == QEvent::LayoutRequest && isVisible()) {
    fit();
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

/// A popup hears of clicks elsewhere, too. The shadow is elsewhere.
void PopoverWindow::mousePressEvent(QMouseEvent* event) {
  if (!popover().contains(event->pos())) dismiss();
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
  isRound() ? drawRoundFrame(painter, popover(), palette())
            : drawSquareFrame(painter, popover(), palette());
}

}  // namespace lumora
