// The module that newLoadedTcpSocket loads: the one way in to QtTcpSocket and Qt Network.
#include <corvalta/platform/qt/qt_tcp_socket.h>

#include <QtGlobal>

extern "C" Q_DECL_EXPORT corvalta::platform::TCPSocket* corvalta_new_tcp_socket() {
  return new corvalta::platform::qt::QtTcpSocket;
}
