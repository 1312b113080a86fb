#include "contrast_style.h"

#include "record_colors.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace corvalta::platform::qt {
namespace {

// What marks a control's state or edge needs against its ground.
constexpr double markContrast = 3.0;

// `color` made lighter, its hue kept, until it stands out from `ground` by `contrast`.
QColor lightenedAgainst(QColor color, const QColor& ground, double contrast) {
  while (contrastRatio(color, ground) < contrast && color.lightnessF() < 1.0F) {
    const QColor hsl = color.toHsl();
    color = QColor::fromHslF(hsl.hslHueF(), hsl.hslSaturationF(), std::min(hsl.lightnessF() + 0.02F, 1.0F)).toRgb();
  }
  return color;
}

QColor strongerOf(const QColor& first, const QColor& second, const QColor& ground) {
  return contrastRatio(first, ground) >= contrastRatio(second, ground) ? first : second;
}

// The ring of a radio button in the words' colour and, when it is chosen, a dot as large as
// Fusion's but in the same colour, on the field colour.
void drawRadioButton(const QStyleOption& option, QPainter& painter) {
  const QPalette& palette = option.palette;
  const QColor mark = palette.color(QPalette::WindowText);
  const QRectF ring = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(mark, 1.2));
  painter.setBrush(palette.color(QPalette::Base));
  painter.drawEllipse(ring);
  if ((option.state & QStyle::State_On) != 0) {
    const double inset = ring.width() * 0.27;
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark);
    painter.drawEllipse(ring.adjusted(inset, inset, -inset, -inset));
  }
  if ((option.state & QStyle::State_HasFocus) != 0) {
    painter.setPen(QPen(palette.color(QPalette::Highlight), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(ring.adjusted(-1, -1, 1, 1));
  }
  painter.restore();
}

}  // namespace

ContrastStyle::ContrastStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ContrastStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  if (!isDark(palette)) {
    return;
  }
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    const QColor window = palette.color(group, QPalette::Window);
    const QColor highlight = lightenedAgainst(palette.color(group, QPalette::Highlight), window, markContrast);
    palette.setColor(group, QPalette::Highlight, highlight);
    palette.setColor(group, QPalette::HighlightedText, strongerOf(Qt::white, Qt::black, highlight));
  }
}

int ContrastStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_FocusFrameHMargin && qobject_cast<const QAbstractItemView*>(widget) != nullptr) {
    return 0;
  }
  return QProxyStyle::pixelMetric(metric, option, widget);
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
  if (option == nullptr || !isDark(option->palette)) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  if (element == PE_IndicatorRadioButton) {
    drawRadioButton(*option, *painter);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (element == PE_FrameLineEdit && (option->state & State_HasFocus) == 0) {
    // Fusion's edge is a shade of the window's colour; this one reads as the field's border.
    const QColor window = option->palette.color(QPalette::Window);
    painter->save();
    painter->setPen(lightenedAgainst(window, window, markContrast));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
    painter->restore();
  }
}

}  // namespace corvalta::platform::qt
