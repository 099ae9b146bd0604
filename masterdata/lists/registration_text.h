// A registration as one line of a cell: "Luftgewehr | 1.10 | Grünau I | SG Grünau | Luftgewehr", that is
// discipline, key, team, its club, its group. All but the discipline may be missing from the end.
#pragma once

#include "masterdata/lists/named_rows.h"

namespace qk::lists {

struct StoreState;
struct TableRows;

struct RegistrationText {
  qint64 discipline = 0;  ///< a row of MeldeDisziplin
  QString name, key;
  TeamWords team;   ///< no name: for no team
  QString trouble;  ///< a German sentence; empty when all is well
};

/// The discipline goes by its name or its key; of several with one name the key in the line tells. A line
/// without a key takes the discipline's.
RegistrationText readRegistration(const QString& line, const TableRows& disciplines);

QString registrationLine(const RegistrationText& registration);

}  // namespace qk::lists
