// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "History/HistoryFile.h"
#include "Linux/Notifications/DesktopNotifications.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/Power/UPower.h"
#include "Linux/Session/Logind.h"
#include "Linux/System/LocalFiles.h"
#include "Linux/System/MainBundle.h"
#include "Linux/System/MainLoop.h"
#include "Month.h"
#include "Support/FakeSoundPlayer.h"
#include "Support/TemporaryFolder.h"

#include <stdexcept>

namespace lumora::benchmark {

/// A folder with a month of history in it, up to `end`.
class FolderOfAMonth : public test::TemporaryFolder {
 public:
  FolderOfAMonth(Files& files, Date end) {
    files.replace(path() / "Lumora" / "history.json", *encodeSamples(monthOfSamples(end)));
  }
};

/// The model on the real services of the simulated laptop, with a month of history, launched. Its
/// clock stands still, so that no save falls due.
class RealModel {
 public:
  RealModel() {
    const auto context = Glib::MainContext::get_default();
    bool ready = false;
    upower_.whenReady(std::chrono::minutes(1), [&] { ready = true; });
    while (!ready) context->iteration(true);
    model_.refresh(AppModel::Reason::launch);
    if (!model_.state()->hasBattery) throw std::runtime_error("no battery: use the laptop");
  }

  AppModel& operator*() { return model_; }
  AppModel* operator->() { return &model_; }

 private:
  class StoppedClock final : public Clock {
   public:
    Date now() const override { return dateSince1970(1'790'000'000); }
    Seconds sinceBoot() const override { return Seconds{1000}; }
  };

  Glib::RefPtr<Gio::DBus::Connection> session_ =
      Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
  StoppedClock clock_;
  MainLoop runLoop_;
  LocalFiles files_;
  FolderOfAMonth folder_{files_, clock_.now()};
  Bundle bundle_ = mainBundle();
  DefaultsStore defaults_{files_, folder_.path() / "defaults.json"};
  UPower upower_;
  PowerProfiles profiles_;
  Logind logind_;
  test::FakeSoundPlayer player_;
  PermissionStore permissions_{session_, "org.lumora.Benchmark"};
  DesktopNotifications notifications_{
      session_, {"org.lumora.Benchmark", {}}, permissions_, player_};
  AppModel model_{{clock_, runLoop_, upower_, profiles_, logind_, notifications_, bundle_, files_,
                   defaults_, folder_.path()}};
};

}  // namespace lumora::benchmark
