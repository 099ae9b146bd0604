#include "tests/platform/dao/sql/statements.h"

namespace qk::dao::sql::test {

std::vector<TableDef> competitionTables() {
  std::vector<TableDef> tables;
  const auto table = [&](const char* name, const QString& columns) {
    tables.push_back(sampleTable(name, columns));
  };
  table("Schützen",
        "ID* l, Startnummer t, Name t, VereinsID l, KlassenID l, lMannID l, Strasse t, PLZ t, Ort t, "
        "Gebdat c");
  table("Verein", "ID* l, Name t, Kurzname t");
  table("Mannschaften", "ID* l, MannName t, VereinID l, GruppenID l");
  table("MannschaftsGruppen", "MannGrpID* l, Bezeichnung t");
  table("SchuetzenGruppen", "SchGrpID* l, Bezeichnung t");
  table("SchuetzenGruppenZuordnung", "SchuetzeID l, GruppenID l");
  table("Schützenklassen", "ID* l, Klasse t, KZ t, Alter von i, Alter bis i, Auflage y, Geschlecht t");
  table("Disziplin", "ID* l, Name t, CmdIndex l, Ringe y, Teiler y, ZusatzTeiler i");
  table("DisziplinKlasse", "KlasseID l, DisziID l");
  table("DisziplinWaffen", "DisziID l, WaffenID l, KZ t");
  table("Kombination_Name", "ID* l, Kombinationsname t, CmdIndex l");
  table("Kombination_Diszi", "KombiID l, disziID l");
  table("MeldeDisziplin", "ID* l, MeldeDisziplin t, MeldeKZ t, ScheibenKZ t, TeilerfaktorESA d");
  table("Schuetzen_SPO_Anmeldungen", "SchuetzeID l, SPOID l, SPOKey t, MannID l");
  const QString results =
      "ID* l, Ergebnis d, Startnummer t, MannID l, KlassenID l, DisziID l, VorMannID l, WTyp t, Datum c, "
      "Betrag m";
  table("Schuss", results);
  table("SchussSerien", results);
  table("Haering_Daten",
        "WettbewerbBezeichnung t, Liniennummer i, Schütze t, RingwertmitZehntel d, ZeitAbsolut t, "
        "Datum t, Startnummer t, Key t, ID* l, Verbucht y, Verworfen y, BuchungsZeitpunkt c");
  table("Haering_Gruppen", "ID* l, GruppenName t");
  table("Haering_Gruppen_Disziplinen", "ID* l, GruppenID l, GruppenName t, DisziplinName t");
  table("Kasse_Eingang",
        "ID* l, Startnummer t, KasseID l, Betrag m, Offen y, MannID l, VereinID l, VereinIDBasis l, "
        "MannIDBasis l, DatumEingang c");
  table("Kasse_Verwaltung", "ID* l, Platz l, Bezeichnung t, Betrag m, Verein y, ArtikelNr t");
  table("Kasse_DisziKombi", "ID* l, EinlageID l, DisziKombiID l, DisziKZ i, Anzahl l");
  table("Kasse_Schuetzenklassen", "ID* l, KasseEinlageID l, SchuetzenKlasseID l");
  table("ScheibenNummern",
        "ID* l, Bezeichnung t, Scheibentyp t, AktuelleNummer l, DisziKombi l, VorgabeID l, Anzeigen i, "
        "PCAnzeige t, Sortierung l");
  table("Schuetzen_ScheibenNummern",
        "ID* l, Startnummer t, Scheibennummer l, Kaufdatum c, Speicherdatum c, StapelID l, "
        "DisziKombiID l, DisziKombiWahl l");
  table("AuswertProfil", "ID* l, Name t, Teiler y, nShowKurzAuswertung i, Typ i");
  table("AwProfilDiszi", "AwProfilID l, DisziID l");
  table("Auswert_Waffen", "AuswertID l, WaffenID l");
  table("Auswert_Klassen", "AuswertID l, KlassenID l");
  table("Profile", "AwProfilID l, AuswertProfil_Name t, Disziplin_Name t, Typ i, DisziID l");
  table("EinzelErgebnisse", "ID* l, WkID l, DisziID l, Startnummer t, Ergebnis d, Datum c");
  table("Listen", "ID* l, Beschreibung t, Sort l");
  return tables;
}

StoredQuery shooterList() {
  return {
      "Schützenliste",
      "SELECT Schützen.ID, Startnummer, Schützen.Name AS [Schützen.Name], Verein.Name AS [Verein.Name] FROM "
      "Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID"};
}

std::unique_ptr<SampleStore> competitionStore() {
  auto store = std::make_unique<SampleStore>();
  for (const TableDef& table : competitionTables()) store->table(table);
  store->query(shooterList().name, shooterList().text);
  return store;
}

QStringList readingStatements() {
  return {
      "Select * from Haering_Daten order by Datum, ZeitAbsolut",
      "SELECT Haering_Gruppen.* INTO Haering_Gruppen IN '/tmp/ziel.qkk' FROM Haering_Gruppen",
      "Select * from MeldeDisziplin where MeldeKZ = '1.10.10'",
      "Select * from MeldeDisziplin where MeldeKz = '1.10.10'",
      "Select * from Meldedisziplin order by MeldeKz",
      "Select * from Haering_Gruppen order by GruppenName",
      "Select * from Haering_Gruppen_Disziplinen where GruppenID = 1",
      "Select * from Schützen where Startnummer = '107'",
      "Select * from Haering_Daten where verbucht = 0 and verworfen = 0 and Liniennummer = 3",
      "Select * from Haering_Daten where verbucht = 0 and verworfen = 0 and Liniennummer = 3 order by Datum, "
      "ZeitAbsolut",
      "Select * from Disziplin where ID = 4711",
      "Select * from SchützenKlassen where ID = 2",
      "Select * from Disziplin  order by CmdIndex",
      "Select * from Disziplin  order by Name",
      "Select * from Kombination_Name order by CmdIndex",
      "Select * from Kombination_Name order by Kombinationsname",
      "Select * from Kombination_Diszi where KombiID = 1",
      " SELECT Schützenklassen.* FROM DisziplinKlasse INNER JOIN Schützenklassen ON DisziplinKlasse.KlasseID "
      "= "
      "Schützenklassen.id WHERE (DisziplinKlasse.DisziID= 4);",
      "Select * from DisziplinWaffen where DisziID = 4",
      "Select * from Haering_Daten",
      "Select * from Haering_Daten ",
      "Select * from Haering_Daten  WHERE Startnummer LIKE '10*' AND Datum LIKE '20.11*' AND Verbucht LIKE "
      "'-*'"
      " AND RingwertmitZehntel LIKE '9,*' ORDER BY Liniennummer DESC",
      "Select * from Haering_Daten  WHERE Schütze LIKE 'MÜ*' ORDER BY Key ASC",
      "Select * from Schuss",
      "Select * from SchussSerien",
      "Select * from Schützenklassen order by [Alter von]",
      "Select * from Schützenklassen order by [Alter Von], Auflage DESC",
      "Select * from Schützenklassen",
      "Select * from Schützenliste order by val(Startnummer)",
      "Select * from Schützenliste WHERE Schützen.Name like '*ü*' order by val(Startnummer)",
      "Select * from Schützenliste",
      "SELECT Schuetzen_SPO_Anmeldungen.SchuetzeID, Schuetzen_SPO_Anmeldungen.SPOID, "
      "Schuetzen_SPO_Anmeldungen.SPOKey, MeldeDisziplin.MeldeDisziplin, MeldeDisziplin.MeldeKZ, "
      "Schuetzen_SPO_Anmeldungen.MannID, Mannschaften.MannName FROM (Schuetzen_SPO_Anmeldungen INNER JOIN "
      "MeldeDisziplin ON Schuetzen_SPO_Anmeldungen.SPOID = MeldeDisziplin.ID) LEFT JOIN Mannschaften ON "
      "Schuetzen_SPO_Anmeldungen.MannID = Mannschaften.ID where SchuetzeID = 1",
      "Select * from Verein where ID = 1",
      "Select * from Mannschaften where ID = 1",
      "Select * from MannschaftsGruppen where MannGrpID = 1",
      "Select * from Kasse_Verwaltung where Verein = 0 order by Platz",
      "Select * from Kasse_Verwaltung where Verein = -1",
      "Select * from Kasse_Verwaltung where (Verein <> -1) OR (Kasse_Verwaltung.Verein Is Null) order by "
      "Platz",
      "Select * from Kasse_Verwaltung where Verein = -1 order by Platz",
      "Select * from Kasse_Eingang where VereinID = 1",
      "Select * from Kasse_Eingang where Startnummer = '107'",
      "Select * from Kasse_Verwaltung where ArtikelNr = '4711'",
      "Select * from Kasse_Schuetzenklassen where KasseEinlageID = 1",
      "Select * from Scheibennummern",
      "SELECT Schuetzen_SPO_Anmeldungen.SchuetzeID, Schuetzen_SPO_Anmeldungen.MannID, Kasse_Eingang.Betrag, "
      "Kasse_Eingang.Offen, Mannschaften.MannName FROM (Schuetzen_SPO_Anmeldungen LEFT JOIN Kasse_Eingang ON "
      "Schuetzen_SPO_Anmeldungen.MannID = Kasse_Eingang.MannID) INNER JOIN Mannschaften ON "
      "Schuetzen_SPO_Anmeldungen.MannID = Mannschaften.ID Where (((Schuetzen_SPO_Anmeldungen.SchuetzeID) = "
      "1) "
      "And ((Schuetzen_SPO_Anmeldungen.MannID) > 0)) ORDER BY Schuetzen_SPO_Anmeldungen.MannID;",
      "SELECT ScheibenNummern.*, DisziplinKombinationName.Name as Vorgabe FROM ScheibenNummern LEFT JOIN "
      "(SELECT "
      "Name, ID, 0 as Art from Disziplin Union SELECT Kombinationsname as Name, ID, 1 as Art  from "
      "Kombination_Name) as DisziplinKombinationName ON (ScheibenNummern.DisziKombi = "
      "DisziplinKombinationName.Art) AND (ScheibenNummern.VorgabeID = DisziplinKombinationName.ID) WHERE "
      "ScheibenNummern.Anzeigen = 1 AND (ScheibenNummern.PCAnzeige LIKE '*PC1*' or ScheibenNummern.PCAnzeige "
      "= "
      "'') order by Sortierung",
      "SELECT Schuetzen_ScheibenNummern.Scheibennummer, Schuetzen_ScheibenNummern.Kaufdatum, "
      "Schuetzen_ScheibenNummern.Speicherdatum, ScheibenNummern.Bezeichnung AS Stapel, "
      "DisziplinKombinationName.Name AS Zuordnung, ScheibenNummern.ScheibenTyp, Schuetzen_ScheibenNummern.ID "
      "FROM (Schuetzen_ScheibenNummern LEFT JOIN ScheibenNummern ON Schuetzen_ScheibenNummern.StapelID = "
      "ScheibenNummern.ID) LEFT JOIN (SELECT Name, ID, 0 as Art from Disziplin Union SELECT Kombinationsname "
      "as "
      "Name, ID, 1 as Art  from Kombination_Name) as DisziplinKombinationName ON "
      "(Schuetzen_ScheibenNummern.DisziKombiWahl = DisziplinKombinationName.Art) AND "
      "(Schuetzen_ScheibenNummern.DisziKombiID = DisziplinKombinationName.ID) WHERE "
      "(Schuetzen_ScheibenNummern.Startnummer = '107') ORDER BY Schuetzen_ScheibenNummern.Scheibennummer",
      "Select * from Kasse_DisziKombi where EinlageID = 1",
      "Select * from Kasse_DisziKombi where DisziKombiID = 1 AND DisziKZ = 2",
      "SELECT SchuetzenGruppen.Bezeichnung FROM SchuetzenGruppenZuordnung INNER JOIN SchuetzenGruppen ON "
      "SchuetzenGruppenZuordnung.GruppenID = SchuetzenGruppen.SchGrpID WHERE "
      "(((SchuetzenGruppenZuordnung.SchuetzeID)=1 ))",
      "Select * from Listen order by Sort",
      "SELECT Schützen.*, Verein.Name AS VName, Verein.ID as VID FROM Verein RIGHT JOIN Schützen ON "
      "Verein.ID = "
      "Schützen.VereinsID",
      "SELECT Schuss.Ergebnis, Schuss.WTyp as Waffe, Disziplin.Name as Disziplin, Schuss.Datum, Disziplin.ID "
      "as "
      "DisziID, Schuss.ID as SchussID, Schuss.DisziID as SDID FROM Schuss INNER JOIN Disziplin ON "
      "Schuss.DisziId "
      "= Disziplin.ID WHERE (((Schuss.Startnummer)= '107')) order by Disziplin.Name, Schuss.Ergebnis",
      "SELECT SchussSerien.Ergebnis, SchussSerien.WTyp as Waffe, Disziplin.Name as Disziplin, "
      "SchussSerien.Datum, Disziplin.ID as DisziID, SchussSerien.ID as SchussID, SchussSerien.DisziID as "
      "SDID "
      "FROM SchussSerien INNER JOIN Disziplin ON SchussSerien.DisziID = Disziplin.ID WHERE "
      "(((SchussSerien.Startnummer)='107')) ORDER BY Disziplin.Name, SchussSerien.Ergebnis DESC",
      "Select top 1 * from Schuss",
      "Select top 1 * from SchussSerien",
      "Select * from Disziplin where Teiler = True",
      "Select * from Disziplin where Ringe = True AND Teiler = False",
      "SELECT AuswertProfil.ID, AuswertProfil.Name AS AuswertProfil_Name, Disziplin.Name AS Disziplin_Name "
      "INTO "
      "Profile IN '/tmp/druck.mdb' FROM (AuswertProfil INNER JOIN AwProfilDiszi ON AuswertProfil.ID = "
      "AwProfilDiszi.AwProfilID) INNER JOIN Disziplin ON AwProfilDiszi.DisziID = Disziplin.ID WHERE "
      "AuswertProfil.nShowKurzAuswertung <> 0;",
      "Select * from Einzelergebnisse where WKID = 1 AND DisziID = 4 order by Ergebnis ASC",
      "Select * from Auswert_Waffen where AuswertID = 1",
      "Select * from Auswert_Klassen where AuswertID = 1 AND KlassenID = 2",
      " SELECT Max(DateValue([Datum])) AS LetzerSchießtag FROM Schuss WHERE DisziId=4",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 order by Startnummer, "
      "DateValue([Datum]), "
      "Ergebnis DESC",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 order by Startnummer, "
      "Month([Datum]),Ergebnis ASC",
      "Select * from Profile where Typ = 7 order by AuswertProfil_Name",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 ORDER BY ERGEBNIS  DESC",
      "SELECT EinzelErgebnisse.*, Abs(9.5-[Ergebnis]) AS Diff FROM Einzelergebnisse WHERE WKID = 1 AND "
      "DISZIID = "
      "4 ORDER BY Abs(9.5 -[Ergebnis])",
      "SELECT Schützen.*, Verein.Name AS Verein, Schützenklassen.Klasse, Mannschaften.MannName INTO Schütze "
      "IN "
      "'/tmp/druck.mdb' FROM ((Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID) LEFT JOIN "
      "Mannschaften ON Schützen.lMannID = Mannschaften.ID) LEFT JOIN Schützenklassen ON Schützen.KlassenID = "
      "Schützenklassen.ID WHERE Schützen.Startnummer = '107'",
      "SELECT Schuss.Ergebnis, Schuss.WTyp as Waffe, Schuss.KlassenID, Disziplin.Name as Disziplin FROM "
      "Schuss "
      "INNER JOIN Disziplin ON Schuss.DisziId = Disziplin.ID WHERE (((Schuss.Startnummer)= '107')) order by "
      "Disziplin.Name, Schuss.WTyp, Schuss.Ergebnis",
      "SELECT SchussSerien.Ergebnis, SchussSerien.WTyp as Waffe, SchussSerien.KlassenID, Disziplin.Name as "
      "Disziplin FROM SchussSerien INNER JOIN Disziplin ON SchussSerien.DisziID = Disziplin.ID WHERE "
      "(((SchussSerien.Startnummer)='107')) ORDER BY Disziplin.Name, SchussSerien.WTyp, "
      "SchussSerien.Ergebnis "
      "DESC",
      "Select * from Disziplin where Name = 'Übungsscheibe'",
      "Select * from Auswertprofil",
      "SELECT SchussSerien.* FROM (SchussSerien INNER JOIN AwProfilDiszi ON SchussSerien.DisziID = "
      "AwProfilDiszi.DisziID) INNER JOIN AuswertProfil ON AwProfilDiszi.AwProfilID = AuswertProfil.ID WHERE "
      "AuswertProfil.ID = 1 AND SchussSerien.Startnummer = '107' ORDER BY SchussSerien.Ergebnis DESC;",
      "Select * from DisziplinWaffen where KZ = 'LG'",
      "Select * from Auswert_Waffen where AuswertID = 1 AND WaffenID = 2",
      "Select * from Disziplin order by CmdIndex",
      "Select * from Disziplin order by Name",
      "Select * from MeldeDisziplin",
      "Select * from MeldeDisziplin order by MeldeKZ",
      "Select * from Haering_Gruppen_Disziplinen",
      "Select * from Haering_Gruppen_Disziplinen WHERE GruppenID = 2",
      "Select * from Haering_Daten  WHERE BuchungsZeitpunkt LIKE '20.11*' AND Verworfen LIKE '0*'",
      "Select * from Haering_Daten  WHERE ZeitAbsolut LIKE '1*' ORDER BY BuchungsZeitpunkt ASC",
      "Select * from Haering_Daten  WHERE Key LIKE '10-*' ORDER BY RingwertmitZehntel DESC",
      "Select * from Haering_Daten  ORDER BY Schütze DESC",
      "Select * from Haering_Daten  ORDER BY Verbucht ASC",
      "Select * from Disziplin where ID = 4",
      "Select * from Kasse_Eingang where Startnummer = '' order by DatumEingang",
      "Select * from Schützenliste WHERE Schützen.Name like '**' order by val(Startnummer)",
      "Select * from Schützenliste WHERE Schützen.Name like '*STRASSE*' order by val(Startnummer)",
      "SELECT ScheibenNummern.*, DisziplinKombinationName.Name as Vorgabe FROM ScheibenNummern LEFT JOIN "
      "(SELECT Name, ID, 0 as Art from Disziplin Union SELECT Kombinationsname as Name, ID, 1 as Art  from "
      "Kombination_Name) as DisziplinKombinationName ON (ScheibenNummern.DisziKombi = "
      "DisziplinKombinationName.Art) AND (ScheibenNummern.VorgabeID = DisziplinKombinationName.ID) WHERE "
      "ScheibenNummern.Anzeigen = 1 AND (ScheibenNummern.PCAnzeige LIKE '*ü*' or ScheibenNummern.PCAnzeige "
      "= '') order by Bezeichnung",
      "Select * from Listen",
      "Select * from Einzelergebnisse where WKID = 1 AND DisziID = 4 order by Ergebnis DESC",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 order by Startnummer, "
      "DateValue([Datum]), Ergebnis ASC",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 order by Startnummer, "
      "Month([Datum]),Ergebnis DESC",
      "Select * from EinzelErgebnisse where WKID = 1 AND DISZIID = 4 ORDER BY ERGEBNIS ASC",
      "Select * from EinzelErgebnisse where WKID = 1 ORDER BY ERGEBNIS  DESC",
      "Select * from EinzelErgebnisse where WKID = 1 ORDER BY ERGEBNIS ASC",
      " SELECT Max(DateValue([Datum])) AS LetzerSchießtag FROM SchussSerien WHERE DisziId=4",
      "Select * from Auswert_Klassen where AuswertID = 1",
      "Select * from DisziplinWaffen where WaffenID = 2",
      "SELECT Schuss.* FROM (Schuss INNER JOIN AwProfilDiszi ON Schuss.DisziID = AwProfilDiszi.DisziID) "
      "INNER "
      "JOIN AuswertProfil ON AwProfilDiszi.AwProfilID = AuswertProfil.ID WHERE AuswertProfil.ID = 1 AND "
      "Schuss.Startnummer = '107' ORDER BY Schuss.Ergebnis;",
  };
}

QStringList actionStatements() {
  return {
      "Update Haering_Daten Set Startnummer = '108' WHERE ID = 1",
      "UPDATE Kasse_Eingang INNER JOIN Schützen ON Kasse_Eingang.Startnummer = Schützen.Startnummer SET "
      "Kasse_Eingang.VereinIDBasis = [Schützen].[VereinsID]",
      "UPDATE Kasse_Eingang INNER JOIN Mannschaften ON Kasse_Eingang.MannID = Mannschaften.ID SET "
      "Kasse_Eingang.VereinIDBasis = [Mannschaften].[VereinID]",
      "UPDATE Kasse_Eingang SET Kasse_Eingang.VereinIDBasis = [Kasse_Eingang].[VereinID] WHERE "
      "(((Kasse_Eingang.VereinID)>0))",
      "UPDATE Kasse_Eingang SET Kasse_Eingang.MannIDBasis = [MannID] WHERE (((Kasse_Eingang.MannID)>0))",
      "UPDATE Kasse_Eingang INNER JOIN Schützen ON Kasse_Eingang.Startnummer = Schützen.Startnummer SET "
      "Kasse_Eingang.MannIDBasis = [Schützen].[lMannID]WHERE (([Schützen].[lMannID]>0))",
      "UPDATE Schuss INNER JOIN Schützen ON Schuss.Startnummer = Schützen.Startnummer SET Schuss.KlassenID = "
      "[Schützen].[KlassenID], Schuss.MannID = [Schützen].[VereinsID], Schuss.VorMannId = "
      "[Schützen].[lMannID]",
      "UPDATE SchussSerien INNER JOIN Schützen ON SchussSerien.Startnummer = Schützen.Startnummer SET "
      "SchussSerien.KlassenID = [Schützen].[KlassenID], SchussSerien.MannID = [Schützen].[VereinsID], "
      "SchussSerien.VorMannId = [Schützen].[lMannID]",
      "INSERT INTO Schuss ( Ergebnis, Startnummer, WTyp, Datum, DisziID) SELECT Ergebnis, Startnummer, WTyp, "
      "Datum, 5 FROM Schuss WHERE DisziID = 4 AND STARTNUMMER = '107'",
      "INSERT INTO SchussSerien ( Ergebnis, Startnummer, DisziID) SELECT Ergebnis, Startnummer, 5 FROM "
      "SchussSerien WHERE ID IN (1, 2)",
      "UPDATE Schuss SET DisziId = 5 WHERE DisziId =4 AND Startnummer ='107'",
      "UPDATE SchussSerien SET DisziId = 5 WHERE ID in (1, 2)",
      "INSERT INTO Schuss ( Ergebnis, Startnummer, WTyp, Datum, DisziID) SELECT Ergebnis, Startnummer, WTyp, "
      "Datum, 5 FROM Schuss WHERE ID IN (3)",
      "INSERT INTO SchussSerien ( Ergebnis, Startnummer, DisziID) SELECT Ergebnis, Startnummer, 5 FROM "
      "SchussSerien WHERE DisziID = 4 AND STARTNUMMER = '107'",
      "UPDATE Schuss SET DisziId = 5 WHERE ID in (1, 2)",
      "UPDATE SchussSerien SET DisziId = 5 WHERE DisziId =4 AND Startnummer ='107'",
      "Delete * from Haering_Gruppen_Disziplinen where GruppenID = 1",
      "Delete * from Haering_Gruppen where ID = 1",
      "Delete * from Schuetzen_Scheibennummern where ID = 1",
      "Delete * from Schuetzen_Scheibennummern where Startnummer = '107'",
      "Delete * from Schuetzen_ScheibenNummern",
      "Delete * from Kasse_Eingang where KasseID = 1",
      "Delete * from Kasse_Eingang",
  };
}

QStringList criteria() {
  return {"ID = 5", "ID = 4711", "Startnummer = '107'", "Verbucht = 0 AND Liniennummer = 3"};
}

}  // namespace qk::dao::sql::test
