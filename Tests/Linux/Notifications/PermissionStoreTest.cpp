// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"
#include "Linux/Notifications/PermissionStore.h"
#include "Linux/WaitFor.h"

#include <optional>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

class PermissionStoreTest : public testing::Test {
 protected:
  void SetUp() override { laptop.reset(); }

  std::optional<AuthorizationStatus> statusIn(PermissionStore& asked) {
    std::optional<AuthorizationStatus> status;
    asked.status([&](AuthorizationStatus answer) { status = answer; });
    EXPECT_TRUE(waitFor([&] { return status.has_value(); }));
    return status;
  }

  void record(const Glib::ustring& id, const std::vector<Glib::ustring>& permissions) {
    using Arguments =
        std::tuple<Glib::ustring, bool, Glib::ustring, Glib::ustring, std::vector<Glib::ustring>>;
    laptop.session()->call_sync(
        "/org/freedesktop/impl/portal/PermissionStore",
        "org.freedesktop.impl.portal.PermissionStore", "SetPermission",
        Glib::Variant<Arguments>::create({"notifications", true, "notification", id, permissions}),
        "org.freedesktop.impl.portal.PermissionStore");
  }

  Laptop laptop;
  PermissionStore store{laptop.session(), "org.lumora.Test"};
};

TEST_F(PermissionStoreTest, IsUndecidedAtFirst) {
  EXPECT_EQ(statusIn(store), AuthorizationStatus::notDetermined);
  record("org.example.Other", {"no"});
  EXPECT_EQ(statusIn(store), AuthorizationStatus::notDetermined);
}

TEST_F(PermissionStoreTest, FollowsEachDecision) {
  record("org.lumora.Test", {"no"});
  EXPECT_EQ(statusIn(store), AuthorizationStatus::denied);
  record("org.lumora.Test", {"yes"});
  EXPECT_EQ(statusIn(store), AuthorizationStatus::authorized);
  record("org.lumora.Test", {"perhaps"});
  EXPECT_EQ(statusIn(store), AuthorizationStatus::notDetermined);
}

TEST_F(PermissionStoreTest, RemembersThatItWasAllowed) {
  store.allow();
  EXPECT_EQ(statusIn(store), AuthorizationStatus::authorized);
}

TEST_F(PermissionStoreTest, EverybodyMayWithoutAStore) {
  laptop.kill("permissions");
  EXPECT_EQ(statusIn(store), AuthorizationStatus::authorized);
  laptop.start("permissions");
}

TEST_F(PermissionStoreTest, EverybodyMayWhenTheStoreHangs) {
  laptop.hang("permissions");
  EXPECT_EQ(statusIn(store), AuthorizationStatus::authorized);
  laptop.resume("permissions");
}

TEST_F(PermissionStoreTest, EverybodyMayWithoutABus) {
  PermissionStore none(nullptr, "org.lumora.Test");
  EXPECT_EQ(statusIn(none), AuthorizationStatus::authorized);
}

}  // namespace
}  // namespace lumora::test
