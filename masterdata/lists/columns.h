// What a list of shooters, clubs or teams can carry: its columns by their German headings, the words by which
// other programs call them, and where they stand in a competition.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qk::lists {

enum class ListKind { Shooters, Clubs, Teams };

/// "Schützen", "Vereine", "Mannschaften".
QString kindName(ListKind kind);

struct ListColumn {
  QString heading;       ///< what an export writes, and the column's name everywhere
  QString column;        ///< of the kind's table; empty where other tables or several columns hold it
  QStringList synonyms;  ///< folded as headingKey() does
};

/// In the order of an export.
const std::vector<ListColumn>& columnsOf(ListKind kind);

// Headings that code asks for by name.
namespace heading {
inline const QString StartNumber = QStringLiteral("Startnummer");
inline const QString Surname = QStringLiteral("Nachname");
inline const QString FirstName = QStringLiteral("Vorname");
inline const QString Name = QStringLiteral("Name");
inline const QString BirthDate = QStringLiteral("Geburtsdatum");
inline const QString Sex = QStringLiteral("Geschlecht");
inline const QString Club = QStringLiteral("Verein");
inline const QString ClubShort = QStringLiteral("Verein kurz");
inline const QString Team = QStringLiteral("Mannschaft");
inline const QString TeamClub = QStringLiteral("Verein der Mannschaft");
inline const QString TeamGroup = QStringLiteral("Mannschaftsgruppe");
inline const QString Class = QStringLiteral("Klasse");
inline const QString ClassByHand = QStringLiteral("Klasse von Hand");
inline const QString Licence = QStringLiteral("Ausweisnummer");
inline const QString Groups = QStringLiteral("Schützengruppen");
inline const QString Registrations = QStringLiteral("Anmeldungen");
}  // namespace heading

/// The heading under which an export gives a stored text as it stands, where reading the column itself would
/// make another one of it (a birth date such as 31.02.1980 that came in some other way).
QString asStored(const QString& heading);

/// A heading without case, umlauts, blanks and marks, so that "Start-Nr." and "STARTNR" are one.
QString headingKey(const QString& heading);

}  // namespace qk::lists
