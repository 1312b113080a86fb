#include "record_colors.h"

#include <corvalta/platform/record_names.h>

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace corvalta::platform::qt {
namespace {

// What normal-size text needs to be read with ease.
constexpr double readableContrast = 4.5;

double luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

QColor toQColor(const Color& color) { return {color.red, color.green, color.blue}; }

QColor withLightness(const QColor& color, float lightness) {
  const QColor hsl = color.toHsl();
  return QColor::fromHslF(hsl.hslHueF(), hsl.hslSaturationF(), std::clamp(lightness, 0.0F, 1.0F)).toRgb();
}

QColor turnedOver(const Color& recorded) {
  const QColor color = toQColor(recorded);
  return withLightness(color, 1.0F - color.lightnessF());
}

const Color* colorNamed(const PropertyList& properties, std::string_view name) {
  const auto* value = findProperty(properties, name);
  return value != nullptr ? std::get_if<Color>(value) : nullptr;
}

}  // namespace

double contrastRatio(const QColor& a, const QColor& b) {
  const double first = luminance(a);
  const double second = luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

bool isDark(const QPalette& palette) {
  return luminance(palette.color(QPalette::Window)) < luminance(palette.color(QPalette::WindowText));
}

QColor shownGround(const Color& recorded, const QPalette& palette) {
  return isDark(palette) ? turnedOver(recorded) : toQColor(recorded);
}

QColor shownText(const Color& recorded, const QPalette& palette, const QColor& ground) {
  if (!isDark(palette)) {
    return toQColor(recorded);
  }
  QColor text = turnedOver(recorded);
  // Away from the ground, toward whichever end of the scale stands out from it more.
  const float end = contrastRatio(Qt::white, ground) > contrastRatio(Qt::black, ground) ? 1.0F : 0.0F;
  for (float lightness = text.lightnessF();
       contrastRatio(text, ground) < readableContrast && lightness != end;) {
    lightness = end > lightness ? std::min(lightness + 0.05F, end) : std::max(lightness - 0.05F, end);
    text = withLightness(text, lightness);
  }
  return text;
}

void showColors(QWidget* widget, std::string_view className, const PropertyList& properties) {
  const auto* text = colorNamed(properties, property::TextColor);
  const auto* ground = colorNamed(properties, property::BackColor);
  const QPalette& desktop = widget->window()->palette();
  QPalette palette = widget->palette();
  if (className == record_class::StaticText && text != nullptr) {
    palette.setColor(QPalette::WindowText,
                     shownText(*text, desktop, palette.color(QPalette::Window)));
  } else if (className == record_class::EditField) {
    if (ground != nullptr) {
      palette.setColor(QPalette::Base, shownGround(*ground, desktop));
    }
    if (text != nullptr) {
      palette.setColor(QPalette::Text,
                       shownText(*text, desktop, palette.color(QPalette::Base)));
    }
  } else {
    return;
  }
  widget->setPalette(palette);
}

}  // namespace corvalta::platform::qt
