// Saves a picture of an X window, or of a part of it, as PNG:
//   corvalta_grab_window <window id> <file.png> [<x> <y> <width> <height>]
// Window id 0 is the whole screen. Two pictures of the same pixels are the same bytes, so
// tests compare parts of a window with cmp.
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <cstdio>

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  if (argc != 3 && argc != 7) {
    std::fprintf(stderr, "usage: %s <window id> <file.png> [<x> <y> <width> <height>]\n", argv[0]);
    return 2;
  }
  const auto number = [argv](int index) { return QString::fromLocal8Bit(argv[index]).toInt(); };
  const auto window = static_cast<WId>(QString::fromLocal8Bit(argv[1]).toULongLong(nullptr, 0));
  const QPixmap picture = argc == 7 ? QGuiApplication::primaryScreen()->grabWindow(
                                          window, number(3), number(4), number(5), number(6))
                                    : QGuiApplication::primaryScreen()->grabWindow(window);
  return !picture.isNull() && picture.save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
}
