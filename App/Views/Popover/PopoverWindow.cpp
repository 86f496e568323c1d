// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/PopoverWindow.h"

#include "Content/LayerPlace.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Style/WindowFrame.h"
#include "Views/Wayland/ClicksElsewhere.h"
#include "Views/Wayland/LayerShell.h"
#include "Views/Wayland/LayerSurface.h"
#include "Views/Wayland/ScreenModes.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace lumora {
namespace {

/// What Qt leaves without a place of its own can be given one in a layer.
Qt::WindowFlags flagsOfWindow(PopoverWindow::Placing placing) {
  constexpr Qt::WindowFlags kFrameless = Qt::Window | Qt::FramelessWindowHint;
  switch (placing) {
    case PopoverWindow::Placing::itself:
      return Qt::Popup | Qt::FramelessWindowHint;
    case PopoverWindow::Placing::layer:
      return kFrameless | Qt::BypassWindowManagerHint;
    case PopoverWindow::Placing::spread:
      return kFrameless;
  }
  return kFrameless;
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

Panels panels() {
  // From Plasma 6 on panels float, as far above what they reserve as below.
  constexpr int kRise = 8;
  const bool floating = qEnvironmentVariableIntValue("KDE_SESSION_VERSION") >= 6;
  return isPlasma() ? Panels{.atBottom = true, .rise = floating ? kRise : 0} : Panels{};
}

/// `modes` null: the tray counts as Qt does.
std::vector<TraysScreen> traysScreens(ScreenModes* modes) {
  const auto pixels = modes != nullptr ? modes->longerSides() : std::map<std::string, int>{};
  std::vector<TraysScreen> screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect whole = screen->geometry();
    const auto side = pixels.find(screen->name().toStdString());
    const double points = std::max({1, whole.width(), whole.height()});
    screens.push_back({rectOf(whole), side == pixels.end() ? 1 : side->second / points});
  }
  return screens;
}

Pointer pointer() {
  const QPoint at = QCursor::pos();
  const QScreen* here = QGuiApplication::screenAt(at);
  if (here == nullptr) here = QGuiApplication::primaryScreen();
  if (here == nullptr) return {};
  // A screen begins at the display's own pixel, and counts in larger ones from there.
  const QPoint corner = here->geometry().topLeft();
  const QPoint pixels = corner + (at - corner) * here->devicePixelRatio();
  return {{at.x(), at.y()},
          {pixels.x(), pixels.y()},
          here->devicePixelRatio(),
          rectOf(here->geometry())};
}

}  // namespace

PopoverWindow::PopoverWindow(ViewsHost& host, bool (*blends)(const QScreen&), bool choosesPlace)
    : layers_(LayerShell::find()),
      placing_(choosesPlace ? Placing::itself
               : layers_    ? Placing::layer
                            : Placing::spread),
      view_(new PopoverView(host)),
      scroll_(new QScrollArea),
      blends_(blends) {
  setWindowFlags(flagsOfWindow(placing_));
  setWindowTitle("Lumora");
  setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  // The window is no smaller than its content, or spread whatever that takes.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
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
  if (auto* display = waylandDisplay(); display != nullptr && isPlasma()) {
    modes_ = std::make_unique<ScreenModes>(display);
  }
  // Not every compositor tells that a layer has gone with its monitor.
  connect(qApp, &QGuiApplication::screenRemoved, this, &QWidget::close);
}

PopoverWindow::~PopoverWindow() = default;

void PopoverWindow::showAt(std::optional<ScreenPoint> click) {
  if (placing_ == Placing::itself) {
    click_ = click ? clickedAt(*click, pointer()) : std::nullopt;
  } else if (const auto known =
                 click ? clickedInLayer(*click, traysScreens(modes_.get())) : std::nullopt) {
    // Without a click it stands where it stood last.
    click_ = known;
  }
  if (!isVisible()) dress();
  if (const QScreen* screen = monitorAt(click_)) follow(*screen);
  // Before it is shown: a window that grows or moves afterwards is seen to jump.
  view_->updateContent();
  fit();
  if (placing_ == Placing::layer && !isVisible() && !enterLayer()) return;
  placing_ == Placing::spread ? showMaximized() : show();
  raise();
  activateWindow();
}

/// It may be given another size or scale, and what was clicked moves with its edges. On X panels
/// keep to the display's pixels, of which a larger text may change how many the toolkit counts as
/// one.
void PopoverWindow::follow(const QScreen& screen) {
  disconnect(following_);
  following_ = connect(&screen, &QScreen::geometryChanged, this,
                       [this, &screen, click = click_, before = rectOf(screen.geometry()),
                        scale = screen.devicePixelRatio()](const QRect& now) {
                         const double unit =
                             placing_ == Placing::itself ? scale / screen.devicePixelRatio() : 1;
                         if (click) click_ = carriedOver(*click, before, rectOf(now), unit);
                         fit();
                       });
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
    end->setFixedHeight(round ? cornerRadius(style()->name()) : 0);
  }
}

bool PopoverWindow::isRound() const { return testAttribute(Qt::WA_TranslucentBackground); }

/// Of the window beyond the popover, on each side.
int PopoverWindow::reach() const { return isRound() ? kShadowReach : 0; }

/// Within the window.
QRect PopoverWindow::popover() const { return rect().marginsRemoved(layout()->contentsMargins()); }

/// As large as its content, and no higher than the screen; where it belongs.
void PopoverWindow::fit() {
  auto screen = screenAt(click_);
  // A spread window knows better what panels leave.
  if (screen && placing_ == Placing::spread && isVisible()) screen->free = rectOf(rect());
  const int wanted = view_->wantedHeight();
  const int height = screen ? popoverHeight(wanted, *screen) : wanted;
  const int scrollBar = height < wanted ? scroll_->verticalScrollBar()->sizeHint().width() : 0;
  view_->resize(view_->width(), wanted);
  QSize size(view_->width() + scrollBar, height);
  // When the scale changes Qt may show one more picture made for the last one, and compositors end
  // the connection where it cannot be divided by the new one.
  if (placing_ == Placing::layer) size += QSize(size.width() % 2, size.height() % 2);
  if (placing_ == Placing::spread) {
    if (screen) placeInWindow(*screen, size);
    clip(size);
    return;
  }
  const QMargins around(reach(), reach(), reach(), reach());
  QRect geometry(pos(), size.grownBy(around));
  if (screen && placing_ == Placing::itself) {
    const ScreenPoint corner = popoverPlace(click_, {size.width(), size.height()}, *screen);
    geometry.moveTopLeft({corner.x - reach(), corner.y - reach()});
  }
  setFixedGeometry(*this, geometry);
  clip(size);
  placeInLayer();
}

/// Some styles draw the ground beside the scroll bar, into the round corners and over the outline.
void PopoverWindow::clip(const QSize& size) {
  if (!isRound()) return scroll_->clearMask();
  constexpr int kOutline = 1;
  const int radius = cornerRadius(style()->name()) - kOutline;
  QPainterPath within;
  within.addRoundedRect(QRect({}, size).adjusted(kOutline, kOutline, -kOutline, -kOutline), radius,
                        radius);
  scroll_->setMask(QRegion(within.toFillPolygon().toPolygon()));
}

/// On the window's edges, as it hangs in a layer on those of the screen.
void PopoverWindow::placeInWindow(const Screen& screen, const QSize& size) {
  const LayerPlace place =
      layerPlace(click_, {size.width(), size.height()}, screen.whole, panels());
  const int restX = std::max(0, width() - size.width());
  const int restY = std::max(0, height() - size.height());
  const int marginX = std::min(place.marginX, restX);
  const int marginY = std::min(place.marginY, restY);
  const int left = place.atLeft ? marginX : restX - marginX;
  const int top = place.atTop ? marginY : restY - marginY;
  layout()->setContentsMargins(left, top, restX - left, restY - top);
  layout()->activate();
  update();
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
  LayerPlace place =
      layerPlace(click_, {popover().width(), popover().height()}, screen->whole, panels());
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
  if (event->type() == QEvent::WindowDeactivate && placing_ != Placing::itself) dismiss();
  if (event->type() == QEvent::WindowStateChange && isVisible()) {
    const auto before = static_cast<QWindowStateChangeEvent*>(event)->oldState();
    // Some shells have a maximized window pulled off the panel.
    if (before.testFlag(Qt::WindowMaximized) && !isMaximized()) dismiss();
  }
  return QWidget::event(event);
}

/// What the compositor leaves of the screen is known only now.
void PopoverWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (placing_ == Placing::spread && isVisible()) fit();
}

/// A popup hears of clicks elsewhere, too, and a spread window is under them. The shadow is
/// elsewhere.
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
