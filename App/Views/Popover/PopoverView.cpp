// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/PopoverView.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Content/StatusItem.h"
#include "Views/Controls/Labels.h"
#include "Views/Controls/LinkButton.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Popover/DailySummaryView.h"
#include "Views/Popover/HistoryChart.h"
#include "Views/Popover/RingView.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kWidth = 340;
constexpr int kPadding = 16;
constexpr int kInnerWidth = kWidth - 2 * kPadding;
constexpr int kHeaderSpacing = 16;
// Beside the ring.
constexpr int kTextsWidth = kInnerWidth - RingView::kSide - kHeaderSpacing;
constexpr int kSpacing = 14;
constexpr int kMostDetails = 4;
constexpr int kWeek = 7;
constexpr int kConnectionMilliseconds = 500;

template <typename Layout>
Layout* makeLayout(QWidget* widget, int spacing) {
  auto* layout = new Layout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

QStringList rangeTitles() {
  // TRANSLATORS: The time the chart shows; %1$s is always 24. Short: half of a narrow window.
  const char* hours = translatedIn("chart", "%1$s hours");
  // TRANSLATORS: The time the chart shows; %1$s is always 7. Short: half of a narrow window.
  const char* days = translatedIn("chart", "%1$s days");
  return {QString::fromStdString(filled(hours, {numberText(24)})),
          QString::fromStdString(filled(days, {numberText(kWeek)}))};
}

/// What a layout needs is known to the one around it only a turn of the loop later, unless somebody
/// asks from the inmost outwards.
void settle(QWidget& widget) {
  for (QObject* child : widget.children()) {
    if (child->isWidgetType()) settle(*static_cast<QWidget*>(child));
  }
  if (widget.layout() == nullptr) return;
  widget.layout()->invalidate();
  widget.layout()->activate();
  QCoreApplication::removePostedEvents(&widget, QEvent::LayoutRequest);
}

/// What a screen reader takes the popover for.
QAccessibleInterface* accessiblePopover(const QString& /*className*/, QObject* object) {
  auto* view = dynamic_cast<PopoverView*>(object);
  return view != nullptr ? new QAccessibleWidget(view, QAccessible::Dialog) : nullptr;
}

std::string spokenName(const BatteryContent& content) {
  // TRANSLATORS: What a screen reader says of the popover: "80%. On battery, 2 h left"
  return filled(translatedIn("screen reader", "%1$s. %2$s"),
                {percentText(content.percent), content.stateText});
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
  Label* notice =
      makeWrapping(TextRole::caption2,
                   // TRANSLATORS: Say what en.po says.
                   translated("Lumora can only remind you. A Mac app cannot stop the charger."));
  notice->setColor(TextColor::secondary);
  layout->addWidget(notice);
  layout->addWidget(makeFooter());

  AppModel& model = host_.model();
  const auto changed = [this] { scheduleUpdate(); };
  subscriptions_ = {model.state().subscribe(changed), model.pluggedSince().subscribe(changed),
                    model.looking().subscribe(changed), model.snoozeUntil().subscribe(changed),
                    model.historyVersion().subscribe(changed)};
}

PopoverView::~PopoverView() { QAccessible::removeActivationObserver(this); }

QWidget* PopoverView::makeNoBattery() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, 8);
  layout->setContentsMargins(0, 20, 0, 20);
  layout->addWidget(new NoBatterySymbol, 0, Qt::AlignHCenter);
  layout->addWidget(noBatteryTitle_ = makeWrapping(TextRole::headline));
  noBatteryTitle_->setAlignment(Qt::AlignHCenter);
  Label* why =
      makeWrapping(TextRole::caption,
                   // TRANSLATORS: Say what en.po says.
                   translated("This Mac does not report a battery, so Lumora stays quiet."));
  why->setAlignment(Qt::AlignHCenter);
  why->setColor(TextColor::secondary);
  layout->addWidget(why);
  return widget;
}

QWidget* PopoverView::makeBattery() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, kSpacing);
  layout->addWidget(makeHeader());
  layout->addWidget(cycles_ = makeCycles());
  layout->addWidget(details_ = makeDetails());
  layout->addWidget(range_ = new SegmentedPicker(rangeTitles(), [this](int /*range*/) {
                      historyShown_ = -1;
                      updateHistory();
                    }));
  layout->addWidget(chart_ = new HistoryChart);
  layout->addWidget(summary_ = new DailySummaryView(kInnerWidth));
  return widget;
}

QWidget* PopoverView::makeHeader() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, kHeaderSpacing);
  layout->addWidget(ring_ = new RingView, 0, Qt::AlignVCenter);
  auto* texts = makeLayout<QVBoxLayout>(nullptr, 4);
  texts->addStretch();
  texts->addWidget(state_ = makeWrapping(TextRole::headline));
  texts->addWidget(pluggedIn_ = makeWrapping(TextRole::caption));
  texts->addWidget(snooze_ = makeSnooze());
  texts->addStretch();
  pluggedIn_->setColor(TextColor::secondary);
  layout->addLayout(texts, 1);
  return widget;
}

QWidget* PopoverView::makeSnooze() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 4);
  layout->addWidget(snoozeText_ = makeWrapping(TextRole::caption), 1);
  snoozeText_->setColor(TextColor::secondary);
  // TRANSLATORS: Ends the snooze; it stands after "Alerts snoozed until 14:35".
  auto* cancel = new LinkButton(TextRole::caption, translatedIn("snooze", "Cancel"));
  cancelSnooze_ = cancel;
  connect(cancel, &LinkButton::clicked, this, [this] { host_.model().cancelSnooze(); });
  layout->addWidget(cancel);
  return widget;
}

QWidget* PopoverView::makeCycles() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QVBoxLayout>(widget, 4);
  cyclesRow_ = makeRow();
  cyclesRow_.label->setText(translated("Cycle count"));
  cyclesRow_.value->setColor(TextColor::secondary);
  layout->addWidget(cyclesRow_.widget);
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
  // Some languages need two lines for some labels.
  Label* label = makeWrapping(TextRole::callout);
  Label* value = makeLabel(TextRole::callout);
  layout->addWidget(label, 1);
  layout->addWidget(value);
  return {widget, layout, label, value};
}

void PopoverView::layOut(const Row& row) {
  layOutPair(*row.layout, *row.label, *row.value, kInnerWidth);
}

QWidget* PopoverView::makeFooter() {
  auto* widget = new QWidget;
  auto* layout = makeLayout<QHBoxLayout>(widget, 8);
  auto* settings = new QPushButton(translated("Settings…"));
  auto* quit = new QPushButton(translated("Quit"));
  // The return key presses them, too.
  for (QPushButton* button : {settings, quit}) button->setAutoDefault(true);
  connect(settings, &QPushButton::clicked, this, [this] { host_.openSettings(); });
  connect(quit, &QPushButton::clicked, this, [this] { host_.quit(); });
  layout->addWidget(settings);
  layout->addStretch();
  layout->addWidget(quit);
  return widget;
}

int PopoverView::wantedHeight() {
  settle(*this);
  return heightForWidth(width());
}

void PopoverView::showEvent(QShowEvent* event) {
  updateContent();
  // No control has the focus until the user turns to the keyboard.
  setFocus();
  QWidget::showEvent(event);
}

void PopoverView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    renewFonts(this);
    // What fits has changed.
    historyShown_ = -1;
    scheduleUpdate();
  }
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
  const auto content =
      batteryContent(*model.state(), *model.pluggedSince(), *model.snoozeUntil(), host_.now());
  const QString state = QString::fromStdString(stateText(*model.state(), *model.looking()));
  noBatteryTitle_->setText(state);
  noBattery_->setVisible(!content);
  battery_->setVisible(content.has_value());
  setAccessibleName(content ? QString::fromStdString(spokenName(*content)) : state);
  if (!content) return;
  updateBattery(*content);
  updateHistory();
}

void PopoverView::updateBattery(const BatteryContent& content) {
  ring_->show(content.percent, content.ringTint);
  const QString state = QString::fromStdString(content.stateText);
  state_->setText(state);
  state_->setFont(fontThatFits(TextRole::headline, state, kTextsWidth));
  pluggedIn_->setText(QString::fromStdString(content.pluggedInFor.value_or("")));
  pluggedIn_->setVisible(content.pluggedInFor.has_value());
  snoozeText_->setText(QString::fromStdString(content.snoozedUntil.value_or("")));
  layOutPair(*qobject_cast<QBoxLayout*>(snooze_->layout()), *snoozeText_, *cancelSnooze_,
             kTextsWidth);
  snooze_->setVisible(content.snoozedUntil.has_value());
  cycles_->setVisible(content.cycles.has_value());
  if (content.cycles) {
    cyclesRow_.value->setText(QString::fromStdString(content.cycles->text));
    layOut(cyclesRow_);
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
    layOut(row);
    row.value->setColor(detail.tint ? textColorFor(*detail.tint) : TextColor::secondary);
  }
}

void PopoverView::updateHistory() {
  const std::int64_t version = *host_.model().historyVersion();
  if (version == historyShown_) return;
  historyShown_ = version;
  const HistoryStore& history = host_.model().history();
  const Date now = host_.now();
  const int days = range_->current() == 0 ? 1 : kWeek;
  chart_->show(history.samples(now - Seconds(days * 86'400.0)), days, now,
               chartThresholds(Prefs::current(host_.defaults())));
  summary_->show(dayRows(history.dailySummaries(kWeek, now), kWeek));
}

}  // namespace lumora
