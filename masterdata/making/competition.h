// Makes competition files as the competition application does: all its tables and its stored query.
#pragma once

#include <QDate>
#include <QString>

#include "platform/schema/schema_text.h"

namespace qk {

/// The texts of data/schema that stand inside the program; Error 53 for an unknown name.
Schema embeddedSchema(const QString& name);

struct CompetitionTitle {
  QString name = "Neuer Wettkampf";
  QString place;
  QDate referenceDate = QDate(2026, 1, 1);
};

/// An empty competition: nothing but the one row of Wettkampf and of Klassenwechsel. No column
/// TeilerfaktorESA and no Haering table: QK-Intarso's own opening adds them. The path is a file to make (a
/// failure leaves none behind) or names an empty store on a server; 3204 when a competition is there.
void makeCompetition(const QString& path, const CompetitionTitle& title);

/// A competition filled with the rows of demoRows and the standard discipline keys with their teiler factors.
void makeDemoCompetition(const QString& path);

}  // namespace qk
