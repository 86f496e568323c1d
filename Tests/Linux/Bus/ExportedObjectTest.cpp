// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/ExportedObject.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

// The bus may go before the program hears of it, which has something to save then.
TEST(ExportedObjectTest, TellsNobodyWhereTheBusHasGone) {
  const auto bus = Gio::DBus::Connection::create_for_address_sync(
      std::getenv("DBUS_SESSION_BUS_ADDRESS"),
      Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT |
          Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
  ExportedObject object(
      bus, "/org/lumora/Test",
      "<node><interface name='org.lumora.Test'><signal name='Heard'/></interface></node>",
      {.properties = {{"Property", [] { return Glib::Variant<bool>::create(true); }}}});
  bus->close_sync();
  EXPECT_NO_THROW(object.emit("Heard"));
  EXPECT_NO_THROW(object.announce({"Property"}, {}));
}

}  // namespace
}  // namespace lumora::test
