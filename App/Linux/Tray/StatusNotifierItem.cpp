// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/StatusNotifierItem.h"

#include "Base/Texts.h"
#include "Interfaces.h"
#include "Linux/Bus/Variants.h"
#include "Linux/Tray/IconPixmaps.h"

#include <chrono>
#include <utility>

namespace lumora {
namespace {

using Answer = ExportedObject::Answer;
using Arguments = Glib::VariantContainerBase;
using Names = std::vector<Glib::ustring>;

// Registered as a path, and no other item has it. GNOME's AppIndicator extension loads an item
// twice that it finds under a conventional path or name as well, and may lose it by that.
constexpr const char* kItemPath = "/org/lumora/Lumora/StatusItem";
constexpr const char* kMenuPath = "/MenuBar";

// By then a tray has made what label and picture belong to.
constexpr std::chrono::milliseconds kAgain{2000};

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

StatusNotifierItem::StatusNotifierItem(BusConnection session, RunLoop& runLoop, Identity identity,
                                       Callbacks callbacks)
    : session_(std::move(session)),
      runLoop_(runLoop),
      identity_(std::move(identity)),
      callbacks_(std::move(callbacks)) {}

void StatusNotifierItem::show() {
  if (!session_) return;
  update();
  if (!object_) appear();
}

void StatusNotifierItem::appear() {
  object_.emplace(session_, kItemPath, interfaces::StatusNotifierItem, members());
  menu_.emplace(session_, kMenuPath, callbacks_.menu);
  tray_.emplace(session_, [this](TextPlace place) { onTray(place); });
}

void StatusNotifierItem::onTray(TextPlace place) {
  place_ = place;
  update();
  tray_->registerItem(kItemPath);
  runLoop_.runAfter(kAgain, again_.emplace().guard([this] { announceAgain(); }));
}

/// GNOME's AppIndicator extension may ask for the label of a new item before it has a place for it,
/// and Cinnamon may miss the change that brings the picture of its tray's only item. Both show it
/// once it changes again. A symbol by its name stays missed until it is another.
void StatusNotifierItem::announceAgain() {
  if (!face_.label.empty()) object_->announce({}, {"XAyatanaLabel"});
  if (place_ != TextPlace::wide || !face_.drawn) return;
  hiddenMark_ = !hiddenMark_;
  pixmaps_.reset();
  object_->announce({}, {"IconPixmap"});
  object_->emit("NewIcon");
}

void StatusNotifierItem::update() {
  const StatusItemFace before = std::exchange(face_, callbacks_.face(place_));
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
              // TRANSLATORS: What a screen reader says of the icon.
              {"IconAccessibleDesc", constant(text(translated("Battery")))},
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
    auto icons = face_.drawn ? callbacks_.draw(*face_.drawn) : std::vector<Icon>{};
    if (hiddenMark_) markUnseen(icons);
    pixmaps_ = iconPixmaps(icons);
  }
  return *pixmaps_;
}

}  // namespace lumora
