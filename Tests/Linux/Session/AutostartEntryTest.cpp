// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Session/AutostartEntry.h"
#include "Support/TemporaryFolder.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

namespace fs = std::filesystem;

class AutostartEntryTest : public testing::Test {
 protected:
  AutostartEntryTest() { makeProgram(program); }

  static void makeProgram(const fs::path& path) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "#!/bin/sh\n";
    fs::permissions(path, fs::perms::owner_all);
  }

  void write(const std::string& lines) const {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << lines;
  }

  std::string text() const {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
  }

  TemporaryFolder folder;
  fs::path program = folder.path() / "Lumora.app" / "lumora";
  AutostartEntry::Folders folders{folder.path() / "user",
                                  {folder.path() / "a", folder.path() / "b"}};
  fs::path file = folders.user / "autostart" / "org.lumora.Test.desktop";
  AutostartEntry entry{program, "org.lumora.Test", folders};
};

TEST_F(AutostartEntryTest, IsOffUntilItIsRegistered) {
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_FALSE(fs::exists(file));
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_TRUE(entry.isEnabled());
  EXPECT_NE(text().find("Exec=\"" + program.string() + "\"\n"), std::string::npos) << text();
  EXPECT_EQ(entry.unregisterItem(), std::nullopt);
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(AutostartEntryTest, HasNothingToUndoWhereThereIsNoEntry) {
  EXPECT_EQ(entry.unregisterItem(), std::nullopt);
}

TEST_F(AutostartEntryTest, StartsAProgramWhosePathIsHardToWrite) {
  const fs::path hard = folder.path() / "My \"$Apps`\\ ä" / "lumora";
  makeProgram(hard);
  AutostartEntry other(hard, "org.lumora.Test", folders);
  EXPECT_EQ(other.registerItem(), std::nullopt);
  EXPECT_TRUE(other.isEnabled()) << text();
}

TEST_F(AutostartEntryTest, IsOffOnceTheBundleHasMovedAndOnAgainWhereItIs) {
  entry.registerItem();
  fs::rename(folder.path() / "Lumora.app", folder.path() / "Moved.app");
  AutostartEntry moved(folder.path() / "Moved.app" / "lumora", "org.lumora.Test", folders);
  EXPECT_FALSE(moved.isEnabled());
  EXPECT_EQ(moved.registerItem(), std::nullopt);
  EXPECT_TRUE(moved.isEnabled());
}

TEST_F(AutostartEntryTest, ReadsEntriesForWhatTheyAre) {
  struct Row {
    const char* lines;
    bool enabled;
  };
  const std::string head = "[Desktop Entry]\nType=Application\nName=Mine\n";
  for (const Row& row : {
           Row{"Exec=true\n", true},
           Row{"Exec=env LANG=C true --quietly\n", true},
           Row{"Exec=true\nHidden=false\n", true},
           Row{"Exec=true\nX-GNOME-Autostart-enabled=true\n", true},
           Row{"Exec=true\nNotShowIn=Elsewhere;\n", true},
           Row{"Exec=true\nHidden=true\n", false},
           Row{"Exec=true\nX-GNOME-Autostart-enabled=false\n", false},
           Row{"Exec=true\nOnlyShowIn=Elsewhere;\n", false},
           Row{"Exec=/nowhere/lumora\n", false},
           Row{"Exec=true\nTryExec=/nowhere/lumora\n", false},
       }) {
    write(head + row.lines);
    EXPECT_EQ(entry.isEnabled(), row.enabled) << row.lines;
  }
}

TEST_F(AutostartEntryTest, IsOffWithAnEntryThatIsNone) {
  for (const char* garbage : {"", "not an entry", "[Desktop Entry]\nExec", "\xff\xfe\x00"}) {
    write(garbage);
    EXPECT_FALSE(entry.isEnabled()) << garbage;
  }
  fs::remove(file);
  fs::create_directories(file);
  EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, TurnsAHiddenEntryOnAndKeepsWhatElseStandsInIt) {
  write(
      "# mine\n[Desktop Entry]\nType=Application\nName=Mine\nExec=true\nHidden=true\n"
      "OnlyShowIn=Elsewhere;\nX-GNOME-Autostart-enabled=false\nX-GNOME-Autostart-Delay=5\n");
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_TRUE(entry.isEnabled());
  EXPECT_NE(text().find("# mine"), std::string::npos);
  EXPECT_NE(text().find("X-GNOME-Autostart-Delay=5"), std::string::npos);
  EXPECT_EQ(text().find("Hidden"), std::string::npos);
}

TEST_F(AutostartEntryTest, HidesAnEntryOfTheSystem) {
  const fs::path systems = folders.system.back() / "autostart" / file.filename();
  fs::create_directories(systems.parent_path());
  std::ofstream(systems) << "[Desktop Entry]\nType=Application\nName=Lumora\nExec=true\n";
  EXPECT_TRUE(entry.isEnabled());
  EXPECT_EQ(entry.unregisterItem(), std::nullopt);
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_TRUE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, SaysWhatWentWrong) {
  // A file stands where the folder should be: this stops root, too.
  fs::create_directories(folders.user);
  std::ofstream(file.parent_path()) << "in the way";
  const auto failure = entry.registerItem();
  ASSERT_TRUE(failure);
  EXPECT_NE(failure->find("Not a directory"), std::string::npos) << *failure;
  EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, DoesNotRemoveAFolder) {
  fs::create_directories(file);
  const auto failure = entry.unregisterItem();
  ASSERT_TRUE(failure);
  EXPECT_EQ(*failure, "Is a directory");
  EXPECT_TRUE(fs::is_directory(file));
}

}  // namespace
}  // namespace lumora::test
