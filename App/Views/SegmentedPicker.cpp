// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SegmentedPicker.h"

#include "Views/Labels.h"
#include "Views/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <utility>

namespace lumora {
namespace {

constexpr double kRadius = 6;
constexpr int kInset = 2;
constexpr int kTextMargin = 5;

class Segment : public QRadioButton {
 public:
  explicit Segment(const QString& title) : QRadioButton(title) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFontRole(this, TextRole::callout);
  }

  QSize sizeHint() const override {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 4 * kTextMargin,
            metrics.height() + 2 * kTextMargin};
  }

 protected:
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isChecked()) {
      painter.setPen(hairlineColor(palette()));
      painter.setBrush(raisedColor(palette()));
      painter.drawRoundedRect(area, kRadius - 1, kRadius - 1);
    }
    if (hasFocus()) {
      painter.setPen(focusPen(palette()));
      painter.setBrush(Qt::NoBrush);
      painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 1, kRadius - 1);
    }
    painter.setPen(palette().color(QPalette::WindowText));
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
