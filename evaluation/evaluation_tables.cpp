#include "evaluation/evaluation_tables.h"

#include "capture/row_values.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

constexpr int kKeinTyp = -1;  ///< comes in no order of printing

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
  return gelesen<ProfilDisziplin>(
      druck, "Select * from Profile order by AwProfilID, DisziID", [](const dao::Recordset& rs) {
        return ProfilDisziplin{.AwProfilID = longIn(rs, "AwProfilID"),
                               .AuswertProfil_Name = textIn(rs, "AuswertProfil_Name"),
                               .Typ = rs.value("Typ").isNull() ? kKeinTyp : longIn(rs, "Typ"),
                               .Anzahl = longIn(rs, "Anzahl"),
                               .Vorgabe = textIn(rs, "Vorgabe"),
                               .OptKlassen = longIn(rs, "OptKlassen"),
                               .OptTage = longIn(rs, "OptTage"),
                               .OptWaffen = longIn(rs, "OptWaffen"),
                               .Tageswertung = flagIn(rs, "Tageswertung"),
                               .Monatswertung = flagIn(rs, "Monatswertung"),
                               .nBestTageswertung = longIn(rs, "nBestTageswertung"),
                               .nMinAnzahlErgAktiv = longIn(rs, "nMinAnzahlErgAktiv"),
                               .nMinAnzahlErg = longIn(rs, "nMinAnzahlErg"),
                               .DisziID = longIn(rs, "DisziID"),
                               .Disziplin_Name = textIn(rs, "Disziplin_Name"),
                               .Disziplin_Teiler = flagIn(rs, "Disziplin_Teiler"),
                               .Ringe = flagIn(rs, "Ringe"),
                               .bGewErg = flagIn(rs, "bGewErg"),
                               .nGewErg = longIn(rs, "nGewErg")};
      });
}

std::vector<EinzelErgebnis> leseErgebnisse(dao::Database& wettkampf, Quelle quelle,
                                           const QString& Startnummer) {
  return gelesen<EinzelErgebnis>(
      wettkampf,
      "Select * from " + tabellenName(quelle) + " where Startnummer = " + dao::sql::quoted(Startnummer) +
          " and Ergebnis Is Not Null",  // no value is no perfect teiler
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

std::vector<DisziplinWaffe> leseDisziplinWaffen(dao::Database& wettkampf) {
  return gelesen<DisziplinWaffe>(wettkampf, "Select * from DisziplinWaffen", [](const dao::Recordset& rs) {
    return DisziplinWaffe{longIn(rs, "DisziID"), longIn(rs, "WaffenID"), textIn(rs, "KZ")};
  });
}

std::vector<AuswertWaffe> leseAuswertWaffen(dao::Database& wettkampf) {
  return gelesen<AuswertWaffe>(wettkampf, "Select * from Auswert_Waffen", [](const dao::Recordset& rs) {
    return AuswertWaffe{longIn(rs, "AuswertID"), longIn(rs, "WaffenID")};
  });
}

std::vector<AuswertKlasse> leseAuswertKlassen(dao::Database& wettkampf) {
  return gelesen<AuswertKlasse>(wettkampf, "Select * from Auswert_Klassen", [](const dao::Recordset& rs) {
    return AuswertKlasse{longIn(rs, "AuswertID"), longIn(rs, "KlassenID")};
  });
}

QDate leseLetztenTag(dao::Database& wettkampf, Quelle quelle, qint32 lDisziID) {
  const auto rs =
      wettkampf.openRecordset(" SELECT Max(DateValue([Datum])) AS LetzerSchießtag FROM " +
                              tabellenName(quelle) + " WHERE DisziId=" + QString::number(lDisziID));
  return rs->value("LetzerSchießtag").toDateTime().date();
}

std::vector<ListenDisziplin> leseDisziplinen(dao::Database& wettkampf) {
  return gelesen<ListenDisziplin>(wettkampf, "Select * from Disziplin", [](const dao::Recordset& rs) {
    return ListenDisziplin{longIn(rs, "ID"), textIn(rs, "Name"), flagIn(rs, "bgewErg"),
                           longIn(rs, "ngewErg")};
  });
}

std::vector<ListenProfil> leseListenprofile(dao::Database& wettkampf) {
  return gelesen<ListenProfil>(wettkampf, "Select * from Auswertprofil", [](const dao::Recordset& rs) {
    return ListenProfil{.ID = longIn(rs, "ID"),
                        .Name = textIn(rs, "Name"),
                        .Teiler = flagIn(rs, "Teiler"),
                        .Anzahl = longIn(rs, "Anzahl"),
                        .nMinAnzahlErgAktiv = longIn(rs, "nMinAnzahlErgAktiv"),
                        .nMinAnzahlErg = longIn(rs, "nMinAnzahlErg")};
  });
}

std::vector<ProfilZuordnung> leseZuordnungen(dao::Database& wettkampf) {
  return gelesen<ProfilZuordnung>(wettkampf, "Select * from AwProfilDiszi", [](const dao::Recordset& rs) {
    return ProfilZuordnung{longIn(rs, "AwProfilID"), longIn(rs, "DisziID")};
  });
}

}  // namespace qk
