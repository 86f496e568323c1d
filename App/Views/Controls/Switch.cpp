// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Switch.h"

#include "Views/Controls/DrawnButton.h"
#include "Views/Style/OwnControls.h"
#include "Views/Theme/Tokens.h"

namespace lumora {

Switch::Switch(QWidget* parent) : QCheckBox(parent) {
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setContentsMargins(kFocusRoom, kFocusRoom, kFocusRoom, kFocusRoom);
  connect(this, &Switch::toggled, this, [this](bool on) { on_.moveTo(on ? 1 : 0); });
}

QSize Switch::sizeHint() const { return sizeAs(switchSize, *this); }

bool Switch::hitButton(const QPoint& position) const { return rect().contains(position); }

void Switch::paintEvent(QPaintEvent* /*event*/) { drawAs(drawSwitch, *this, on_.value()); }

}  // namespace lumora
