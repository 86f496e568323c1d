// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Cells.h"
#include "Views/Children.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/FakeHost.h"
#include "Views/Patience.h"
#include "Views/Popover/DailySummaryView.h"
#include "Views/Popover/HistoryChart.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Popover/RingView.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

namespace lumora::test {

/// A popover on a screen nobody sees, driven with real clicks and keys.
class ViewTest : public testing::Test {
 protected:
  ViewTest() {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    host.clock.time = dateSince1970(1'795'525'980);
    host.setBattery(73, {{"Time to Empty", 185}}, {{"CycleCount", 412}});
    host.setHistory(minuteSamples(host.clock.time - Seconds(60), 600));
  }

  /// Opens the view on a fresh reading.
  PopoverView& open() {
    host.model().refresh(AppModel::Reason::change);
    view = std::make_unique<PopoverView>(host);
    view->show();
    EXPECT_TRUE(waitUntilExposed(view.get()));
    return *view;
  }

  void refresh() {
    host.model().refresh(AppModel::Reason::change);
    QCoreApplication::processEvents();
  }

  QAbstractButton* button(const QString& text) const {
    for (auto* found : view->findChildren<QAbstractButton*>()) {
      if (found->text() == text) return found;
    }
    return nullptr;
  }

  void click(const QString& text) const {
    ASSERT_NE(button(text), nullptr) << text.toStdString();
    QTest::mouseClick(button(text), Qt::LeftButton);
  }

  /// All texts that can be seen, from top to bottom, then those of the table.
  QStringList texts() const {
    QStringList seen;
    for (const auto* label : view->findChildren<QLabel*>()) {
      if (label->isVisible()) seen << label->text();
    }
    for (const Cell& cell : cellsOf(*view)) seen << cell.text;
    return seen;
  }

  /// The one widget of that class.
  template <typename Widget>
  Widget* only() const {
    const auto found = childrenOf<Widget>(*view);
    EXPECT_EQ(found.size(), 1);
    return found.isEmpty() ? nullptr : found.first();
  }

  FakeHost host;
  std::unique_ptr<PopoverView> view;
};

}  // namespace lumora::test
