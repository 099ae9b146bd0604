// What proves a copy of a competition: a text beside it that tells of when and of what it is, and by which
// anybody can see later whether it is still what it was then.
//
//   QK-Beleg 1
//   Quelle: /home/buero/pokal2026.qkk auf BUERO1
//   Stand: 2026-11-22T15:10:00+01:00
//   Folge: 17
//   Datei: pokal2026 2026-11-22 15-10-00.qkk
//   Groesse: 1597440
//   SHA-256: 9f86d0818…
//   Aufbau: 60303ae22b998861
//   Tabelle: 1204 7c211433f0207159 Haering_Daten
//   …
//   Beleg: 3fdba35f04dc8c46…
//
// UTF-8. The last line is the SHA-256 of all before it.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

namespace qk::dao {
class Catalogue;
}

namespace qk {

struct TableEvidence {
  QString table;
  qint64 rows = 0;
  quint64 digest = 0;  ///< TableFigures::digest
  bool operator==(const TableEvidence&) const = default;
};

struct Evidence {
  QString source;       ///< sourceOf(); that of a file had no machine once, and is nobody's then
  QDateTime moment;     ///< to the second
  qint64 sequence = 0;  ///< counts the copies of the source; a clock may be set back. 0 in old evidence
  QString file;         ///< name of the copy when it was made
  qint64 size = 0;      ///< bytes
  QByteArray sha256;
  quint64 structure = 0;  ///< structureOf()
  std::vector<TableEvidence> tables;

  /// Whether both are of the same contents.
  bool isOfSameContents(const Evidence& other) const;
  qint64 rows() const;
};

QByteArray evidenceText(const Evidence& evidence);
/// Nothing for a text that is no evidence, was torn or has been changed.
std::optional<Evidence> evidenceIn(const QByteArray& text);

/// A digest of the definitions of all tables and the texts of all stored queries.
quint64 structureOf(const dao::Catalogue& catalogue);

/// Where the evidence of a copy lies: beside it.
QString evidencePathOf(const QString& copy);

}  // namespace qk
