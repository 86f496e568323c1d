// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// One piece of work for callgrind to count the instructions of: counted_benchmark
// refresh|save|redraw.
#include "History/HistoryStore.h"
#include "OpenPopover.h"
#include "RealModel.h"
#include "Views/Style/Style.h"

#include <functional>
#include <map>
#include <string>

/// Only what happens in here is counted.
extern "C" [[gnu::noipa]] void counted(const std::function<void()>& work) { work(); }

namespace lumora::benchmark {
namespace {

/// Once to have everything in place, then for callgrind.
void twice(const std::function<void()>& work) {
  work();
  counted(work);
}

/// What a minute brings.
void refresh() {
  Gio::init();
  RealModel model;
  twice([&] { model->refresh(AppModel::Reason::timer); });
}

/// A month of samples to the disk.
void save() {
  const Date now = dateSince1970(1'790'000'000.1234567);
  LocalFiles files;
  const FolderOfAMonth folder(files, now);
  HistoryStore store(files, folder.path(), now);
  twice([&] { store.save(now); });
}

void redraw() {
  int count = 1;
  std::string name = "counted_benchmark";
  char* arguments = name.data();
  const QApplication application(count, &arguments);
  lumora::installStyle();
  OpenPopover popover;
  twice([&] { popover.redraw(); });
}

}  // namespace
}  // namespace lumora::benchmark

int main(int argc, char** argv) {
  using namespace lumora::benchmark;
  const std::map<std::string, void (*)()> works = {
      {"refresh", refresh}, {"save", save}, {"redraw", redraw}};
  if (argc != 2 || !works.contains(argv[1])) return 2;
  works.at(argv[1])();
}
