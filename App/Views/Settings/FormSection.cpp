// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Settings/FormSection.h"

#include "Views/Controls/Labels.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Tokens.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kHeadingGap = 8;
constexpr int kSideMargin = 16;
constexpr int kRowMargin = 6;
// Of a text within the row: one of several lines is higher than a control.
constexpr int kTextsMargin = 4;
constexpr int kRowHeight = kControlHeight + 2 * kRowMargin;

class Row : public QWidget {
 public:
  Row() {
    setMinimumHeight(kRowHeight);
    layout_ = new QHBoxLayout(this);
    layout_->setContentsMargins(kSideMargin, kRowMargin, kSideMargin, kRowMargin);
    layout_->setSpacing(12);
  }

  void add(QWidget* widget, int stretch, Qt::Alignment alignment = {}) {
    if (auto* text = qobject_cast<QLabel*>(widget)) {
      text->setContentsMargins(0, kTextsMargin, 0, kTextsMargin);
    } else {
      // Also where a desktop's own style draws it.
      widget->setMinimumHeight(kControlHeight);
    }
    layout_->addWidget(widget, stretch, alignment);
  }

  /// At the row's end, so that what one sees of all controls lines up.
  void addControl(QWidget* control) {
    const int inner = kSideMargin - control->contentsMargins().right();
    layout_->setContentsMargins(isRightToLeft() ? inner : kSideMargin, kRowMargin,
                                isRightToLeft() ? kSideMargin : inner, kRowMargin);
    add(control, 0);
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    auto* control = findChild<QCheckBox*>();
    const bool on = control != nullptr && control->isEnabled() && rect().contains(event->pos());
    if (on && event->button() == Qt::LeftButton) control->click();
  }

  // Without this the release is somebody else's.
  void mousePressEvent(QMouseEvent* event) override { event->accept(); }

 private:
  QHBoxLayout* layout_;
};

class Card : public QWidget {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hairlineColor(palette()));
    painter.setBrush(cardColor(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCardRadius,
                            kCardRadius);
    painter.setRenderHint(QPainter::Antialiasing, false);
    bool first = true;
    for (int i = 0; i < layout()->count(); ++i) {
      const QWidget* row = layout()->itemAt(i)->widget();
      if (row->isHidden()) continue;
      if (!first) painter.drawLine(kSideMargin, row->y(), width() - kSideMargin - 1, row->y());
      first = false;
    }
  }
};

}  // namespace

FormSection::FormSection(const QString& heading, QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kHeadingGap);
  if (!heading.isEmpty()) {
    auto* label = makeLabel(TextRole::headline, heading);
    label->setContentsMargins(kSideMargin, kTextsMargin, kSideMargin, 0);
    layout->addWidget(label);
  }
  auto* card = new Card;
  rows_ = new QVBoxLayout(card);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(0);
  layout->addWidget(card);
}

QLabel* FormSection::addRow(const QString& text, QWidget* control) {
  auto* row = new Row;
  QLabel* label = makeWrapping(TextRole::body, text);
  control->setAccessibleName(text);
  label->setBuddy(control);
  row->add(label, 1);
  row->addControl(control);
  rows_->addWidget(row);
  return label;
}

QWidget* FormSection::addRow(QWidget* whole, Qt::Alignment alignment) {
  auto* row = new Row;
  row->add(whole, 0, alignment);
  rows_->addWidget(row);
  return row;
}

}  // namespace lumora
