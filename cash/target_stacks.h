// The stacks of numbered paper targets as they are stored: reading, editing, ordering, deleting. Needs no
// window. Errors of the store pass everywhere.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "platform/dao/database.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

/// Each stack with the name of the discipline or combination that it is bound to, as `Vorgabe`.
extern const QString kStapelMitVorgabe;
/// The stacks that this workstation offers, in the order of its desk.
QString angeboteneStapel(const Settings& settings);

struct TargetStack {
  qint32 id = 0;  ///< 0 is a new one
  QString Bezeichnung, Scheibentyp;
  qint32 Startnummer = 0, Endnummer = 0;
  qint32 AktuelleNummer = 0;  ///< the next one to hand out
  qint32 VorgabeID = 0;       ///< 0: no discipline or combination
  int DisziKombi = 0;         ///< 1: `VorgabeID` is a combination
  bool Anzeigen = true;
  /// Marks of the workstations that see it; empty means all. Nothing is Null, which hides it from all.
  std::optional<QString> PCAnzeige = QString();
  qint32 Sortierung = 0;
};

/// The stack, or a new one behind all others for the id 0; nothing when it is gone.
std::optional<TargetStack> ladeStapel(dao::Database& database, qint32 id);
std::vector<TargetStack> ladeAlleStapel(dao::Database& database);

/// What the editor's controls hold.
struct StackInput {
  QString Bezeichnung, Scheibentyp, Startnummer, Endnummer, AktuelleNummer, PCAnzeige, Sortierung;
  qint32 VorgabeID = 0;
  int DisziKombi = 0;
  bool Anzeigen = true;

  bool operator==(const StackInput&) const = default;
};
StackInput eingabeAus(const TargetStack& stack);
/// Error 13 with a text for the operator where something can't be taken. Without a next number the stack
/// begins with its first one.
TargetStack stapelAus(const StackInput& input, const TargetStack& before);
/// What is possible but hardly meant: numbers past the end, numbers of another stack.
QStringList bedenken(const TargetStack& stack, const std::vector<TargetStack>& all);

/// Writes what was changed, and an empty `PCAnzeige` for Null; a next number that another desk moves on
/// meanwhile stays his unless it was changed here. Gives the id. Error 3167 for a stack that is gone.
qint32 speichereStapel(dao::Database& database, const TargetStack& stack, const TargetStack& before);

struct StackListColumn {
  enum : int {
    Bezeichnung = 0,
    Typ = 1,
    Von = 2,
    Bis = 3,
    AktNr = 4,
    Zuordnung = 5,
    Kasse = 6,
    Arbeitsplaetze = 7,
    Ausgegeben = 8,
    Anzahl = 9
  };
};

/// All stacks, those that no desk shows too.
class StackList {
 public:
  /// Both outlive the list.
  StackList(const Workplace& workplace, dao::Database& database);

  TextTable& table() { return table_; }
  void lade();
  qint32 idOf(int row) const;  ///< 0 for the header or outside
  int rowOf(qint32 id) const { return table_.findRow(QString::number(id)); }
  /// Asks; issued targets stay. True when it is gone.
  bool loesche(int row);
  /// Moves a stack up (-1) or down (1) in the order of the desk; false at the edge.
  bool verschiebe(int row, int schritt);

 private:
  Workplace workplace_;
  dao::Database& database_;
  TextTable table_;
};

}  // namespace qk
