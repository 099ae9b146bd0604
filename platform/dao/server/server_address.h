// Where a database on a server is found: a short text file that stands in for the database file.
//
//   # der Rechner im Nebenraum
//   host=schiessstand-server
//   port=5432
//   datenbank=meisterschaft2026
//   benutzer=schiessbuero
//
// UTF-8, one `key=value` a line, blanks around both ignored, empty lines and lines beginning with "#"
// skipped, keys whatever their case. host (a name, an address, or the folder of a local socket), datenbank
// and benutzer are needed, port is 5432 without one. Where the server has a standby, host names both or all
// of them, "host=erster, zweiter:5433", the one preferred first; each may carry a port of its own, and what
// holds a ":" itself stands in brackets then ("[fe80::1]:5433"). wartezeit is how many seconds the server may
// say nothing (15 without one) before it counts as lost. There is no password in the file: it comes from the
// environment (PGPASSWORD), from ~/.pgpass, from a service file, or from whoever opens the database
// (OpenOptions).
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace qk::dao {

inline constexpr int kUsualPort = 5432;

struct ServerEndpoint {
  QString host;
  int port = kUsualPort;

  friend bool operator==(const ServerEndpoint&, const ServerEndpoint&) = default;
};

struct ServerAddress {
  QList<ServerEndpoint> endpoints;  ///< of the server and its standbys; never empty
  QString database;
  QString user;
  int patience = 15;  ///< seconds

  friend bool operator==(const ServerAddress&, const ServerAddress&) = default;
};

/// A file of this size or more is none of these texts.
inline constexpr qint64 kLargestAddressFile = 4096;

/// Whether a file's content is meant as an address, be it right or not: short UTF-8 text without control
/// characters whose first line that says something has a "=" in it.
bool isServerAddress(const QByteArray& content);
/// Error 3343 that tells the line or the entry where the text is no usable address.
ServerAddress parseServerAddress(const QByteArray& content);
/// Whether the file at the path is one of these, be it right or not.
bool isServerFile(const QString& path);
/// The server that the file names; nothing where it is no such file.
std::optional<ServerAddress> serverAddressIn(const QString& path);
/// A text that parseServerAddress() reads as this address.
QByteArray serverAddressText(const ServerAddress& address);

struct EndpointList {
  QList<ServerEndpoint> endpoints;
  QString trouble;  ///< a German sentence; empty when all is well
};
/// The hosts of a text, "erster, zweiter:5433"; `port` for those that carry none.
EndpointList endpointsIn(const QString& text, int port);

/// For messages: the host, with its port where another one has the same host.
QString nameOf(const ServerAddress& address, qsizetype endpoint);
/// For messages: "meisterschaft2026 auf erster oder zweiter".
QString placeOf(const ServerAddress& address);

}  // namespace qk::dao
