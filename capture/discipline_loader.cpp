#include "capture/discipline_loader.h"

#include <algorithm>
#include <optional>

#include "capture/row_values.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

void readDiscipline(const dao::Recordset& rs, Disziplin& d) {
  d.Name = textIn(rs, "name");
  d.ID = longIn(rs, "ID");
  d.Ringe = integerIn(rs, "Ringe");
  d.Teiler = integerIn(rs, "Teiler");
  d.Einzel = integerIn(rs, "Einzel");
  d.bVerein = integerIn(rs, "bVerein");
  d.bMaxVerein = integerIn(rs, "bMaxVerein");
  d.bGewVerein = integerIn(rs, "bGewVerein");
  d.LMaxVerein = longIn(rs, "LMaxVerein");
  d.LGewVerein = integerIn(rs, "LGewVerein");
  d.RingZentel = integerIn(rs, "RingZentel");
  d.RingSerie = integerIn(rs, "RingSerie");
  d.bLGewTeiler = integerIn(rs, "bLGewTeiler");
  d.LGewTeiler = longIn(rs, "LGewTeiler");
  d.CmdIndex = longIn(rs, "CmdIndex");
  d.bVMannschaft = integerIn(rs, "bVMannschaft");
  d.bEMannschaft = integerIn(rs, "bEMannschaft");
  d.nEMannschaft = integerIn(rs, "nEMannschaft");
  d.bOhneKlassen = integerIn(rs, "bOhneKlassen");
  d.bMaxWert = integerIn(rs, "bMaxWert");
  d.dblMaxWert = doubleIn(rs, "dblMaxWert");
  d.bVollMannschaft = integerIn(rs, "bVollMannschaft");
  d.bGewErg = integerIn(rs, "bGewErg");
  d.nGewErg = integerIn(rs, "nGewErg");
  d.dblMaxSerieDSB = doubleIn(rs, "dblMaxSerieDSB");
  d.Ring05Zehntel = integerIn(rs, "Ring05Zehntel");
  d.bGewVorBel = integerIn(rs, "bGewVorBel");
  d.nGewVorBel = integerIn(rs, "nGewVorBel");
  d.DisziSPO_ID = longIn(rs, "DisziSPO_ID");
  d.Ring0XZehntel = integerIn(rs, "Ring0XZehntel");
  d.RingXXZehntel = integerIn(rs, "RingXXZehntel");
  d.DSBTeilerGrenze = integerIn(rs, "DSBTeilerGrenze");
  d.DSBTeilerGrenzWert = integerIn(rs, "DSBTeilerGrenzWert");
  d.AwSetupID = longIn(rs, "AwSetupID");
  d.bAktiveSchuetzen = integerIn(rs, "bAktiveSchuetzen");
  d.nAktiveSchuetzenAnzahl = integerIn(rs, "nAktiveSchuetzenAnzahl");
  d.ZusatzTeiler = integerIn(rs, "ZusatzTeiler");
  d.bSPOMannschaft = integerIn(rs, "bSPOMannschaft");
  d.VortelAnzeige = integerIn(rs, "VortelAnzeige");
}

void readClasses(dao::Database& db, Disziplin& d) {
  const auto rs = db.openRecordset(
      " SELECT Schützenklassen.*"
      " FROM DisziplinKlasse INNER JOIN Schützenklassen ON DisziplinKlasse.KlasseID = Schützenklassen.id"
      " WHERE (DisziplinKlasse.DisziID= " +
      QString::number(d.ID) + ");");
  for (; !rs->eof(); rs->moveNext()) {
    auto klasse = std::make_shared<Schuetzenklasse>();
    klasse->Name = textIn(*rs, "Klasse");
    klasse->ID = longIn(*rs, "ID");
    d.Klassen.add(klasse, "-" + QString::number(klasse->ID));
  }
}

void readWeapons(dao::Database& db, Disziplin& d) {
  const auto rs = db.openRecordset("Select * from DisziplinWaffen where DisziID = " + QString::number(d.ID));
  for (; !rs->eof(); rs->moveNext()) {
    auto waffe = std::make_shared<Waffenklasse>();
    waffe->ID = longIn(*rs, "WaffenID");
    waffe->Kurzbezeichnung = textIn(*rs, "KZ");
    d.Waffen.add(waffe, "-" + QString::number(waffe->ID));
  }
}

/// One column of the row that a query finds, or the empty text.
QString lookUp(dao::Database& db, const QString& query, std::int32_t id, const QString& column) {
  const auto rs = db.openRecordset(query + QString::number(id));
  return rs->eof() ? QString() : textIn(*rs, column);
}

void fillList(dao::Database& db, const QString& query, const QString& column, CheckList& list) {
  list.clear();
  const auto rs = db.openRecordset(query);
  for (; !rs->eof(); rs->moveNext()) list.add(textIn(*rs, column), longIn(*rs, "ID"));
}

/// The station's name of a competition as the lists would have it.
QString listName(const QString& sWettbewerb) {
  return sWettbewerb.startsWith("20") ? sWettbewerb.mid(2).trimmed() : sWettbewerb;
}

std::optional<int> firstMatch(const QString& name, const CheckList& list) {
  for (int i = 0; i < list.count(); ++i)
    if (list.text(i).endsWith(name, Qt::CaseInsensitive)) return i;
  return std::nullopt;
}

}  // namespace

std::shared_ptr<Disziplin> LadeDisziplin(dao::Database& db, std::int32_t nID) {
  const auto rs = db.openRecordset("Select * from Disziplin where ID = " + QString::number(nID));
  if (rs->eof()) return nullptr;
  auto discipline = std::make_shared<Disziplin>();
  readDiscipline(*rs, *discipline);
  readClasses(db, *discipline);
  readWeapons(db, *discipline);
  return discipline;
}

std::shared_ptr<Schuetze> LadeSchuetze(dao::Database& db, const QString& sStartnummer, KlassenNameForm form) {
  const auto rs =
      db.openRecordset("Select * from Schützen where Startnummer = " + dao::sql::quoted(sStartnummer));
  if (rs->eof()) return nullptr;
  auto shooter = std::make_shared<Schuetze>();
  shooter->Startnummer = textIn(*rs, "Startnummer");
  shooter->VereinsID = longIn(*rs, "VereinsID");
  shooter->Name = textIn(*rs, "Name");
  shooter->ID = longIn(*rs, "ID");
  shooter->KlassenID = longIn(*rs, "KlassenID");
  shooter->lMannID = longIn(*rs, "lMannID");
  shooter->VereinsName = lookUp(db, "Select * from Verein where ID = ", shooter->VereinsID, "Name");
  shooter->Mannschaftsname =
      lookUp(db, "Select * from Mannschaften where ID = ", shooter->lMannID, "MannName");
  shooter->KlassenName = lookUp(db, "Select * from SchützenKlassen where ID = ", shooter->KlassenID,
                                form == KlassenNameForm::Klasse ? "Klasse" : "KZ");
  return shooter;
}

void FuelleDisziplinListe(dao::Database& db, CheckList& list, ListOrder order) {
  fillList(db, disciplinesQuery(order), "Name", list);
}

void FuelleKombinationsListe(dao::Database& db, CheckList& list, ListOrder order) {
  fillList(db, combinationsQuery(order), "Kombinationsname", list);
}

std::shared_ptr<const CompetitionLists> LadeListen(dao::Database& db, const ListOrders& orders) {
  auto lists = std::make_shared<CompetitionLists>();
  FuelleDisziplinListe(db, lists->disciplines, orders.disciplines);
  FuelleKombinationsListe(db, lists->combinations, orders.combinations);
  return lists;
}

void WendeKombinationenAn(dao::Database& db, const CheckList& lstKombi, CheckList& lstDiszi) {
  lstDiszi.untickAll();
  for (int kombi = 0; kombi < lstKombi.count(); ++kombi) {
    if (!lstKombi.isTicked(kombi)) continue;
    const auto rs = db.openRecordset("Select * from Kombination_Diszi where KombiID = " +
                                     QString::number(lstKombi.number(kombi)));
    for (; !rs->eof(); rs->moveNext()) {
      const std::int32_t member = longIn(*rs, "disziID");
      for (int diszi = 0; diszi < lstDiszi.count(); ++diszi)
        if (lstDiszi.number(diszi) == member) lstDiszi.setTicked(diszi, true);
    }
  }
}

bool WettbewerbInListen(const QString& sWettbewerb, const CheckList& lstDiszi, const CheckList& lstKombi) {
  const QString name = listName(sWettbewerb);
  return firstMatch(name, lstDiszi) || firstMatch(name, lstKombi);
}

void WaehleWettbewerb(dao::Database& db, const QString& sWettbewerb, CheckList& lstDiszi,
                      CheckList& lstKombi) {
  lstDiszi.untickAll();
  lstKombi.untickAll();
  const QString name = listName(sWettbewerb);
  if (const auto diszi = firstMatch(name, lstDiszi)) {
    lstDiszi.setTicked(*diszi, true);
    lstDiszi.setCurrent(*diszi);
  } else if (const auto kombi = firstMatch(name, lstKombi)) {
    lstKombi.setTicked(*kombi, true);
    WendeKombinationenAn(db, lstKombi, lstDiszi);
  }
}

QString layoutCode(const KeyedCollection<Disziplin>& disciplines) {
  bool whole = false, tenths = false, ringTeiler = false, halfTenths = false;
  for (const auto& d : disciplines.objects()) {
    if (!d->Ringe) continue;
    if (d->Teiler)
      ringTeiler = true;
    else
      (d->RingZentel ? tenths : whole) = true;
    if (d->Ring05Zehntel) halfTenths = true;
  }
  QString code;
  if (whole) code += "1";
  if (tenths) code += "2";
  if (ringTeiler) code += "3";
  if (halfTenths) code += "4";
  return code;
}

}  // namespace qk
