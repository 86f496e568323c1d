// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Base/Texts.h"
#include "Views/Children.h"
#include "Views/Controls/Disclosure.h"
#include "Views/FakeHost.h"
#include "Views/Gallery/LifelikeBattery.h"
#include "Views/Gallery/Scenes.h"
#include "Views/Languages.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Settings/SettingsWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLayout>
#include <QPainter>
#include <QScrollArea>

namespace lumora::test {
namespace {

/// All languages side by side, each under its name, as `show` renders them.
template <typename Show>
bool contactSheet(const std::filesystem::path& file, QSize tile, const Show& show) {
  constexpr int kColumns = 9;
  constexpr int kCaption = 24;
  const std::set<std::string> all = languages();
  const int rows = (static_cast<int>(all.size()) + kColumns - 1) / kColumns;
  const QSize step = tile + QSize(8, 8 + kCaption);
  QImage sheet(kColumns * step.width(), rows * step.height(), QImage::Format_RGB32);
  sheet.fill(Qt::gray);
  QPainter painter(&sheet);
  int index = 0;
  for (const std::string& language : all) {
    const QPoint at(index % kColumns * step.width(), index / kColumns * step.height());
    painter.drawText(at + QPoint(4, kCaption - 8), QString::fromStdString(language));
    const ScopedLanguage scoped(language, language);
    painter.drawImage(at + QPoint(4, kCaption), show());
    ++index;
  }
  painter.end();
  return sheet.save(QString::fromStdString(file.string()));
}

}  // namespace

bool renderLanguageSheets(DesktopLooks& looks, const std::filesystem::path& folder) {
  looks.apply({});
  FakeHost host;
  host.clock.time = kNow;
  host.setBattery(73, charging(), onBattery());
  host.setHistory(lifelikeWeek());
  host.model().snooze();
  host.model().refresh(AppModel::Reason::launch);
  host.bundle.identifier.reset();
  host.login.error = "Permission denied";
  const bool popovers = contactSheet(folder / "languages.png", {340, 740}, [&] {
    PopoverView view(host);
    view.show();
    childrenOf<Disclosure>(view).front()->click();
    view.resize(view.width(), view.layout()->totalHeightForWidth(view.width()));
    QApplication::processEvents();
    return picture(view);
  });
  return popovers && contactSheet(folder / "languages-settings.png", {480, 1400}, [&] {
           SettingsWindow window(host);
           window.present();
           for (auto* button : window.findChildren<QAbstractButton*>()) {
             if (button->accessibleName() == translated("Launch at Login")) button->click();
           }
           QApplication::processEvents();
           return picture(*window.findChild<QScrollArea*>()->widget());
         });
}

}  // namespace lumora::test
