#include "platform/runtime/error.h"

#include <QHash>

namespace qk {

namespace {

const QHash<int, QString>& descriptions() {
  static const QHash<int, QString> texts{
      {errors::kInvalidCall, "Ungültiger Prozeduraufruf oder ungültiges Argument"},
      {errors::kOverflow, "Überlauf"},
      {errors::kOutOfMemory, "Nicht genügend Speicher"},
      {errors::kIndexOutOfRange, "Index außerhalb des gültigen Bereichs"},
      {errors::kDivisionByZero, "Division durch Null"},
      {errors::kTypeMismatch, "Typen unverträglich"},
      {errors::kBadFileName, "Dateiname oder -nummer falsch"},
      {errors::kFileNotFound, "Datei nicht gefunden"},
      {errors::kFileAlreadyOpen, "Datei bereits geöffnet"},
      {errors::kDeviceError, "Geräte-E/A-Fehler"},
      {errors::kFileExists, "Datei existiert bereits"},
      {errors::kDiskFull, "Datenträger voll"},
      {errors::kPastEndOfFile, "Eingabe hinter Dateiende"},
      {errors::kDeviceUnavailable, "Gerät nicht verfügbar"},
      {errors::kPermissionDenied, "Zugriff verweigert"},
      {errors::kDiskNotReady, "Datenträger nicht bereit"},
      {errors::kPathAccess, "Fehler beim Zugriff auf Pfad/Datei"},
      {errors::kPathNotFound, "Pfad nicht gefunden"},
      {errors::kObjectNotSet, "Objektvariable oder With-Blockvariable nicht festgelegt"},
      {errors::kInvalidNull, "Unzulässige Verwendung von Null"},
      {errors::kObjectRequired, "Objekt erforderlich"},
      {errors::kDuplicateElement, "Dieser Schlüssel ist bereits einem Element dieser Auflistung zugeordnet"},
      {errors::kPrinterError, "Druckerfehler"},
      {errors::kInvalidArgument, "Ungültiges Argument."},
      {errors::kTableExists, "Die Tabelle ist bereits vorhanden."},
      {errors::kObjectNotFound,
       "Das Datenbankmodul konnte das Objekt nicht finden. Stellen Sie sicher, dass das Objekt existiert und "
       "dass die Namens- und Pfadangaben richtig eingegeben wurden."},
      {errors::kObjectExists, "Das Objekt ist bereits vorhanden."},
      {errors::kNoSuchIndex, "Der angegebene Name ist kein Index in dieser Tabelle."},
      {errors::kNoCurrentIndex, "Vorgang ungültig ohne aktuellen Index."},
      {errors::kNotEditing, "Update oder CancelUpdate ohne AddNew oder Edit."},
      {errors::kNoCurrentRecord, "Kein aktueller Datensatz."},
      {errors::kDuplicateKey,
       "Die von Ihnen vorgenommenen Änderungen an der Tabelle konnten nicht vorgenommen werden, da der "
       "Index, "
       "der Primärschlüssel oder die Beziehung mehrfach vorkommende Werte enthalten würde. Ändern Sie die "
       "Daten in den Feldern, die gleiche Daten enthalten, entfernen Sie den Index, oder definieren Sie den "
       "Index neu, damit doppelte Einträge möglich sind, und versuchen Sie es erneut."},
      {errors::kStoreNotFound, "Datei konnte nicht gefunden werden."},
      {errors::kStoreDiskFull, "Nicht genügend Speicherplatz auf dem Datenträger."},
      {errors::kNotUpdatable, "Aktualisieren nicht möglich. Datenbank oder Objekt ist schreibgeschützt."},
      {errors::kNoLogin, "Kein gültiger Kontoname oder Kennwort."},
      {errors::kConnectionLost, "Fehler beim Zugriff auf Datenträger oder Netzwerk."},
      {errors::kStorePathNotFound,
       "Das ist kein gültiger Pfad. Stellen Sie sicher, dass der Pfad richtig eingegeben wurde und dass Sie "
       "mit dem Server, auf dem sich die Datei befindet, verbunden sind."},
      {errors::kStoreDamaged,
       "Datenbank kann nicht geöffnet werden. Möglicherweise erkennt Ihre Anwendung sie nicht als Datenbank, "
       "oder die Datei ist beschädigt."},
      {errors::kStoreNotOpened,
       "Das Datenbankmodul kann die Datei nicht öffnen. Sie ist bereits von einem anderen Benutzer exklusiv "
       "geöffnet, oder Sie benötigen eine Berechtigung, um die Daten zu lesen."},
      {errors::kNullInKey, "Index- oder Primärschlüssel darf keinen Nullwert enthalten."},
      {errors::kCancelled, "Die Operation wurde vom Benutzer abgebrochen."},
      {errors::kUnknownColumn, "Zu wenig Parameter erwartet."},
      {errors::kNoActionQuery, "Eine Auswahlabfrage kann nicht ausgeführt werden."},
      {errors::kNoUpdatableQuery, "Die Operation muss eine aktualisierbare Abfrage verwenden."},
      {errors::kQuerySyntax, "Syntaxfehler im Abfrageausdruck."},
      {errors::kExpressionSyntax, "Syntaxfehler im Ausdruck."},
      {errors::kUnknownTable,
       "Das Datenbankmodul findet die Eingangstabelle oder Abfrage nicht. Stellen Sie sicher, dass sie "
       "existiert und der Name richtig eingegeben wurde."},
      {errors::kAmbiguousName,
       "Das angegebene Feld kann sich auf mehr als eine der in der FROM-Klausel Ihrer SQL-Anweisung "
       "aufgeführten Tabellen beziehen."},
      {errors::kNoDeletableTable, "Aus den angegebenen Tabellen kann nicht gelöscht werden."},
      {errors::kNoReadPermission, "Datensätze können nicht gelesen werden; keine Leseberechtigung."},
      {errors::kNotGrouped, "Eine Spalte ist weder gruppiert noch Teil einer Aggregatfunktion."},
      {errors::kInvalidName,
       "Das ist kein gültiger Name. Stellen Sie sicher, dass er nicht leer ist und keine ungültigen Zeichen "
       "enthält."},
      {errors::kBadBrackets, "Ungültiges Setzen von Klammern um einen Namen."},
      {errors::kCallFailed, "ODBC-Aufruf fehlgeschlagen."},
      {errors::kNoBookmark, "Kein gültiges Lesezeichen."},
      {errors::kTextTooLong,
       "Das Feld ist zu klein für die Datenmenge, die Sie hinzufügen wollten. Versuchen Sie, weniger Daten "
       "einzufügen."},
      {errors::kFieldNotUpdatable, "Das Feld kann nicht aktualisiert werden."},
      {errors::kRecordDeleted, "Datensatz ist gelöscht."},
      {errors::kNotSavedLocked, "Speichern nicht möglich; momentan durch einen anderen Benutzer gesperrt."},
      {errors::kFieldExists, "Das Feld kann nicht mehr als einmal definiert werden."},
      {errors::kReferenceMissing,
       "Der Datensatz kann nicht hinzugefügt oder geändert werden, da ein Datensatz in der verknüpften "
       "Tabelle erforderlich ist."},
      {errors::kStoreExists, "Die Datenbank ist bereits vorhanden."},
      {errors::kInvalidOperation, "Ungültige Operation."},
      {errors::kNotSupported, "Diese Operation wird für diesen Objekttyp nicht unterstützt."},
      {errors::kLocked, "Aktualisieren nicht möglich; momentan von einem anderen Benutzer gesperrt."},
      {errors::kNoSuchElement, "Element in dieser Auflistung nicht gefunden."},
      {errors::kPrimaryKeyExists, "Der Primärschlüssel ist bereits vorhanden."},
      {errors::kIndexExists, "Der Index ist bereits vorhanden."},
      {errors::kUnionColumnCount,
       "Die Anzahl der Spalten in den Teilen der UNION-Abfrage stimmt nicht überein."},
      {errors::kRequiredField,
       "Das Feld darf keinen Nullwert enthalten, da seine Eigenschaft \"Eingabe erforderlich\" gesetzt ist."},
      {errors::kEmptyText, "Das Feld darf keine leere Zeichenfolge enthalten."},
      {errors::kValidationRule, "Der Wert verstößt gegen die Gültigkeitsregel des Feldes."},
      {errors::kUnknownFormat, "Nicht erkennbares Datenbankformat."},
      {errors::kValueCount, "Die Anzahl der Abfragewerte und der Zielfelder stimmt nicht überein."},
      {errors::kTooComplex, "Die Abfrage ist zu komplex."},
      {errors::kConversionFailed, "Fehler beim Konvertieren des Datentyps."},
      {errors::kCriterionTypes, "Datentypenkonflikt im Kriterienausdruck."},
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
