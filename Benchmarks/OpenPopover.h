// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/FakeHost.h"
#include "Views/Popover/PopoverView.h"

#include <QAbstractButton>
#include <QApplication>

namespace lumora::benchmark {

constexpr int kWeekMinutes = 7 * 24 * 60;

/// An open popover that shows a week of minute samples: the chart and the daily table.
class OpenPopover {
 public:
  OpenPopover() {
    host_.setHistory(test::minuteSamples(host_.now(), kWeekMinutes));
    host_.setBattery(50);
    host_.model().refresh(AppModel::Reason::launch);
    view_.show();
    for (auto* button : view_.findChildren<QAbstractButton*>()) {
      if (button->text() == "7 days" || button->text() == "Daily summary") button->click();
    }
    QApplication::processEvents();
  }

  /// A new reading, up to the drawn picture.
  QPixmap redraw() {
    percent_ = percent_ == 50 ? 51 : 50;
    host_.setBattery(percent_);
    host_.model().refresh(AppModel::Reason::change);
    QApplication::processEvents();
    return view_.grab();
  }

 private:
  test::FakeHost host_;
  PopoverView view_{host_};
  std::int64_t percent_ = 50;
};

}  // namespace lumora::benchmark
