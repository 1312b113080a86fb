#include <corvalta/platform/qt/light_look.h>

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace corvalta::platform::qt {

void useLightLook(QApplication& app) {
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) {
    QApplication::setStyle(fusion);
  }
  QApplication::setPalette(QApplication::style()->standardPalette());
  app.setQuitOnLastWindowClosed(false);
}

}  // namespace corvalta::platform::qt
