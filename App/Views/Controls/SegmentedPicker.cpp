// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/SegmentedPicker.h"

#include "Views/Controls/Keys.h"
#include "Views/Controls/Labels.h"
#include "Views/Theme/Colors.h"

#include <QHBoxLayout>
#include <QPainter>
#include <utility>

namespace lumora {
namespace {

constexpr double kRadius = 6;
constexpr int kInset = 2;
constexpr int kTextMargin = 5;

/// Not the toolkit's radio button, onto which some styles paint.
class Segment : public QAbstractButton {
 public:
  explicit Segment(const QString& title) {
    setText(title);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFontRole(this, TextRole::callout);
  }

  QSize sizeHint() const override {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 4 * kTextMargin,
            metrics.height() + 2 * kTextMargin};
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!pressForReturn(*this, *event)) QAbstractButton::keyPressEvent(event);
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isChecked()) {
      painter.setPen(neutralMarkColor(palette()));
      painter.setBrush(raisedColor(palette()));
      painter.drawRoundedRect(area, kRadius - 1, kRadius - 1);
    }
    if (hasFocus()) {
      painter.setPen(focusPen(palette()));
      painter.setBrush(Qt::NoBrush);
      painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 1, kRadius - 1);
    }
    painter.setPen(textColor(TextColor::primary, palette()));
    painter.drawText(rect(), Qt::AlignCenter, text());
  }
};

}  // namespace

SegmentedPicker::SegmentedPicker(const QStringList& titles, std::function<void(int)> picked,
                                 QWidget* parent)
    : QWidget(parent) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(kInset, kInset, kInset, kInset);
  layout->setSpacing(kInset);
  for (int id = 0; id < titles.size(); ++id) {
    auto* segment = new Segment(titles[id]);
    segment->setChecked(id == 0);
    group_.addButton(segment, id);
    layout->addWidget(segment, 1);
  }
  connect(&group_, &QButtonGroup::idToggled, this,
          [picked = std::move(picked)](int id, bool checked) {
            if (checked) picked(id);
          });
}

void SegmentedPicker::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(wellColor(palette()));
  painter.drawRoundedRect(rect(), kRadius, kRadius);
}

}  // namespace lumora
