// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/DailySummaryView.h"
#include "Views/HistoryChart.h"
#include "Views/RingView.h"
#include "Views/SegmentedPicker.h"
#include "Views/ViewsModule.h"

#include <QAccessible>
#include <QWidget>
#include <vector>

class QLabel;
class QPushButton;

namespace lumora {

/// The content of the popover, 340 pixels wide and as high as it needs to be. While visible it
/// follows the model, at most once a turn of the loop.
class PopoverView : public QWidget, private QAccessible::ActivationObserver {
 public:
  /// The host must outlive the view.
  explicit PopoverView(ViewsHost& host, QWidget* parent = nullptr);
  ~PopoverView() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Row {
    QWidget* widget;
    QLabel* label;
    QLabel* value;
  };

  QWidget* makeNoBattery();
  QWidget* makeBattery();
  QWidget* makeHeader();
  QWidget* makeSnooze();
  QWidget* makeCycles();
  QWidget* makeDetails();
  QWidget* makeFooter();
  static Row makeRow();

  void accessibilityActiveChanged(bool active) override;
  void scheduleUpdate();
  void updateContent();
  void updateBattery(const BatteryContent& content);
  void updateHistory();
  void applyColors();

  ViewsHost& host_;
  std::vector<Subscription> subscriptions_;
  bool updateScheduled_ = false;
  std::int64_t historyShown_ = -1;

  QWidget* noBattery_ = nullptr;
  QWidget* battery_ = nullptr;
  RingView* ring_ = nullptr;
  QLabel* state_ = nullptr;
  QLabel* pluggedIn_ = nullptr;
  QWidget* snooze_ = nullptr;
  QLabel* snoozeText_ = nullptr;
  QWidget* cycles_ = nullptr;
  QLabel* cyclesText_ = nullptr;
  CycleBarView* cycleBar_ = nullptr;
  QWidget* details_ = nullptr;
  std::vector<Row> detailRows_;
  SegmentedPicker* range_ = nullptr;
  HistoryChart* chart_ = nullptr;
  DailySummaryView* summary_ = nullptr;
  std::vector<QLabel*> secondary_;
};

}  // namespace lumora
