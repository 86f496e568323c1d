// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/SegmentedPicker.h"

#include "Views/Controls/DrawnButton.h"
#include "Views/Controls/Labels.h"
#include "Views/Style/OwnControls.h"

#include <QHBoxLayout>
#include <utility>

namespace lumora {
namespace {

/// Not the toolkit's radio button, onto which some styles paint.
DrawnButton* makeSegment(const QString& title) {
  auto* segment = new DrawnButton(drawSegment, segmentSize);
  segment->setText(title);
  segment->setCheckable(true);
  segment->setAutoExclusive(true);
  segment->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFontRole(segment, TextRole::callout);
  return segment;
}

}  // namespace

SegmentedPicker::SegmentedPicker(const QStringList& titles, std::function<void(int)> picked,
                                 QWidget* parent)
    : QWidget(parent) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  for (int id = 0; id < titles.size(); ++id) {
    DrawnButton* segment = makeSegment(titles[id]);
    segment->setChecked(id == 0);
    group_.addButton(segment, id);
    layout->addWidget(segment, 1);
  }
  connect(&group_, &QButtonGroup::idToggled, this,
          [picked = std::move(picked)](int id, bool checked) {
            if (checked) picked(id);
          });
}

void SegmentedPicker::paintEvent(QPaintEvent* /*event*/) { drawAs(drawWell, *this); }

}  // namespace lumora
