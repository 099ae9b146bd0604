#include "platform/runtime/error.h"

#include <QHash>

namespace qk {

namespace {

const QHash<int, QString>& descriptions() {
  static const QHash<int, QString> texts{
      {5, "Ungültiger Prozeduraufruf oder ungültiges Argument"},
      {6, "Überlauf"},
      {7, "Nicht genügend Speicher"},
      {9, "Index außerhalb des gültigen Bereichs"},
      {11, "Division durch Null"},
      {13, "Typen unverträglich"},
      {52, "Dateiname oder -nummer falsch"},
      {53, "Datei nicht gefunden"},
      {55, "Datei bereits geöffnet"},
      {57, "Geräte-E/A-Fehler"},
      {58, "Datei existiert bereits"},
      {61, "Datenträger voll"},
      {62, "Eingabe hinter Dateiende"},
      {68, "Gerät nicht verfügbar"},
      {70, "Zugriff verweigert"},
      {71, "Datenträger nicht bereit"},
      {75, "Fehler beim Zugriff auf Pfad/Datei"},
      {76, "Pfad nicht gefunden"},
      {91, "Objektvariable oder With-Blockvariable nicht festgelegt"},
      {94, "Unzulässige Verwendung von Null"},
      {424, "Objekt erforderlich"},
      {457, "Dieser Schlüssel ist bereits einem Element dieser Auflistung zugeordnet"},
      {482, "Druckerfehler"},
      {3001, "Ungültiges Argument."},
      {3010, "Die Tabelle ist bereits vorhanden."},
      {3011,
       "Das Datenbankmodul konnte das Objekt nicht finden. Stellen Sie sicher, dass das Objekt existiert und "
       "dass die Namens- und Pfadangaben richtig eingegeben wurden."},
      {3012, "Das Objekt ist bereits vorhanden."},
      {3015, "Der angegebene Name ist kein Index in dieser Tabelle."},
      {3019, "Vorgang ungültig ohne aktuellen Index."},
      {3020, "Update oder CancelUpdate ohne AddNew oder Edit."},
      {3021, "Kein aktueller Datensatz."},
      {3022,
       "Die von Ihnen vorgenommenen Änderungen an der Tabelle konnten nicht vorgenommen werden, da der "
       "Index, "
       "der Primärschlüssel oder die Beziehung mehrfach vorkommende Werte enthalten würde. Ändern Sie die "
       "Daten in den Feldern, die gleiche Daten enthalten, entfernen Sie den Index, oder definieren Sie den "
       "Index neu, damit doppelte Einträge möglich sind, und versuchen Sie es erneut."},
      {3024, "Datei konnte nicht gefunden werden."},
      {3026, "Nicht genügend Speicherplatz auf dem Datenträger."},
      {3027, "Aktualisieren nicht möglich. Datenbank oder Objekt ist schreibgeschützt."},
      {3029, "Kein gültiger Kontoname oder Kennwort."},
      {3043, "Fehler beim Zugriff auf Datenträger oder Netzwerk."},
      {3044,
       "Das ist kein gültiger Pfad. Stellen Sie sicher, dass der Pfad richtig eingegeben wurde und dass Sie "
       "mit dem Server, auf dem sich die Datei befindet, verbunden sind."},
      {3049,
       "Datenbank kann nicht geöffnet werden. Möglicherweise erkennt Ihre Anwendung sie nicht als Datenbank, "
       "oder die Datei ist beschädigt."},
      {3051,
       "Das Datenbankmodul kann die Datei nicht öffnen. Sie ist bereits von einem anderen Benutzer exklusiv "
       "geöffnet, oder Sie benötigen eine Berechtigung, um die Daten zu lesen."},
      {3058, "Index- oder Primärschlüssel darf keinen Nullwert enthalten."},
      {3059, "Die Operation wurde vom Benutzer abgebrochen."},
      {3061, "Zu wenig Parameter erwartet."},
      {3065, "Eine Auswahlabfrage kann nicht ausgeführt werden."},
      {3073, "Die Operation muss eine aktualisierbare Abfrage verwenden."},
      {3075, "Syntaxfehler im Abfrageausdruck."},
      {3077, "Syntaxfehler im Ausdruck."},
      {3078,
       "Das Datenbankmodul findet die Eingangstabelle oder Abfrage nicht. Stellen Sie sicher, dass sie "
       "existiert und der Name richtig eingegeben wurde."},
      {3079,
       "Das angegebene Feld kann sich auf mehr als eine der in der FROM-Klausel Ihrer SQL-Anweisung "
       "aufgeführten Tabellen beziehen."},
      {3086, "Aus den angegebenen Tabellen kann nicht gelöscht werden."},
      {3112, "Datensätze können nicht gelesen werden; keine Leseberechtigung."},
      {3122, "Eine Spalte ist weder gruppiert noch Teil einer Aggregatfunktion."},
      {3125,
       "Das ist kein gültiger Name. Stellen Sie sicher, dass er nicht leer ist und keine ungültigen Zeichen "
       "enthält."},
      {3126, "Ungültiges Setzen von Klammern um einen Namen."},
      {3146, "ODBC-Aufruf fehlgeschlagen."},
      {3159, "Kein gültiges Lesezeichen."},
      {3163,
       "Das Feld ist zu klein für die Datenmenge, die Sie hinzufügen wollten. Versuchen Sie, weniger Daten "
       "einzufügen."},
      {3164, "Das Feld kann nicht aktualisiert werden."},
      {3167, "Datensatz ist gelöscht."},
      {3186, "Speichern nicht möglich; momentan durch einen anderen Benutzer gesperrt."},
      {3191, "Das Feld kann nicht mehr als einmal definiert werden."},
      {3201,
       "Der Datensatz kann nicht hinzugefügt oder geändert werden, da ein Datensatz in der verknüpften "
       "Tabelle erforderlich ist."},
      {3204, "Die Datenbank ist bereits vorhanden."},
      {3219, "Ungültige Operation."},
      {3251, "Diese Operation wird für diesen Objekttyp nicht unterstützt."},
      {3260, "Aktualisieren nicht möglich; momentan von einem anderen Benutzer gesperrt."},
      {3265, "Element in dieser Auflistung nicht gefunden."},
      {3283, "Der Primärschlüssel ist bereits vorhanden."},
      {3284, "Der Index ist bereits vorhanden."},
      {3307, "Die Anzahl der Spalten in den Teilen der UNION-Abfrage stimmt nicht überein."},
      {3314,
       "Das Feld darf keinen Nullwert enthalten, da seine Eigenschaft \"Eingabe erforderlich\" gesetzt ist."},
      {3315, "Das Feld darf keine leere Zeichenfolge enthalten."},
      {3317, "Der Wert verstößt gegen die Gültigkeitsregel des Feldes."},
      {3343, "Nicht erkennbares Datenbankformat."},
      {3346, "Die Anzahl der Abfragewerte und der Zielfelder stimmt nicht überein."},
      {3360, "Die Abfrage ist zu komplex."},
      {3421, "Fehler beim Konvertieren des Datentyps."},
      {3464, "Datentypenkonflikt im Kriterienausdruck."},
  };
  return texts;
}

}  // namespace

QString errorDescription(int number) {
  const auto found = descriptions().constFind(number);
  if (found != descriptions().constEnd()) return *found;
  return "Anwendungs- oder objektdefinierter Fehler " + QString::number(number);
}

Error::Error(int number, QString description, QString place)
    : number_(number), description_(std::move(description)), place_(std::move(place)) {
  what_ = QByteArray::number(number_) + ": " + description_.toUtf8();
}

}  // namespace qk
