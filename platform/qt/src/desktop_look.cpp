#include <corvalta/platform/qt/desktop_look.h>

#include "contrast_style.h"

#include <QApplication>
#include <QDir>
#include <QIcon>

namespace corvalta::platform::qt {

void useDesktopLook() { QApplication::setStyle(new ContrastStyle); }

void useApplicationIcon(const QString& name) {
  QIcon builtIn;
  const QDir pictures(QStringLiteral(":/icons"));
  for (const QString& file : pictures.entryList(QDir::Files)) {
    builtIn.addFile(pictures.filePath(file));
  }
  QApplication::setWindowIcon(QIcon::fromTheme(name, builtIn));
}

}  // namespace corvalta::platform::qt
