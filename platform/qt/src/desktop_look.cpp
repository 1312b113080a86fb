#include <corvalta/platform/qt/desktop_look.h>

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace corvalta::platform::qt {

void useDesktopLook() {
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) {
    QApplication::setStyle(fusion);
  }
}

}  // namespace corvalta::platform::qt
