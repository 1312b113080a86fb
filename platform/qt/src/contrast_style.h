#pragma once

#include <QProxyStyle>

namespace corvalta::platform::qt {

// Fusion, with what shows a control's state kept apart from its ground under a dark palette,
// where Fusion's own shades fade into dark grey: the focus and selection colour, the chosen
// radio button's dot and ring, and the edge of a field, enabled or not, each reach a contrast
// of 3:1 against what lies behind them. Its lists' cells also keep narrower margins, so that
// " Very Hard" fits the score list's third of a column.
class ContrastStyle final : public QProxyStyle {
 public:
  ContrastStyle();

  void polish(QPalette& palette) override;
  using QProxyStyle::polish;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace corvalta::platform::qt
