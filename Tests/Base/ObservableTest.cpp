// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/Observable.h"
#include "Support/Recorder.h"

#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(Observable, HoldsTheValueItWasMadeWith) {
  const Observable<std::string> name("first");
  EXPECT_EQ(name.get(), "first");
  EXPECT_EQ(*name, "first");
  EXPECT_EQ(name->size(), 5U);
}

TEST(Observable, AnnouncesAChangeBeforeItHappens) {
  Recorder recorder;
  Observable<std::string> name("old");
  const auto subscription = name.subscribe([&] { recorder.add(*name); });
  name.set("new");
  recorder.add(*name);
  EXPECT_EQ(recorder.take(), "old, new");
}

TEST(Observable, AnnouncesAlsoAnEqualValue) {
  Recorder recorder;
  Observable<int> number(1);
  const auto subscription = number.subscribe([&] { recorder.add("told"); });
  number.set(1);
  EXPECT_EQ(recorder.take(), "told");
}

TEST(Announcement, TellsItsSubscribersInTheOrderTheyCame) {
  Recorder recorder;
  Announcement announcement;
  const auto first = announcement.subscribe([&] { recorder.add("first"); });
  const auto second = announcement.subscribe([&] { recorder.add("second"); });
  const auto third = announcement.subscribe([&] { recorder.add("third"); });
  announcement.announce();
  EXPECT_EQ(recorder.take(), "first, second, third");
}

TEST(Announcement, TellsNoSubscriberWhoseSubscriptionEnded) {
  Recorder recorder;
  Announcement announcement;
  auto first = announcement.subscribe([&] { recorder.add("first"); });
  const auto second = announcement.subscribe([&] { recorder.add("second"); });
  first.reset();
  announcement.announce();
  announcement.announce();
  EXPECT_EQ(recorder.take(), "second, second");
}

TEST(Announcement, TellsNoSubscriberThatAnEarlierOneSentAway) {
  Recorder recorder;
  Announcement announcement;
  Subscription second;
  const auto first = announcement.subscribe([&] {
    recorder.add("first");
    second.reset();
  });
  second = announcement.subscribe([&] { recorder.add("second"); });
  announcement.announce();
  EXPECT_EQ(recorder.take(), "first");
}

TEST(Announcement, LetsASubscriberSendItselfAway) {
  Recorder recorder;
  Announcement announcement;
  Subscription own;
  own = announcement.subscribe([&] {
    own.reset();
    recorder.add("once");
  });
  announcement.announce();
  announcement.announce();
  EXPECT_EQ(recorder.take(), "once");
}

TEST(Announcement, TellsANewSubscriberFromTheNextTimeOn) {
  Recorder recorder;
  Announcement announcement;
  Subscription late;
  const auto early = announcement.subscribe([&] {
    recorder.add("early");
    if (!late) late = announcement.subscribe([&] { recorder.add("late"); });
  });
  announcement.announce();
  EXPECT_EQ(recorder.take(), "early");
  announcement.announce();
  EXPECT_EQ(recorder.take(), "early, late");
}

TEST(Announcement, MayBeMadeAgainWhileItIsMade) {
  Recorder recorder;
  Announcement announcement;
  int times = 0;
  const auto first = announcement.subscribe([&] {
    recorder.add("first");
    if (++times == 1) announcement.announce();
  });
  const auto second = announcement.subscribe([&] { recorder.add("second"); });
  announcement.announce();
  EXPECT_EQ(recorder.take(), "first, first, second, second");
}

TEST(Announcement, MayEndBeforeItsSubscriptions) {
  auto announcement = std::make_unique<Announcement>();
  Recorder recorder;
  auto subscription = announcement->subscribe([&] { recorder.add("told"); });
  announcement->announce();
  announcement.reset();
  subscription.reset();
  EXPECT_EQ(recorder.take(), "told");
}

}  // namespace
}  // namespace lumora::test
