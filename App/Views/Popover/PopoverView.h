// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Observable.h"
#include "Content/PopoverContent.h"
#include "Views/ViewsModule.h"

#include <QAccessible>
#include <QWidget>
#include <cstdint>
#include <vector>

class QBoxLayout;

namespace lumora {

class CycleBarView;
class DailySummaryView;
class HistoryChart;
class Label;
class RingView;
class SegmentedPicker;

/// The content of the popover, 340 pixels wide and as high as it needs to be. While visible it
/// follows the model, at most once a turn of the loop.
class PopoverView : public QWidget, private QAccessible::ActivationObserver {
 public:
  /// The host must outlive the view.
  explicit PopoverView(ViewsHost& host, QWidget* parent = nullptr);
  ~PopoverView() override;

  /// Shows what the model says now. A view that is to be shown can be measured then.
  void updateContent();

  /// In pixels, for all that is shown.
  int wantedHeight();

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Row {
    QWidget* widget;
    QBoxLayout* layout;
    Label* label;
    Label* value;
  };

  QWidget* makeNoBattery();
  QWidget* makeBattery();
  QWidget* makeHeader();
  QWidget* makeSnooze();
  QWidget* makeCycles();
  QWidget* makeDetails();
  QWidget* makeFooter();
  static Row makeRow();
  static void layOut(const Row& row);

  void accessibilityActiveChanged(bool active) override;
  void scheduleUpdate();
  void updateBattery(const BatteryContent& content);
  void updateHistory();

  ViewsHost& host_;
  std::vector<Subscription> subscriptions_;
  bool updateScheduled_ = false;
  std::int64_t historyShown_ = -1;

  QWidget* noBattery_ = nullptr;
  Label* noBatteryTitle_ = nullptr;
  QWidget* battery_ = nullptr;
  RingView* ring_ = nullptr;
  Label* state_ = nullptr;
  Label* pluggedIn_ = nullptr;
  QWidget* snooze_ = nullptr;
  Label* snoozeText_ = nullptr;
  QWidget* cancelSnooze_ = nullptr;
  QWidget* cycles_ = nullptr;
  Row cyclesRow_{};
  CycleBarView* cycleBar_ = nullptr;
  QWidget* details_ = nullptr;
  std::vector<Row> detailRows_;
  SegmentedPicker* range_ = nullptr;
  HistoryChart* chart_ = nullptr;
  DailySummaryView* summary_ = nullptr;
};

}  // namespace lumora
