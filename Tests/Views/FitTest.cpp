// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Cells.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/FakeHost.h"
#include "Views/Languages.h"
#include "Views/Pixels.h"
#include "Views/Popover/EvenDigits.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Settings/SettingsWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTimeEdit>
#include <memory>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

bool tellsSomething(const QWidget* widget) {
  return qobject_cast<const QLabel*>(widget) != nullptr ||
         qobject_cast<const QAbstractButton*>(widget) != nullptr ||
         qobject_cast<const QComboBox*>(widget) != nullptr ||
         qobject_cast<const QTimeEdit*>(widget) != nullptr;
}

/// The room that a widget's text takes where it has the widget's width.
QSize neededBy(const QWidget* widget) {
  if (const auto* label = qobject_cast<const QLabel*>(widget)) {
    const QFontMetrics metrics(label->font());
    if (!label->wordWrap()) return {label->sizeHint().width(), 0};
    const QRect page(0, 0, label->width(), 10'000);
    return metrics.boundingRect(page, Qt::TextWordWrap, label->text()).size();
  }
  if (const auto* button = qobject_cast<const QPushButton*>(widget)) return button->sizeHint();
  if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
    return {QFontMetrics(button->font()).horizontalAdvance(button->text()), 0};
  }
  if (const auto* field = qobject_cast<const QTimeEdit*>(widget)) {
    const auto* line = field->findChild<QLineEdit*>();
    // Of other scripts' letters, which come from taller fonts, too.
    const int height = QFontMetrics(line->font()).size(0, field->text()).height();
    return {field->sizeHint().width(), field->height() - line->height() + height};
  }
  return {widget->sizeHint().width(), 0};
}

QString nameOf(const QWidget* widget) {
  if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
  if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
    if (!button->text().isEmpty()) return button->text();
  }
  return widget->accessibleName();
}

/// What of a window's texts is cut off, leaves the window or lies on another.
QStringList faults(const QWidget& window) {
  QStringList found;
  QList<const QWidget*> shown;
  for (const auto* widget : window.findChildren<QWidget*>()) {
    if (widget->isVisible() && tellsSomething(widget)) shown << widget;
  }
  const auto area = [&](const QWidget* widget) {
    return QRect(widget->mapTo(&window, QPoint()), widget->size());
  };
  for (const QWidget* widget : shown) {
    const QSize needed = neededBy(widget);
    if (needed.width() > widget->width() || needed.height() > widget->height()) {
      found << QString("cut off: %1 (%2 by %3, has %4 by %5)")
                   .arg(nameOf(widget))
                   .arg(needed.width())
                   .arg(needed.height())
                   .arg(widget->width())
                   .arg(widget->height());
    }
    if (area(widget).left() < 0 || area(widget).right() >= window.width()) {
      found << QString("leaves the window: %1").arg(nameOf(widget));
    }
    for (const QWidget* other : shown) {
      if (other == widget || widget->isAncestorOf(other) || other->isAncestorOf(widget)) continue;
      if (widget < other && area(widget).intersects(area(other))) {
        found << QString("over another: %1, %2").arg(nameOf(widget), nameOf(other));
      }
    }
  }
  for (const Cell& cell : cellsOf(window)) {
    constexpr int kGap = 8;
    const QFont font = tableOf(window)->font();
    const int room = cell.rect.width() - (cell.column == 0 ? 0 : kGap);
    if (EvenDigits(font).width(cell.text) > room ||
        QFontMetrics(font).height() > cell.rect.height()) {
      found << QString("cut off: %1 (has %2)").arg(cell.text).arg(room);
    }
    if (cell.rect.left() < 0 || cell.rect.right() >= window.width()) {
      found << QString("leaves the window: %1").arg(cell.text);
    }
  }
  return found;
}

/// Each test goes through all languages in one size of the desktop's font, in points.
class FitTest : public testing::TestWithParam<double> {
 public:
  template <typename Show>
  void inEachLanguage(const Show& show) {
    const ScopedFontSize size(GetParam());
    for (const std::string& language : languages()) {
      // The marks of the halves of the American day make the times longest, and the language's own
      // locale has its weekdays.
      for (const std::string& locale : {std::string("en_US"), language}) {
        const ScopedLanguage scoped(locale, language);
        const std::unique_ptr<QWidget> window = show();
        QApplication::processEvents();
        for (const QString& fault : faults(*window)) {
          ADD_FAILURE() << language << " in " << locale << ": " << fault.toStdString();
        }
      }
    }
  }

 protected:
  FitTest() {
    host.clock.time = dateSince1970(1'795'525'980);
    host.setHistory(minuteSamples(host.clock.time - Seconds(60), 3 * 1440));
    host.bundle.identifier.reset();
    host.login.error = "Permission denied";
  }
  std::unique_ptr<QWidget> popover() {
    host.model().refresh(AppModel::Reason::change);
    host.model().snooze();
    auto view = std::make_unique<PopoverView>(host);
    view->show();
    // The table.
    for (auto* button : view->findChildren<QAbstractButton*>()) {
      if (button->isCheckable() && !button->autoExclusive()) button->click();
    }
    // On a low screen it scrolls.
    view->resize(view->width(), view->wantedHeight());
    return view;
  }

  FakeHost host;
};

const Dictionary kWorstBattery = {{"CycleCount", 1208},
                                  {"DesignCapacity", 5000},
                                  {"AppleRawMaxCapacity", 3400},
                                  {"Temperature", -1140},
                                  {"Voltage", 12'000},
                                  {"Amperage", -10'100},
                                  {"AdapterDetails", Dictionary{{"Watts", 140}}}};

TEST_P(FitTest, ThePopoverOnBattery) {
  host.setBattery(100, {{"Time to Empty", 1439}}, kWorstBattery);
  inEachLanguage([this] { return popover(); });
}

TEST_P(FitTest, ThePopoverWhilePluggedIn) {
  host.setBattery(88, {{"Power Source State", "AC Power"}}, kWorstBattery);
  host.model().refresh(AppModel::Reason::change);
  host.clock.time += Seconds(86'340);
  inEachLanguage([this] { return popover(); });
}

TEST_P(FitTest, ThePopoverWhileCharging) {
  host.setBattery(88, {{"Power Source State", "AC Power"}, {"Is Charging", true}}, kWorstBattery);
  inEachLanguage([this] { return popover(); });
}

TEST_P(FitTest, ThePopoverWithoutABattery) {
  host.powerSources.sources.emplace();
  inEachLanguage([this] { return popover(); });
}

TEST_P(FitTest, TheSettings) {
  inEachLanguage([this] {
    auto window = std::make_unique<SettingsWindow>(host);
    window->present();
    for (auto* button : window->findChildren<QAbstractButton*>()) {
      if (button->accessibleName() == translated("Launch at Login")) button->click();
    }
    return window;
  });
}

TEST_P(FitTest, TheQuestions) {
  host.bundle.identifier = "org.lumora.Test";
  std::unique_ptr<SettingsWindow> settings;
  for (const bool reset : {true, false}) {
    inEachLanguage([&] {
      settings = std::make_unique<SettingsWindow>(host);
      settings->present();
      for (auto* button : settings->findChildren<QAbstractButton*>()) {
        const bool asks = reset ? button->text() == translated("Reset History…")
                                : button->accessibleName() == translated("Charge limit");
        if (asks) button->click();
      }
      host.centre.answerStatus(AuthorizationStatus::notDetermined);
      host.runLoop.drain();
      auto* dialog = settings->findChild<QDialog*>();
      EXPECT_NE(dialog, nullptr);
      dialog->setAttribute(Qt::WA_DeleteOnClose, false);
      dialog->setParent(nullptr);
      dialog->show();
      return std::unique_ptr<QWidget>(dialog);
    });
  }
}

INSTANTIATE_TEST_SUITE_P(AtPoints, FitTest, testing::Values(10.0, 11.0, 16.0));

}  // namespace
}  // namespace lumora::test
