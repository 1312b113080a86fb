#include <corvalta/platform/qt/light_look.h>

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace corvalta::platform::qt {

void useLightLook() {
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) {
    QApplication::setStyle(fusion);
  }
  QApplication::setPalette(QApplication::style()->standardPalette());
}

}  // namespace corvalta::platform::qt
