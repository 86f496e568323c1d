// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/TrayIcon.h"

#include "TrayIcon/Drawing.h"
#include "TrayIcon/Glyphs.h"
#include "TrayIcon/StateMark.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace lumora {
namespace {

constexpr std::array kSizes = {16, 22, 24, 32, 48, 64};
constexpr std::size_t kLongestText = 32;

// White stands out from each of them by more than 4.5 to 1, and each but the plate stands out from
// the plate by more than 3 to 1.
constexpr Color kPlate = {0.07, 0.075, 0.09};
constexpr Color kSteady = {0.43, 0.44, 0.46};
constexpr Color kGood = {0.10, 0.50, 0.25};
constexpr Color kWarning = {0.80, 0.16, 0.14};
constexpr Color kFigures = {1, 1, 1};
// Lighter than any panel that is dark, beside a plate darker than any that is light.
constexpr Color kWall = {0.88, 0.89, 0.91};

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

struct Box {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

int charge(const DrawnIcon& icon) { return std::clamp(icon.percent, 0, 100); }

/// As the ring of the popover has it where it is green or red; what is as usual is grey, as the
/// symbols beside it are.
Color color(BatteryPicture picture) {
  switch (picture) {
    case BatteryPicture::low:
      return kWarning;
    case BatteryPicture::charging:
    case BatteryPicture::full:
      return kGood;
    case BatteryPicture::noBattery:
    case BatteryPicture::onBattery:
    case BatteryPicture::pluggedIn:
      break;
  }
  return kSteady;
}

/// Nothing happens to it that would be worth a coloured plate.
bool isSteady(BatteryPicture picture) {
  return picture == BatteryPicture::noBattery || picture == BatteryPicture::onBattery ||
         picture == BatteryPicture::pluggedIn;
}

void drawMark(cairo_t* cairo, BatteryPicture picture, int x, int y, int height) {
  addMark(cairo, picture, x, y, height);
  setColor(cairo, kFigures);
  cairo_fill(cairo);
}

void fill(cairo_t* cairo, const Box& box, const Color& color) {
  setColor(cairo, color);
  cairo_rectangle(cairo, box.x, box.y, box.width, box.height);
  cairo_fill(cairo);
}

/// The wall of a battery, and within it the plate.
void drawBody(cairo_t* cairo, const Box& body, int wall, double radius) {
  setColor(cairo, kWall);
  addRoundedRectangle(cairo, body.x, body.y, body.width, body.height, radius);
  cairo_fill(cairo);
  setColor(cairo, kPlate);
  addRoundedRectangle(cairo, body.x + wall, body.y + wall, body.width - 2 * wall,
                      body.height - 2 * wall, std::max(0.0, radius - wall));
  cairo_fill(cairo);
}

/// The percent, as large as the box has room for.
void drawNumber(cairo_t* cairo, int percent, const Box& box, int side) {
  const std::string number = std::to_string(percent);
  GlyphSize size{.height = std::min(box.height, rounded(side * 0.5)),
                 .stroke = std::max(1, rounded(side * 0.09)),
                 .gap = std::max(1, rounded(side * 0.07))};
  size.width = rounded(size.height * 0.66);
  while (size.width > 2 && textWidth(number, size) > box.width) --size.width;
  // What a figure encloses is not narrower than its lines.
  while (size.stroke > 1 && (size.width < 3 * size.stroke || size.height < 5 * size.stroke)) {
    --size.stroke;
  }
  setColor(cairo, kFigures);
  drawText(cairo, number, box.x + (box.width - textWidth(number, size) + 1) / 2,
           box.y + (box.height - size.height + 1) / 2, size);
}

/// Where the battery stands: panels' own symbols leave a margin, too.
Box standing(int side) {
  const int beside = rounded(side / 12.0);
  const int above = side / 20;
  return {beside, above, side - 2 * beside, side - 2 * above};
}

/// What a wall encloses, apart from which it keeps.
Box within(const Box& body, int wall) {
  return {body.x + 2 * wall, body.y + 2 * wall, body.width - 4 * wall, body.height - 4 * wall};
}

/// A battery with a pole. Returns the room for its charge.
Box drawBattery(cairo_t* cairo, const Box& box, int side, int wall) {
  const int pole = 2 * wall;
  const int width = rounded(box.width * 3 / 16.0) * 2;
  const int x = box.x + (box.width - width) / 2;
  const Box body = {box.x, box.y + pole, box.width, box.height - pole};
  drawBody(cairo, {x, box.y, width, box.height / 2}, wall, wall);
  drawBody(cairo, body, wall, side * 0.14);
  fill(cairo, {x + wall, box.y + wall, width - 2 * wall, pole + wall}, kPlate);
  return within(body, wall);
}

/// One without a pole, whose wall is open above for a sign that is so wide.
Box drawOpenBattery(cairo_t* cairo, const Box& box, int side, int wall, int sign) {
  drawBody(cairo, box, wall, side * 0.14);
  fill(cairo, {(side - sign) / 2 - wall, box.y, sign + 2 * wall, 2 * wall}, kPlate);
  return within(box, wall);
}

void drawSquare(cairo_t* cairo, const DrawnIcon& icon, int side) {
  const int wall = std::max(1, side / 16);
  const int sign = rounded(side * 5 / 16.0);
  const int signWidth = markWidth(icon.picture, sign);
  const Box box = standing(side);
  Box room = signWidth == 0 ? drawBattery(cairo, box, side, wall)
                            : drawOpenBattery(cairo, box, side, wall, signWidth);
  if (icon.picture == BatteryPicture::noBattery) return;

  // The last of the charge would hardly be seen: all of it warns.
  const int filled = icon.picture == BatteryPicture::low ? 100 : charge(icon);
  const int height = rounded(room.height * filled / 100.0);
  fill(cairo, {room.x, room.y + room.height - height, room.width, height}, color(icon.picture));

  if (signWidth > 0) {
    drawMark(cairo, icon.picture, (side - signWidth) / 2, box.y + wall, sign);
    room.y += sign;
    room.height -= sign;
  }
  drawNumber(cairo, charge(icon), room, side);
}

GlyphSize textBeside(int height) {
  const int digits = rounded(height * 0.46);
  return {.width = rounded(digits * 0.64),
          .height = digits,
          .stroke = std::max(1, rounded(height * 0.08)),
          .gap = std::max(1, rounded(height * 0.08))};
}

struct Layout {
  int margin;
  int battery;
  int mark;  ///< With the margin after it.
  int text;
  int width;
};

int markHeight(int height) { return rounded(height * 0.625); }

Layout layOut(const DrawnIcon& icon, int height) {
  const int margin = rounded(height * 0.25);
  const int battery = rounded(height * 0.95);
  const int sign = markWidth(icon.picture, markHeight(height));
  const int mark = sign == 0 ? 0 : sign + margin;
  const int text = textWidth(icon.text, textBeside(height));
  return {margin, battery, mark, text, margin + battery + margin + mark + text + margin};
}

/// A battery that lies, with its charge.
void drawLyingBattery(cairo_t* cairo, const DrawnIcon& icon, int x, int height, int width) {
  const int wall = std::max(1, rounded(height / 16.0));
  const int tall = rounded(height * 0.56);
  const int top = (height - tall + 1) / 2;
  const int pole = 2 * wall;
  const int body = width - pole;
  setColor(cairo, kFigures);
  cairo_set_line_width(cairo, wall);
  addRoundedRectangle(cairo, x + wall / 2.0, top + wall / 2.0, body - wall, tall - wall,
                      tall * 0.2);
  cairo_stroke(cairo);
  cairo_rectangle(cairo, x + body + wall / 2.0, top + tall / 3.0, 1.5 * wall, tall / 3.0);
  cairo_fill(cairo);
  if (icon.picture == BatteryPicture::noBattery) return;
  const int room = body - 4 * wall;
  const int filled = std::max(1, rounded(room * charge(icon) / 100.0));
  fill(cairo, {x + 2 * wall, top + 2 * wall, filled, tall - 4 * wall}, kFigures);
}

/// A battery that lies, the sign of its state and the text, on a plate.
void drawWide(cairo_t* cairo, const DrawnIcon& icon, int height) {
  const Layout layout = layOut(icon, height);
  const GlyphSize size = textBeside(height);
  // Some panels leave none above an item, and none below.
  const int above = rounded(height / 12.0);
  setColor(cairo, isSteady(icon.picture) ? kPlate : color(icon.picture));
  addRoundedRectangle(cairo, 0, above, layout.width, height - 2 * above, height * 0.25);
  cairo_fill(cairo);
  int x = layout.margin;
  drawLyingBattery(cairo, icon, x, height, layout.battery);
  x += layout.battery + layout.margin;
  const int mark = markHeight(height);
  drawMark(cairo, icon.picture, x, (height - mark + 1) / 2, mark);
  setColor(cairo, kFigures);
  drawText(cairo, icon.text, x + layout.mark, (height - size.height + 1) / 2, size);
}

/// From premultiplied pixels in the machine's byte order.
std::vector<std::uint8_t> networkOrder(cairo_surface_t* surface, int width, int height) {
  cairo_surface_flush(surface);
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
  const unsigned char* row = cairo_image_surface_get_data(surface);
  std::vector<std::uint8_t> argb;
  argb.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  for (int y = 0; y < height; ++y, row += stride) {
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row + 4 * static_cast<std::size_t>(x), sizeof pixel);
      const std::uint32_t alpha = pixel >> 24U;
      argb.push_back(static_cast<std::uint8_t>(alpha));
      for (const unsigned shift : {16U, 8U, 0U}) {
        const std::uint32_t part = (pixel >> shift) & 0xFFU;
        argb.push_back(
            static_cast<std::uint8_t>(alpha == 0 ? 0 : (part * 255 + alpha / 2) / alpha));
      }
    }
  }
  return argb;
}

}  // namespace

std::vector<Icon> drawTrayIcon(const DrawnIcon& whole) {
  DrawnIcon icon = whole;
  icon.text.resize(std::min(icon.text.size(), kLongestText));
  const bool wide = !icon.text.empty();
  std::vector<Icon> icons;
  icons.reserve(kSizes.size());
  for (const int size : kSizes) {
    const int width = wide ? layOut(icon, size).width : size;
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, size),
                          cairo_surface_destroy);
    const Context context(cairo_create(surface.get()), cairo_destroy);
    if (wide) {
      drawWide(context.get(), icon, size);
    } else {
      drawSquare(context.get(), icon, size);
    }
    icons.push_back({width, size, networkOrder(surface.get(), width, size)});
  }
  return icons;
}

}  // namespace lumora
