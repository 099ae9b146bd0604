// The program-wide values. One struct, owned by the start of the program (or a test) and handed around by
// reference; folders end in a separator.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <memory>

#include "platform/dao/database.h"

namespace qk {

struct GlobalVariablen {
  QString Basisverzeichnis;                  ///< common documents folder + "Tarvex"
  QString Verzeichnis;                       ///< data folder: protocols and test files
  QString SystemVerzeichnis;                 ///< the program's templates and side databases
  QString SystemVerzeichnisUser;             ///< the user's copies of side databases
  QString SicherungsVerzeichnis;             ///< backups
  QString Exportpfad;                        ///< exports
  bool bErgebnisseAendern = false;           ///< the right to edit stored results
  std::unique_ptr<dao::Database> Datenbank;  ///< main connection to the competition; empty before the opening
  QString sWettkampf;                        ///< path of the open competition
  QDate RefDatum;                            ///< ages are reckoned against it
  bool bLeertAustauschordner = false;        ///< a station's flag may stand there without its data
  QDateTime naechsterVersuch;                ///< no line tries unasked to open the competition before it
};

}  // namespace qk
