// A shot entered by hand: when the target system fails, or a paper target is scored by eye. What the window
// of the entry computes, without the window. The shot then goes the way of any received one.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

#include "link/haeringschuss.h"
#include "platform/grid/text_table.h"
#include "platform/runtime/retry.h"

namespace qk {

/// What a line contributes to its first shot by hand.
struct ManualShotLine {
  qint16 nLinie = 0;
  QString sStartnummer;
  QString SchuetzenName;
  QString KlassenName;
};

/// The shot that the entry begins with: the next one after `last`, or the line's first (`last` nullptr).
/// Error 6 when there is no next hit number.
HaeringSchuss manualShot(const HaeringSchuss* last, const ManualShotLine& line, const QDateTime& now);

/// The names of the station's disciplines (column 1 of the data rows), each closed by "|", and back.
QString wettbewerbeText(const TextTable& flexHaeringDiszi);
QStringList wettbewerbeListe(const QString& sWettbewerbe);

/// How a shot counts: the tens digit stands for tenths, the units digit for a teiler.
struct Wertungsart {
  const char* name;
  qint16 value;
};
inline constexpr std::array<Wertungsart, 4> kWertungen{
    {{"Ring", 0}, {"Zehntelringe", 10}, {"Ring + Teiler", 1}, {"Zehntel + Teiler", 11}}};

/// What stands in the fields of the window.
struct SchussFormular {
  QString standort, linie, schuetze, startnummer, klassebezeichnung, datum, zeit;
  QString wettbewerb, klasse, wettbewerbbezeichnung, waffe, trefferNummer;
  int wertung = -1;  ///< place in kWertungen; -1 for a value that isn't there
  QString ringwert, radius, teilerfaktor, teiler;
};

/// A 0 in ring value, radius or teiler is shown as an empty field: none of them may stay 0.
SchussFormular formOf(const HaeringSchuss& schuss);

/// Writes all fields into the shot, works out the whole ring, the tenth digits and the key. Fields that the
/// form lacks (X, Y, …) stay. Statements run one by one; a number that can't be read is Error 13.
void fillShot(HaeringSchuss& schuss, const SchussFormular& form, Steps& step);

/// The teiler for a radius, both as typed, rounded to one decimal; nothing for a factor of 0.
std::optional<QString> teilerText(const QString& radius, const QString& teilerfaktor);

/// The faults of the form, each closed by a line break; empty when there is none.
QString formFaults(const SchussFormular& form);

}  // namespace qk
