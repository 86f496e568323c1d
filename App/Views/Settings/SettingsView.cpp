// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Settings/SettingsView.h"

#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Preferences/Prefs.h"
#include "Views/Controls/Labels.h"
#include "Views/Controls/MessageDialog.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kMargin = 20;
constexpr int kSpacing = 16;
constexpr int kLookForChangesMilliseconds = 1000;

constexpr std::size_t kReset = 0;
constexpr int kMinutesBetweenRepeats = 5;
constexpr int kMostRepeats = 3;
// Percent, at which many laptops hold the charge where they are told to spare the battery.
constexpr std::int64_t kUsualHold = 80;

Dialog resetQuestion() {
  return {translated("Reset history?"),
          translated("This deletes all saved battery samples used for the chart."),
          // TRANSLATORS: The buttons below "Reset history?".
          {translatedIn("Reset history?", "Reset"), translatedIn("Reset history?", "Cancel")}};
}

QString filledLabel(const char* text, std::initializer_list<std::string_view> values) {
  return QString::fromStdString(filled(text, values));
}

/// The label of a percentage: `text` has one place.
std::function<std::string(std::int64_t)> percentLabel(const char* text) {
  return [text](std::int64_t percent) { return filled(text, {percentText(percent)}); };
}

std::string hoursLabel(std::int64_t hours) {
  // TRANSLATORS: %1$s is a number of hours, 1 to 48.
  return filled(translatedFor(hours, "Alert after %1$s h plugged in above the charge limit",
                              "Alert after %1$s h plugged in above the charge limit"),
                {numberText(hours)});
}

}  // namespace

SettingsView::SettingsView(ViewsHost& host, QWidget* parent)
    : QWidget(parent), host_(host), controls_(host), layout_(new QVBoxLayout(this)) {
  layout_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout_->setSpacing(kSpacing);
  host_.defaults().registerDefaults(Prefs::defaults());
  addReminders();
  addQuietHours();
  addMenuBar();
  addGeneral();
  addNotice();
  layout_->addStretch();
  controls_.update();

  changed_ = host_.defaults().subscribe([this] { controls_.update(); });
  changesByOthers_.setInterval(kLookForChangesMilliseconds);
  connect(&changesByOthers_, &QTimer::timeout, this, [this] { host_.defaults().synchronize(); });
}

FormSection* SettingsView::addSection(const char* heading) {
  auto* section = new FormSection(heading);
  layout_->addWidget(section);
  return section;
}

StoredControls::Group SettingsView::addReminder(FormSection* section, const QString& title,
                                                const char* key) {
  connect(controls_.addSwitch({section}, title, key), &Switch::toggled, this,
          [this] { askForPermission(); });
  return {section, key, title};
}

void SettingsView::addReminders() {
  const auto limit =
      addReminder(addSection(translated("Alerts")), translated("Charge limit"), kLimitEnabled.key);
  // TRANSLATORS: %1$s is a percentage, "80%".
  const char* reaches = translated("Alert when charging reaches %1$s");
  controls_.addNumber(limit, {percentLabel(reaches), kLimit.key, {50, 100}});
  // TRANSLATORS: %1$s is always 5, %2$s always 3.
  const char* repeat = translated("Repeat every %1$s minutes, up to %2$s times");
  controls_.addSwitch(
      limit, filledLabel(repeat, {numberText(kMinutesBetweenRepeats), numberText(kMostRepeats)}),
      kRepeatReminder.key);
  controls_.addSound(limit, AlertKind::chargeLimit);

  // TRANSLATORS: The switch of the reminder to plug in.
  const char* lowTitle = translatedIn("settings", "Low battery");
  const auto low = addReminder(addSection(), lowTitle, kLowEnabled.key);
  // TRANSLATORS: %1$s is a percentage, "20%".
  const char* atMost = translated("Alert on battery at %1$s or less");
  controls_.addNumber(low, {percentLabel(atMost), kLow.key, {5, 50}});
  controls_.addSound(low, AlertKind::low);

  // TRANSLATORS: Say what en.po says. The switch of a reminder.
  const char* suggest = translated("Suggest Low Power Mode");
  const auto lowPower = addReminder(addSection(), suggest, kLowPowerEnabled.key);
  // TRANSLATORS: When "Suggest Low Power Mode" does so; %1$s is a percentage, "30%".
  const char* below = translated("When on battery below %1$s");
  controls_.addNumber(lowPower, {percentLabel(below), kLowPowerAt.key, {10, 60}});
  controls_.addSound(lowPower, AlertKind::lowPower);

  // TRANSLATORS: The switch of the reminder to unplug after some hours.
  const char* tooLongTitle = translated("Plugged in too long");
  const auto tooLong = addReminder(addSection(), tooLongTitle, kLongEnabled.key);
  controls_.addNumber(tooLong, {hoursLabel, kLongHours.key, {1, 48}});
  controls_.addSound(tooLong, AlertKind::tooLong);

  // TRANSLATORS: The switch of a reminder that comes only once; %1$s is always 80%.
  const char* worn = translated("Battery health below %1$s (once)");
  const auto health = addReminder(addSection(), filledLabel(worn, {percentText(kWornBelowPercent)}),
                                  kHealthEnabled.key);
  controls_.addSound(health, AlertKind::health);
}

void SettingsView::addQuietHours() {
  FormSection* section = addSection(translated("Quiet hours"));
  controls_.addSwitch({section}, translated("Hold alerts during quiet hours"), kQuietEnabled.key);
  const StoredControls::Group group{section, kQuietEnabled.key};
  // TRANSLATORS: When the quiet hours begin.
  controls_.addTime(group, translatedIn("quiet hours", "From"), kQuietStart.key);
  // TRANSLATORS: When the quiet hours end.
  controls_.addTime(group, translatedIn("quiet hours", "Until"), kQuietEnd.key);
}

void SettingsView::addMenuBar() {
  // TRANSLATORS: Say what en.po says.
  FormSection* section = addSection(translated("Menu bar"));
  // TRANSLATORS: Say what en.po says.
  controls_.addSwitch({section}, translated("Show percentage in the menu bar"), kShowPercent.key);
  controls_.addSwitch({section}, translated("Show time remaining"), kShowTime.key);
}

void SettingsView::addGeneral() {
  FormSection* section = addSection(translated("General"));
  section->addRow(translated("Launch at Login"), launchAtLogin_ = new Switch);
  launchAtLogin_->setChecked(host_.loginItem().isEnabled());
  connect(launchAtLogin_, &Switch::clicked, this, &SettingsView::setLaunchAtLogin);
  loginErrorRow_ = section->addRow(loginError_ = makeWrapping(TextRole::caption));
  loginError_->setColor(TextColor::red);
  loginErrorRow_->hide();

  auto* reset = new QPushButton(translated("Reset History…"));
  // The return key presses it, too.
  reset->setAutoDefault(true);
  connect(reset, &QPushButton::clicked, this, &SettingsView::confirmReset);
  section->addRow(reset, Qt::AlignLeft);
  if (host_.model().notifier().available()) return;
  Label* unavailable = makeWrapping(
      TextRole::caption,
      // TRANSLATORS: "make_app" is the name of a command and stays as it is.
      translated("Notifications need Lumora to run as an app bundle (see make_app). Run from the "
                 "command line, alerts cannot be delivered."));
  unavailable->setColor(TextColor::orange);
  section->addRow(unavailable);
}

void SettingsView::addNotice() {
  Label* notice = makeWrapping(
      TextRole::caption,
      // TRANSLATORS: Say what en.po says. %1$s is always 80%.
      filledLabel(translated("macOS may also hold charging at %1$s itself (Optimized Battery "
                             "Charging, System Settings, Battery). Lumora can only remind you; it "
                             "cannot control charging."),
                  {percentText(kUsualHold)}));
  notice->setColor(TextColor::secondary);
  addSection()->addRow(notice);
}

void SettingsView::showEvent(QShowEvent* event) {
  host_.defaults().synchronize();
  controls_.update();
  changesByOthers_.start();
  QWidget::showEvent(event);
}

void SettingsView::hideEvent(QHideEvent* event) {
  changesByOthers_.stop();
  QWidget::hideEvent(event);
}

void SettingsView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) renewFonts(this);
  QWidget::changeEvent(event);
}

void SettingsView::setLaunchAtLogin(bool on) {
  LoginItem& item = host_.loginItem();
  const auto error = on ? item.registerItem() : item.unregisterItem();
  // TRANSLATORS: %1$s is an error message of the system.
  const char* failed = translated("Could not change Launch at Login: %1$s");
  loginError_->setText(filledLabel(failed, {error.value_or("")}));
  loginErrorRow_->setVisible(error.has_value());
  launchAtLogin_->setChecked(item.isEnabled());
}

/// Asked once at a time, also when several switches change together.
void SettingsView::askForPermission() {
  if (!isVisible()) return;
  host_.model().notifier().requestIfNeeded([this](const Dialog& dialog,
                                                  const std::function<void(std::size_t)>& answer) {
    if (asking_) return;
    asking_ = true;
    showDialog(dialog, QDialogButtonBox::AcceptRole, window(), [this, answer](std::size_t button) {
      asking_ = false;
      answer(button);
    });
  });
}

void SettingsView::confirmReset() {
  showDialog(resetQuestion(), QDialogButtonBox::DestructiveRole, window(),
             [this](std::size_t button) {
               if (button == kReset) host_.model().resetHistory();
             });
}

}  // namespace lumora
