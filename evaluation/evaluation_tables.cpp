#include "evaluation/evaluation_tables.h"

#include <algorithm>

#include "capture/row_values.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

const char* const kProfilSpalten =
    "Name,Siegerliste,Anzahl,Teiler,Titel,Vorgabe,SchEinmal,RingTeiler,Typ,optPlatzAlle,txtVon,txtBis,"
    "Letzter10er,LetzterSchuss,EntErg,OptKlassen,OptTage,VListe,LetzteStartNr,OptWaffen,optAlle,mitAusweis,"
    "inkGewSCH,optVErg,txtVErg,optMVDiszi,bVerein,bMaxVerein,lMaxVerein,bGewVerein,lGewVerein,bVMannschaft,"
    "bEMannschaft,nEMannschaft,bVollMannschaft,nDurchschnitt,bGewVorBel,nGewVorBel,GleichMV,inkUnGewSCH,"
    "Tageswertung,nBestTageswertung,Monatswertung,nDurchschnittAnzahlErg,nMinAnzahlErgAktiv,nMinAnzahlErg,"
    "Gleichheit,PreisListenID,nShowAuswert";
const char* const kDisziplinSpalten =
    "Name,Einzel,bVerein,bMaxVerein,bGewVerein,LMaxVerein,LGewVerein,Ringe,RingZentel,RingSerie,Teiler,"
    "bLGewTeiler,LGewTeiler,CmdIndex,bVMannschaft,bEMannschaft,nEMannschaft,bOhneKlassen,bMaxWert,dblMaxWert,"
    "bVollMannschaft,bGewErg,nGewErg,dblMaxSerieDSB,Ring05Zehntel,bGewVorBel,nGewVorBel,DisziSPO_ID";

/// "AuswertProfil.Typ", or "AuswertProfil.Name AS AuswertProfil_Name" for what the other table has too.
QStringList spalten(const QString& sTabelle, const QStringList& eigene, const QStringList& andere) {
  QStringList texte;
  for (const QString& spalte : eigene) {
    const QString voll = sTabelle + "." + spalte;
    texte << (andere.contains(spalte, Qt::CaseInsensitive) ? voll + " AS " + sTabelle + "_" + spalte : voll);
  }
  return texte;
}

bool flagIn(const dao::Recordset& rs, const QString& column) {
  return doubleIn(rs, column) != 0;
}

/// A value for each row of a table or query.
template <class Value, class Reading>
std::vector<Value> gelesen(dao::Database& db, const QString& source, Reading&& reading) {
  std::vector<Value> values;
  const auto rs = db.openRecordset(source, dao::RecordsetType::Snapshot);
  for (; !rs->eof(); rs->moveNext()) values.push_back(reading(*rs));
  return values;
}

std::vector<EinzelErgebnis> ausTabelle(dao::Database& wettkampf, Quelle quelle, const QString& Startnummer) {
  return gelesen<EinzelErgebnis>(
      wettkampf,
      "Select * from " + tabellenName(quelle) + " where Startnummer = " + dao::sql::quoted(Startnummer),
      [quelle](const dao::Recordset& rs) {
        return EinzelErgebnis{.Startnummer = textIn(rs, "Startnummer"),
                              .DisziId = longIn(rs, "DisziID"),
                              .WTyp = textIn(rs, "WTyp"),
                              .Art = quelle == Quelle::Schuss ? textIn(rs, "Art") : QString("R"),
                              .Ergebnis = doubleIn(rs, "Ergebnis"),
                              .KlassenID = longIn(rs, "KlassenID"),
                              .ErgID = longIn(rs, "ID"),
                              .Tabelle = quelle,
                              .WkID = 0,
                              .Datum = textIn(rs, "Datum")};
      });
}

}  // namespace

QString tabellenName(Quelle quelle) {
  return quelle == Quelle::Schuss ? "Schuss" : "SchussSerien";
}

QStringList abgleichAnweisungen() {
  return {
      "UPDATE Schuss INNER JOIN Schützen ON Schuss.Startnummer = Schützen.Startnummer "
      "SET Schuss.KlassenID = [Schützen].[KlassenID], Schuss.MannID = [Schützen].[VereinsID], "
      "Schuss.VorMannId = [Schützen].[lMannID]",
      "UPDATE SchussSerien INNER JOIN Schützen ON SchussSerien.Startnummer = Schützen.Startnummer "
      "SET SchussSerien.KlassenID = [Schützen].[KlassenID], SchussSerien.MannID = [Schützen].[VereinsID], "
      "SchussSerien.VorMannId = [Schützen].[lMannID]"};
}

QString profileAnweisung(const QString& sDruckdatei) {
  const QStringList profil = QString(kProfilSpalten).split(','),
                    disziplin = QString(kDisziplinSpalten).split(',');
  const QStringList alle = QStringList{"AwProfilDiszi.AwProfilID", "AwProfilDiszi.DisziID"} +
                           spalten("AuswertProfil", profil, disziplin) +
                           spalten("Disziplin", disziplin, profil);
  return "SELECT " + alle.join(", ") + " INTO Profile IN " + dao::sql::quoted(sDruckdatei) +
         " FROM (AuswertProfil INNER JOIN AwProfilDiszi ON AuswertProfil.ID = AwProfilDiszi.AwProfilID)"
         " INNER JOIN Disziplin ON AwProfilDiszi.DisziID = Disziplin.ID"
         " WHERE AuswertProfil.nShowKurzAuswertung <> 0;";
}

std::vector<ProfilDisziplin> leseProfile(dao::Database& druck) {
  return gelesen<ProfilDisziplin>(druck, "Select * from Profile", [](const dao::Recordset& rs) {
    return ProfilDisziplin{.AwProfilID = longIn(rs, "AwProfilID"),
                           .AuswertProfil_Name = textIn(rs, "AuswertProfil_Name"),
                           .Typ = integerIn(rs, "Typ"),
                           .Anzahl = integerIn(rs, "Anzahl"),
                           .Vorgabe = textIn(rs, "Vorgabe"),
                           .OptKlassen = integerIn(rs, "OptKlassen"),
                           .OptTage = integerIn(rs, "OptTage"),
                           .OptWaffen = integerIn(rs, "OptWaffen"),
                           .Tageswertung = flagIn(rs, "Tageswertung"),
                           .Monatswertung = flagIn(rs, "Monatswertung"),
                           .nBestTageswertung = integerIn(rs, "nBestTageswertung"),
                           .nMinAnzahlErgAktiv = integerIn(rs, "nMinAnzahlErgAktiv"),
                           .nMinAnzahlErg = integerIn(rs, "nMinAnzahlErg"),
                           .DisziID = longIn(rs, "DisziID"),
                           .Disziplin_Name = textIn(rs, "Disziplin_Name"),
                           .Disziplin_Teiler = flagIn(rs, "Disziplin_Teiler"),
                           .Ringe = flagIn(rs, "Ringe"),
                           .bGewErg = flagIn(rs, "bGewErg"),
                           .nGewErg = integerIn(rs, "nGewErg")};
  });
}

std::vector<EinzelErgebnis> leseErgebnisse(dao::Database& wettkampf, const QString& Startnummer) {
  std::vector<EinzelErgebnis> ergebnisse = ausTabelle(wettkampf, Quelle::Schuss, Startnummer);
  for (EinzelErgebnis& serie : ausTabelle(wettkampf, Quelle::SchussSerien, Startnummer))
    ergebnisse.push_back(std::move(serie));
  return ergebnisse;
}

Zulassung leseZulassung(dao::Database& wettkampf) {
  Zulassung zulassung;
  zulassung.disziplinWaffen =
      gelesen<DisziplinWaffe>(wettkampf, "Select * from DisziplinWaffen", [](const dao::Recordset& rs) {
        return DisziplinWaffe{longIn(rs, "DisziID"), longIn(rs, "WaffenID"), textIn(rs, "KZ")};
      });
  zulassung.auswertWaffen =
      gelesen<AuswertWaffe>(wettkampf, "Select * from Auswert_Waffen", [](const dao::Recordset& rs) {
        return AuswertWaffe{longIn(rs, "AuswertID"), longIn(rs, "WaffenID")};
      });
  zulassung.auswertKlassen =
      gelesen<AuswertKlasse>(wettkampf, "Select * from Auswert_Klassen", [](const dao::Recordset& rs) {
        return AuswertKlasse{longIn(rs, "AuswertID"), longIn(rs, "KlassenID")};
      });
  return zulassung;
}

LetzteSchiesstage leseLetzteTage(dao::Database& wettkampf, const std::vector<ProfilDisziplin>& profile,
                                 const std::vector<EinzelErgebnis>& ergebnisse) {
  LetzteSchiesstage tage;
  for (const ProfilDisziplin& zeile : profile) {
    const std::pair disziplin(zeile.quelle(), zeile.DisziID);
    const auto istVonIhr = [&disziplin](const EinzelErgebnis& ergebnis) {
      return std::pair(ergebnis.Tabelle, ergebnis.DisziId) == disziplin;
    };
    if (zeile.OptTage == 0 || tage.contains(disziplin)) continue;
    if (std::none_of(ergebnisse.begin(), ergebnisse.end(), istVonIhr)) continue;
    const auto rs = wettkampf.openRecordset(" SELECT Max(DateValue([Datum])) AS LetzerSchießtag FROM " +
                                            tabellenName(zeile.quelle()) +
                                            " WHERE DisziId=" + QString::number(zeile.DisziID));
    tage[disziplin] = rs->value("LetzerSchießtag").toDateTime().date();
  }
  return tage;
}

Listenregeln leseListenregeln(dao::Database& wettkampf) {
  Listenregeln regeln;
  regeln.disziplinen =
      gelesen<ListenDisziplin>(wettkampf, "Select * from Disziplin", [](const dao::Recordset& rs) {
        return ListenDisziplin{longIn(rs, "ID"), textIn(rs, "Name"), flagIn(rs, "bgewErg"),
                               integerIn(rs, "ngewErg")};
      });
  regeln.profile =
      gelesen<ListenProfil>(wettkampf, "Select * from Auswertprofil", [](const dao::Recordset& rs) {
        return ListenProfil{.ID = longIn(rs, "ID"),
                            .Name = textIn(rs, "Name"),
                            .Teiler = flagIn(rs, "Teiler"),
                            .Anzahl = integerIn(rs, "Anzahl"),
                            .nMinAnzahlErgAktiv = integerIn(rs, "nMinAnzahlErgAktiv"),
                            .nMinAnzahlErg = integerIn(rs, "nMinAnzahlErg")};
      });
  regeln.profilDisziplinen =
      gelesen<ProfilZuordnung>(wettkampf, "Select * from AwProfilDiszi", [](const dao::Recordset& rs) {
        return ProfilZuordnung{longIn(rs, "AwProfilID"), longIn(rs, "DisziID")};
      });
  regeln.zulassung = leseZulassung(wettkampf);
  return regeln;
}

}  // namespace qk
