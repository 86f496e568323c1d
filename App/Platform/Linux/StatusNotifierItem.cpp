// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/StatusNotifierItem.h"

#include "Platform/Linux/IconPixmaps.h"
#include "Platform/Linux/TrayInterfaces.h"
#include "Platform/Linux/Variants.h"

#include <tuple>
#include <utility>

#include <unistd.h>

namespace lumora {
namespace {

using Answer = ExportedObject::Answer;
using Arguments = Glib::VariantContainerBase;
using Names = std::vector<Glib::ustring>;

// GNOME looks for items at this path, whether they register or not.
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kMenuPath = "/MenuBar";

/// The name that items have by convention, which every tray takes. A unique name would do for most;
/// but GNOME, finding an item by itself and being told of it, sees that both are one by this.
Glib::ustring conventionalName() {
  return "org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1";
}

Glib::VariantBase text(const std::string& value) {
  return Glib::Variant<Glib::ustring>::create(Glib::ustring(value).make_valid());
}

ExportedObject::Property constant(const Glib::VariantBase& value) {
  return [value] { return value; };
}

Glib::VariantBase toolTip(const StatusItemFace& face) {
  const Glib::VariantBase noIconName = text({});
  return Glib::VariantContainerBase::create_tuple(
      {noIconName, iconPixmaps({}), text(face.tooltipTitle), text(face.tooltipText)});
}

ScreenPoint point(const Arguments& arguments) {
  return {.x = argument<std::int32_t>(arguments, 0), .y = argument<std::int32_t>(arguments, 1)};
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(BusConnection session, Identity identity,
                                       Callbacks callbacks)
    : session_(std::move(session)),
      identity_(std::move(identity)),
      callbacks_(std::move(callbacks)) {}

void StatusNotifierItem::show(const StatusItemContent& content) {
  if (!session_) return;
  content_ = content;
  update();
  if (!object_) appear();
}

void StatusNotifierItem::appear() {
  name_.emplace(session_, conventionalName());
  object_.emplace(session_, kItemPath, kStatusNotifierItemInterface, members());
  menu_.emplace(session_, kMenuPath, callbacks_.menu);
  tray_.emplace(session_, [this](TextPlace place) { onTray(place); });
}

void StatusNotifierItem::onTray(TextPlace place) {
  place_ = place;
  update();
  tray_->registerItem(name_->get());
}

void StatusNotifierItem::update() {
  const StatusItemFace before = std::exchange(face_, statusItemFace(content_, place_));
  if (face_.drawn != before.drawn) pixmaps_.reset();
  if (object_) tellChanges(before);
}

void StatusNotifierItem::tellChanges(const StatusItemFace& before) {
  const bool icon = face_.iconName != before.iconName;
  const bool pixmap = face_.drawn != before.drawn;
  const bool tip =
      face_.tooltipTitle != before.tooltipTitle || face_.tooltipText != before.tooltipText;
  const bool label = face_.label != before.label;
  const bool guide = face_.labelGuide != before.labelGuide;

  Names changed;
  if (icon) changed.emplace_back("IconName");
  if (tip) changed.emplace_back("ToolTip");
  if (label) changed.emplace_back("XAyatanaLabel");
  if (guide) changed.emplace_back("XAyatanaLabelGuide");
  const Names invalidated = pixmap ? Names{"IconPixmap"} : Names{};
  if (changed.empty() && invalidated.empty()) return;

  object_->announce(changed, invalidated);
  if (icon || pixmap) object_->emit("NewIcon");
  if (tip) object_->emit("NewToolTip");
  if (!label && !guide) return;
  object_->emit("XAyatanaNewLabel", Glib::VariantContainerBase::create_tuple(
                                        {text(face_.label), text(face_.labelGuide)}));
}

ExportedObject::Members StatusNotifierItem::members() {
  const auto clicked = [this](const Arguments& arguments) -> Answer {
    return {.afterwards = [this, click = point(arguments)] { callbacks_.activated(click); }};
  };
  const auto clickedSomewhere = [this](const Arguments& /*timestamp*/) -> Answer {
    return {.afterwards = [this] { callbacks_.activated(std::nullopt); }};
  };
  const auto tokenProvided = [this](const Arguments& arguments) -> Answer {
    callbacks_.activationToken(argument<Glib::ustring>(arguments, 0));
    return {};
  };
  // Trays show the menu themselves.
  const auto ignored = [](const Arguments& /*arguments*/) -> Answer { return {}; };

  const auto none = constant(text({}));
  const auto noPixmap = constant(iconPixmaps({}));
  return {.methods = {{"Activate", clicked},
                      {"SecondaryActivate", clicked},
                      {"XAyatanaSecondaryActivate", clickedSomewhere},
                      {"ProvideXdgActivationToken", tokenProvided},
                      {"ContextMenu", ignored},
                      {"Scroll", ignored}},
          .properties = {
              {"Id", constant(text(identity_.id))},
              {"Title", constant(text(identity_.title))},
              {"Status", constant(text("Active"))},
              {"Category", constant(text("Hardware"))},
              {"WindowId", constant(Glib::Variant<std::int32_t>::create(0))},
              {"IconName", [this] { return text(face_.iconName); }},
              {"IconPixmap", [this] { return pixmaps(); }},
              {"IconThemePath", constant(text(identity_.iconThemePath))},
              {"IconAccessibleDesc", constant(text("Battery"))},
              {"OverlayIconName", none},
              {"OverlayIconPixmap", noPixmap},
              {"AttentionIconName", none},
              {"AttentionIconPixmap", noPixmap},
              {"AttentionMovieName", none},
              {"AttentionAccessibleDesc", none},
              {"ToolTip", [this] { return toolTip(face_); }},
              // A click is ours; the menu is for the other button.
              {"ItemIsMenu", constant(Glib::Variant<bool>::create(false))},
              {"Menu", constant(Glib::Variant<Glib::DBusObjectPathString>::create(kMenuPath))},
              {"XAyatanaLabel", [this] { return text(face_.label); }},
              {"XAyatanaLabelGuide", [this] { return text(face_.labelGuide); }},
              {"XAyatanaOrderingIndex", constant(Glib::Variant<std::uint32_t>::create(0))}}};
}

const Glib::VariantBase& StatusNotifierItem::pixmaps() {
  if (!pixmaps_) {
    pixmaps_ = iconPixmaps(face_.drawn ? callbacks_.draw(*face_.drawn) : std::vector<Icon>{});
  }
  return *pixmaps_;
}

}  // namespace lumora
