// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/StatusNotifierItem.h"

#include "Platform/Linux/TrayInterfaces.h"

#include <tuple>
#include <utility>

namespace lumora {
namespace {

// Where some trays look for an item that belongs to a name on the bus.
constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kMenuPath = "/MenuBar";
using Arguments = Glib::VariantContainerBase;

Glib::VariantBase text(const Glib::ustring& value) {
  return Glib::Variant<Glib::ustring>::create(value);
}

ExportedObject::Property always(const Glib::VariantBase& value) {
  return [value] { return value; };
}

/// a(iiay), without a copy of each byte on its own.
Glib::VariantBase pixmapsOf(const std::vector<Icon>& icons) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
  for (const Icon& icon : icons) {
    GVariant* bytes = g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, icon.argb.data(),
                                                icon.argb.size(), sizeof icon.argb[0]);
    g_variant_builder_add(&builder, "(ii@ay)", icon.width, icon.height, bytes);
  }
  return Glib::wrap(g_variant_ref_sink(g_variant_builder_end(&builder)));
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(const BusConnection& session, Identity identity,
                                       Callbacks callbacks)
    : session_(session), identity_(std::move(identity)), callbacks_(std::move(callbacks)) {
  if (!session) return;
  object_.emplace(session, kPath, kStatusNotifierItemInterface, members());
  menu_.emplace(session, kMenuPath, callbacks_.menu);
  tray_.emplace(session, [this](TextPlace place) { onTray(place); });
}

ExportedObject::Members StatusNotifierItem::members() {
  const auto nothing = [](const Arguments& /*arguments*/) { return ExportedObject::Answer{}; };
  const auto activate = [this](const Arguments& arguments) {
    const ScreenPoint click = {argument<std::int32_t>(arguments, 0),
                               argument<std::int32_t>(arguments, 1)};
    return ExportedObject::Answer{.afterwards = [this, click] { callbacks_.activated(click); }};
  };
  const auto activateSomewhere = [this](const Arguments& /*arguments*/) {
    return ExportedObject::Answer{.afterwards = [this] { callbacks_.activated({}); }};
  };
  const auto takeToken = [this](const Arguments& arguments) {
    callbacks_.activationToken(argument<Glib::ustring>(arguments, 0));
    return ExportedObject::Answer{};
  };
  const auto noText = always(text(""));
  const auto noPixmaps = always(pixmapsOf({}));
  return {
      .methods = {{"Activate", activate},
                  {"SecondaryActivate", activate},
                  {"XAyatanaSecondaryActivate", activateSomewhere},
                  {"ContextMenu", nothing},  // the tray draws the menu itself
                  {"Scroll", nothing},
                  {"ProvideXdgActivationToken", takeToken}},
      .properties = {{"Id", always(text(identity_.id))},
                     {"Title", always(text(identity_.title))},
                     {"Status", always(text("Active"))},
                     {"Category", always(text("Hardware"))},
                     {"WindowId", always(Glib::Variant<std::int32_t>::create(0))},
                     {"IconName", [this] { return text(face_.iconName); }},
                     {"IconPixmap", [this] { return pixmapsOf(icons_); }},
                     {"IconThemePath", always(text(identity_.iconThemePath))},
                     {"IconAccessibleDesc", always(text("Battery"))},
                     {"OverlayIconName", noText},
                     {"OverlayIconPixmap", noPixmaps},
                     {"AttentionIconName", noText},
                     {"AttentionIconPixmap", noPixmaps},
                     {"AttentionMovieName", noText},
                     {"AttentionAccessibleDesc", noText},
                     {"ToolTip", [this] { return toolTip(); }},
                     {"ItemIsMenu", always(Glib::Variant<bool>::create(false))},
                     {"Menu", always(Glib::Variant<Glib::DBusObjectPathString>::create(kMenuPath))},
                     {"XAyatanaLabel", [this] { return text(face_.label); }},
                     {"XAyatanaLabelGuide", [this] { return text(face_.labelGuide); }},
                     {"XAyatanaOrderingIndex", always(Glib::Variant<std::uint32_t>::create(0))}}};
}

Glib::VariantBase StatusNotifierItem::toolTip() const {
  return Glib::VariantContainerBase::create_tuple(
      {text(""), pixmapsOf({}), text(face_.tooltipTitle), text(face_.tooltipText)});
}

void StatusNotifierItem::show(const StatusItemContent& content) {
  if (content_ == content) return;
  const bool isFirst = !content_;
  content_ = content;
  update();
  if (isFirst && place_) tray_->registerItem(session_->get_unique_name());
}

/// A tray that is new has forgotten what it was told, and one that is not takes it twice.
void StatusNotifierItem::onTray(TextPlace place) {
  place_ = place;
  update();
  if (content_) tray_->registerItem(session_->get_unique_name());
}

void StatusNotifierItem::update() {
  if (!content_ || !place_) return;
  const StatusItemFace before = std::exchange(face_, statusItemFace(*content_, *place_));
  if (face_.drawn != before.drawn) {
    icons_ = face_.drawn ? callbacks_.draw(*face_.drawn) : std::vector<Icon>{};
  }
  if (face_.drawn && icons_.empty()) {
    // Nobody draws here: the image alone, and the text where the pointer rests.
    face_.iconName = iconName(content_->symbol);
    face_.tooltipText = content_->text;
  }
  announce(before);
}

/// Tells what changed, in the words of the older trays and of the newer.
void StatusNotifierItem::announce(const StatusItemFace& before) {
  std::vector<Glib::ustring> changed;
  std::vector<Glib::ustring> invalidated;
  if (face_.iconName != before.iconName || face_.drawn != before.drawn) {
    object_->emit("NewIcon");
    changed.emplace_back("IconName");
    // Large, and fetched only by a tray that draws it.
    invalidated.emplace_back("IconPixmap");
  }
  if (face_.label != before.label) {
    object_->emit("XAyatanaNewLabel", Glib::VariantContainerBase::create_tuple(
                                          {text(face_.label), text(face_.labelGuide)}));
    changed.insert(changed.end(), {"XAyatanaLabel", "XAyatanaLabelGuide"});
  }
  if (face_.tooltipTitle != before.tooltipTitle || face_.tooltipText != before.tooltipText) {
    object_->emit("NewToolTip");
    changed.emplace_back("ToolTip");
  }
  if (!changed.empty()) object_->announce(changed, invalidated);
}

}  // namespace lumora
