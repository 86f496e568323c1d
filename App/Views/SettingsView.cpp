// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SettingsView.h"

#include "Preferences/Prefs.h"
#include "Views/Labels.h"
#include "Views/MessageDialog.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kMargin = 20;
constexpr int kSpacing = 12;
constexpr int kLookForChangesMilliseconds = 1000;

const Dialog kResetQuestion = {"Reset history?",
                               "This deletes all saved battery samples used for the chart.",
                               {"Reset", "Cancel"}};
constexpr std::size_t kReset = 0;

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
  applyColors();
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

StoredControls::Group SettingsView::addReminder(FormSection* section, const char* title,
                                                const char* key) {
  connect(controls_.addSwitch({section}, title, key), &Switch::toggled, this,
          [this] { askForPermission(); });
  return {section, key, title};
}

void SettingsView::addReminders() {
  const auto limit = addReminder(addSection("Alerts"), "Charge limit", "limitEnabled");
  controls_.addNumber(limit, {"Alert when charging reaches ", "%", "limit", {50, 100}});
  controls_.addSwitch(limit, "Repeat every 5 minutes, up to 3 times", "repeatReminder");
  controls_.addSound(limit, "limitSound");

  const auto low = addReminder(addSection(), "Low battery", "lowEnabled");
  controls_.addNumber(low, {"Alert on battery at ", "% or less", "low", {5, 50}});
  controls_.addSound(low, "lowSound");

  const auto lowPower = addReminder(addSection(), "Suggest Low Power Mode", "lowPowerEnabled");
  controls_.addNumber(lowPower, {"When on battery below ", "%", "lowPowerAt", {10, 60}});
  controls_.addSound(lowPower, "lowPowerSound");

  const auto tooLong = addReminder(addSection(), "Plugged in too long", "longEnabled");
  controls_.addNumber(
      tooLong, {"Alert after ", " h plugged in above the charge limit", "longHours", {1, 48}});
  controls_.addSound(tooLong, "longSound");

  const auto health = addReminder(addSection(), "Battery health below 80% (once)", "healthEnabled");
  controls_.addSound(health, "healthSound");
}

void SettingsView::addQuietHours() {
  FormSection* section = addSection("Quiet hours");
  controls_.addSwitch({section}, "Hold alerts during quiet hours", "quietEnabled");
  const StoredControls::Group group{section, "quietEnabled"};
  controls_.addTime(group, "From", "quietStart");
  controls_.addTime(group, "Until", "quietEnd");
}

void SettingsView::addMenuBar() {
  FormSection* section = addSection("Menu bar");
  controls_.addSwitch({section}, "Show percentage in the menu bar", "showPercent");
  controls_.addSwitch({section}, "Show time remaining", "showTime");
}

void SettingsView::addGeneral() {
  FormSection* section = addSection("General");
  section->addRow("Launch at Login", launchAtLogin_ = new Switch);
  launchAtLogin_->setChecked(host_.loginItem().isEnabled());
  connect(launchAtLogin_, &Switch::clicked, this, &SettingsView::setLaunchAtLogin);
  loginErrorRow_ = section->addRow(loginError_ = makeWrapping(TextRole::caption));
  loginErrorRow_->hide();

  auto* reset = new QPushButton(QStringLiteral("Reset History…"));
  reset->setAutoDefault(false);
  connect(reset, &QPushButton::clicked, this, &SettingsView::confirmReset);
  section->addRow(reset, Qt::AlignLeft);
  if (host_.model().notifier().available()) return;
  section->addRow(unavailable_ = makeWrapping(
                      TextRole::caption,
                      "Notifications need Lumora to run as an app bundle (see make_app). Run from "
                      "the command line, alerts cannot be delivered."));
}

void SettingsView::addNotice() {
  addSection()->addRow(
      notice_ = makeWrapping(TextRole::caption,
                             "macOS may also hold charging at 80% itself (Optimized Battery "
                             "Charging, System Settings, Battery). Lumora can only remind you; it "
                             "cannot control charging."));
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
  if (event->type() == QEvent::PaletteChange) applyColors();
  if (event->type() == QEvent::FontChange) renewFonts(this);
  QWidget::changeEvent(event);
}

void SettingsView::setLaunchAtLogin(bool on) {
  LoginItem& item = host_.loginItem();
  const auto error = on ? item.registerItem() : item.unregisterItem();
  loginError_->setText(
      QString::fromStdString("Could not change Launch at Login: " + error.value_or("")));
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
  showDialog(kResetQuestion, QDialogButtonBox::DestructiveRole, window(),
             [this](std::size_t button) {
               if (button == kReset) host_.model().resetHistory();
             });
}

void SettingsView::applyColors() {
  setTextColor(loginError_, colorOf(Tint::red, palette()));
  if (unavailable_ != nullptr) setTextColor(unavailable_, colorOf(Tint::orange, palette()));
  setTextColor(notice_, secondaryColor(palette()));
}

}  // namespace lumora
