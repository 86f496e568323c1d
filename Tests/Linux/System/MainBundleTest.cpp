// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/MainBundle.h"
#include "Support/TemporaryFolder.h"

#include <fstream>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

void makeFile(const std::filesystem::path& path) { std::ofstream(path) << '\n'; }

TEST(MainBundle, IsTheFolderNamedByItsDesktopEntry) {
  const TemporaryFolder folder;
  makeFile(folder.path() / "org.example.Test.desktop");
  makeFile(folder.path() / "test");
  EXPECT_EQ(bundleOf(folder.path() / "test"), (Bundle{folder.path(), "org.example.Test"}));
}

TEST(MainBundle, HasNoIdentifierWithoutExactlyOneEntry) {
  const TemporaryFolder folder;
  EXPECT_EQ(bundleOf(folder.path() / "test").identifier, std::nullopt);
  makeFile(folder.path() / "a.desktop");
  makeFile(folder.path() / "b.desktop");
  EXPECT_EQ(bundleOf(folder.path() / "test").identifier, std::nullopt);
  EXPECT_EQ(bundleOf("/nowhere/test").identifier, std::nullopt);
}

TEST(MainBundle, OfThisTestIsNone) {
  const Bundle bundle = mainBundle();
  EXPECT_TRUE(std::filesystem::exists(bundle.location / "linux_tests"));
  EXPECT_EQ(bundle.identifier, std::nullopt);
}

}  // namespace
}  // namespace lumora::test
