// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Settings/SettingsWindow.h"

#include "Base/Texts.h"
#include "Views/Controls/OwnFrame.h"
#include "Views/Settings/SettingsView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace lumora {
namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 720;
// The frame around it, without a shadow.
constexpr int kFrame = 40;

}  // namespace

SettingsWindow::SettingsWindow(ViewsHost& host, bool framed)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint) {
  setWindowTitle(translated("Lumora Settings"));
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidgetResizable(true);
  scroll->setWidget(new SettingsView(host));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll);
  if (framed) return;
  new OwnFrame(*this);
  // The frame has the ground.
  scroll->widget()->setAutoFillBackground(false);
  scroll->viewport()->setAutoFillBackground(false);
}

void SettingsWindow::present() {
  if (const QScreen* screen = QGuiApplication::primaryScreen(); screen != nullptr) {
    const QRect available = freeGeometry(*screen);
    const QSize content(kWidth, std::min(kHeight, available.height() - kFrame));
    const QSize fitting = content.grownBy(contentsMargins());
    // For the first time, or the last time on another screen.
    if (fitting != minimumSize()) {
      setFixedSize(fitting);
      move(available.center() - rect().center());
    }
  }
  show();
  raise();
  activateWindow();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close)) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace lumora
