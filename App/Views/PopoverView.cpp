// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PopoverView.h"

#include "Views/DateText.h"
#include "Views/Labels.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kWidth = 340;
constexpr int kPadding = 16;
constexpr int kSpacing = 14;
constexpr int kMostDetails = 4;
constexpr int kWeek = 7;
constexpr int kConnectionMilliseconds = 500;
constexpr const char* kNoBattery = "No battery found";

template <typename Layout>
Layout* makeLayout(QWidget* widget, int spacing) {
  auto* layout = new Layout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

std::string formatTime(Date date) {
  QString time = QLocale().toString(dateTime(date).time(), shortTimeFormat());
  // "2:35 PM" stays on one line.
  return time.replace(' ', QChar(QChar::Nbsp)).toStdString();
}

std::string formatDay(Date date) {
  return QLocale().toString(dateTime(date).date(), "ddd d").toStdString();
}

/// What a screen reader takes the popover for.
QAccessibleInterface* accessiblePopover(const QString& /*className*/, QObject* object) {
  auto* view = dynamic_cast<PopoverView*>(object);
  return view != nullptr ? new QAccessibleWidget(view, QAccessible::Dialog) : nullptr;
}

}  // namespace

PopoverView::PopoverView(ViewsHost& host, QWidget* parent) : QWidget(parent), host_(host) {
  QAccessible::installFactory(accessiblePopover);
  QAccessible::installActivationObserver(this);
  setFixedWidth(kWidth);
  setFocusPolicy(Qt::ClickFocus);
  auto* layout = makeLayout<QVBoxLayout>(this, kSpacing);
  layout->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  layout->addWidget(noBattery_ = makeNoBattery());
  layout->addWidget(battery_ = makeBattery());
  auto* divider = new QFrame;
  divider->setFrameStyle(QFrame::HLine | QFrame::Sunken);
  layout->addWidget(divider);
  auto* notice = makeWrapping(TextRole::caption2,
                              "Lumora can only remind you. A Mac app cannot stop the charger.");
  secondary_.push_back(notice);
  layout->addWidget(notice);
  layout->addWidget(makeFooter());
  applyColors();

  AppModel& model = host_.model();
  const auto changed = [this] { scheduleUpdate(); };
  subscriptions_ = {model.state().subscribe(changed), model.pluggedSince().subscribe(changed),
                    model.snoozeUntil().subscribe(changed),
                    model.historyVersion().subscribe(changed)};
}

PopoverView::~PopoverView() { QAccessible::removeActivationObserver(this); }

QWidget* PopoverView::makeNoBattery() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, 8);
  layout->setContentsMargins(0, 20, 0, 20);
  layout->addWidget(new NoBatterySymbol, 0, Qt::AlignHCenter);
  layout->addWidget(makeLabel(TextRole::headline, kNoBattery), 0, Qt::AlignHCenter);
  auto* why =
      makeWrapping(TextRole::caption, "This Mac does not report a battery, so Lumora stays quiet.");
  why->setAlignment(Qt::AlignHCenter);
  secondary_.push_back(why);
  layout->addWidget(why);
  return widget;
}

QWidget* PopoverView::makeBattery() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, kSpacing);
  layout->addWidget(makeHeader());
  layout->addWidget(cycles_ = makeCycles());
  layout->addWidget(details_ = makeDetails());
  layout->addWidget(range_ = new SegmentedPicker({"24 hours", "7 days"}, [this](int /*range*/) {
                      historyShown_ = -1;
                      updateHistory();
                    }));
  layout->addWidget(chart_ = new HistoryChart);
  layout->addWidget(summary_ = new DailySummaryView);
  return widget;
}

QWidget* PopoverView::makeHeader() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 16);
  layout->addWidget(ring_ = new RingView, 0, Qt::AlignVCenter);
  auto* texts = makeLayout<QVBoxLayout>(nullptr, 4);
  texts->addStretch();
  texts->addWidget(state_ = makeWrapping(TextRole::headline));
  texts->addWidget(pluggedIn_ = makeWrapping(TextRole::caption));
  texts->addWidget(snooze_ = makeSnooze());
  texts->addStretch();
  secondary_.push_back(pluggedIn_);
  layout->addLayout(texts, 1);
  return widget;
}

QWidget* PopoverView::makeSnooze() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 4);
  layout->addWidget(snoozeText_ = makeWrapping(TextRole::caption), 1);
  secondary_.push_back(snoozeText_);
  auto* cancel = new QPushButton("Cancel");
  setFontRole(cancel, TextRole::caption);
  cancel->setFlat(true);
  cancel->setCursor(Qt::PointingHandCursor);
  cancel->setStyleSheet(
      "QPushButton { color: palette(link); border: none; padding: 1px 2px; }"
      "QPushButton:focus { border: 1px solid palette(highlight); border-radius: 3px; }"
      "QPushButton:hover { text-decoration: underline; }");
  connect(cancel, &QPushButton::clicked, this, [this] { host_.model().cancelSnooze(); });
  layout->addWidget(cancel, 0, Qt::AlignBottom);
  return widget;
}

QWidget* PopoverView::makeCycles() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, 4);
  const Row row = makeRow();
  row.label->setText("Cycle count");
  cyclesText_ = row.value;
  secondary_.push_back(cyclesText_);
  layout->addWidget(row.widget);
  layout->addWidget(cycleBar_ = new CycleBarView);
  return widget;
}

QWidget* PopoverView::makeDetails() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, 6);
  for (int i = 0; i < kMostDetails; ++i) {
    detailRows_.push_back(makeRow());
    layout->addWidget(detailRows_.back().widget);
  }
  return widget;
}

PopoverView::Row PopoverView::makeRow() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 8);
  QLabel* label = makeLabel(TextRole::callout);
  QLabel* value = makeLabel(TextRole::callout);
  layout->addWidget(label);
  layout->addStretch();
  layout->addWidget(value);
  return {widget, label, value};
}

QWidget* PopoverView::makeFooter() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 8);
  auto* settings = new QPushButton(QStringLiteral("Settings…"));
  auto* quit = new QPushButton("Quit");
  for (QPushButton* button : {settings, quit}) button->setAutoDefault(false);
  connect(settings, &QPushButton::clicked, this, [this] { host_.openSettings(); });
  connect(quit, &QPushButton::clicked, this, [this] { host_.quit(); });
  layout->addWidget(settings);
  layout->addStretch();
  layout->addWidget(quit);
  return widget;
}

void PopoverView::showEvent(QShowEvent* event) {
  updateContent();
  // No control has the focus until the user turns to the keyboard.
  setFocus();
  QWidget::showEvent(event);
}

void PopoverView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    applyColors();
    scheduleUpdate();
  }
  if (event->type() == QEvent::FontChange) renewFonts(this);
  QWidget::changeEvent(event);
}

/// At the first opening the popover has the focus before a screen reader can hear of it. Qt does
/// not say when its connection to the readers stands.
void PopoverView::accessibilityActiveChanged(bool active) {
  if (!active) return;
  QTimer::singleShot(kConnectionMilliseconds, this, [this] {
    if (!hasFocus()) return;
    QAccessibleEvent event(this, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
  });
}

/// A change is announced before it happens, and several come together.
void PopoverView::scheduleUpdate() {
  if (updateScheduled_ || !isVisible()) return;
  updateScheduled_ = true;
  QTimer::singleShot(0, this, [this] {
    updateScheduled_ = false;
    if (isVisible()) updateContent();
  });
}

void PopoverView::updateContent() {
  AppModel& model = host_.model();
  const auto content = batteryContent(*model.state(), *model.pluggedSince(), *model.snoozeUntil(),
                                      host_.now(), formatTime);
  noBattery_->setVisible(!content);
  battery_->setVisible(content.has_value());
  setAccessibleName(
      content
          ? QString("%1%. %2").arg(content->percent).arg(QString::fromStdString(content->stateText))
          : kNoBattery);
  if (!content) return;
  updateBattery(*content);
  updateHistory();
}

void PopoverView::updateBattery(const BatteryContent& content) {
  ring_->show(content.percent, content.ringTint);
  state_->setText(QString::fromStdString(content.stateText));
  pluggedIn_->setText(QString::fromStdString(content.pluggedInFor.value_or("")));
  pluggedIn_->setVisible(content.pluggedInFor.has_value());
  snoozeText_->setText(QString::fromStdString(content.snoozedUntil.value_or("")));
  snooze_->setVisible(content.snoozedUntil.has_value());
  cycles_->setVisible(content.cycles.has_value());
  if (content.cycles) {
    cyclesText_->setText(QString::fromStdString(content.cycles->text));
    cycleBar_->show(*content.cycles);
  }
  details_->setVisible(!content.details.empty());
  for (std::size_t i = 0; i < detailRows_.size(); ++i) {
    const Row& row = detailRows_[i];
    row.widget->setVisible(i < content.details.size());
    if (i >= content.details.size()) continue;
    const DetailRow& detail = content.details[i];
    row.label->setText(QString::fromStdString(detail.label));
    row.value->setText(QString::fromStdString(detail.value));
    setTextColor(row.value,
                 detail.tint ? colorOf(*detail.tint, palette()) : secondaryColor(palette()));
  }
}

void PopoverView::updateHistory() {
  const std::int64_t version = *host_.model().historyVersion();
  if (version == historyShown_) return;
  historyShown_ = version;
  const HistoryStore& history = host_.model().history();
  const Date now = host_.now();
  const int days = range_->current() == 0 ? 1 : kWeek;
  chart_->show(history.samples(now - Seconds(days * 86'400.0)), days, now);
  summary_->show(dayRows(history.dailySummaries(kWeek, now), formatDay));
}

void PopoverView::applyColors() {
  for (QLabel* label : secondary_) setTextColor(label, secondaryColor(palette()));
}

}  // namespace lumora
