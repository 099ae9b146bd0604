#include "masterdata/windows/shooter_form.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QSignalBlocker>
#include <QTabBar>

#include "masterdata/pages/page.h"
#include "masterdata/people/birth_date.h"
#include "platform/dialog/dialogs.h"
#include "platform/look/alert.h"
#include "ui_shooter_form.h"

namespace qk {

namespace {

/// Finds the text anywhere in an entry; nothing is put into the field that wasn't chosen.
void suggest(QLineEdit& field, const QStringList& entries) {
  auto* completer = new QCompleter(entries, &field);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setFilterMode(Qt::MatchContains);
  completer->popup()->setObjectName(field.objectName() + "_liste");
  delete field.completer();
  field.setCompleter(completer);
}

}  // namespace

ShooterForm::ShooterForm(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::ShooterForm>()) {
  ui_->setupUi(this);
  ui_->tabsSchuetze->tabBar()->setFocusPolicy(Qt::ClickFocus);  // Ctrl+Tab changes it from every field
  look::makeAlert(*ui_->lblHinweis);
  ui_->lblHinweis->hide();
  ui_->cboGeschlecht->addItem("ohne Angabe", "");
  ui_->cboGeschlecht->addItem("männlich", "M");
  ui_->cboGeschlecht->addItem("weiblich", "W");
  for (QLineEdit* field : findChildren<QLineEdit*>()) {
    connect(field, &QLineEdit::textChanged, this, &ShooterForm::edited);
    if (field != ui_->txtGeburtsdatum) continue;
    connect(field, &QLineEdit::textChanged, this, &ShooterForm::showClass);
    connect(field, &QLineEdit::editingFinished, this, &ShooterForm::normaliseDate);
  }
  for (QLineEdit* field : {ui_->txtNachname, ui_->txtVorname, ui_->txtGeburtsdatum})
    connect(field, &QLineEdit::editingFinished, this, &ShooterForm::showNamesakes);
  connect(ui_->cboGeschlecht, &QComboBox::currentIndexChanged, this, &ShooterForm::showClass);
  connect(ui_->cboGeschlecht, &QComboBox::currentIndexChanged, this, &ShooterForm::edited);
  connect(ui_->cboKlasse, &QComboBox::currentIndexChanged, this, &ShooterForm::edited);
  connect(ui_->chkKlasseManuell, &QCheckBox::toggled, this, &ShooterForm::showClass);
  connect(ui_->chkKlasseManuell, &QCheckBox::toggled, this, &ShooterForm::edited);
  // What a column does to results: there is no room for a line below, as the other pages have it.
  for (const PageColumn& column : masterDataPage("Schuetzen").columns)
    if (QWidget* control = controlOf(column.column)) control->setToolTip(column.effect);
  setEnabled(false);
}

ShooterForm::~ShooterForm() {
  // The field with the keyboard says that it is left when it goes.
  for (QWidget* control : findChildren<QWidget*>()) control->disconnect(this);
}

QLineEdit* ShooterForm::further(const QString& column) const {
  return findChild<QLineEdit*>("txt" + column);
}

void ShooterForm::setCounter(Counter& counter, Dialogs& dialogs) {
  counter_ = &counter;
  dialogs_ = &dialogs;
  const auto bound = [&](QLineEdit& field, const QString& column) {
    const int length = counter.lengthOf(column);
    field.setMaxLength(length > 0 ? length : 32767);
    field.setEnabled(counter.hasColumn(column));
  };
  bound(*ui_->txtStartnummer, "Startnummer");
  bound(*ui_->txtAusweisNr, "AusweisNr");
  for (const QString& column : furtherColumns()) bound(*further(column), column);
  fillLists();
  setEnabled(false);
}

void ShooterForm::fillLists() {
  const QVariant chosen = ui_->cboKlasse->currentData();
  const QSignalBlocker quiet(ui_->cboKlasse);
  ui_->cboKlasse->clear();
  ui_->cboKlasse->addItem("keine", 0);
  for (const auto& entry : counter_->classes().all())
    ui_->cboKlasse->addItem(entry.key.isEmpty() ? entry.name : entry.name + " (" + entry.key + ")",
                            entry.limits.id);
  chooseClass(chosen.toInt());
  suggest(*ui_->txtVerein, counter_->clubs().allShown());
  suggest(*ui_->txtMannschaft, counter_->teams().allShown());
}

void ShooterForm::showShooter(qint64 id) {
  ShooterEntry entry;
  entry.id = id;
  entry.before = counter_->row(id);
  entry.data = shooterData(entry.before);
  entry_ = entry;
  showEntry();
}

void ShooterForm::startNext() {
  ShooterEntry entry;
  entry.before = counter_->row(0);
  entry.data = shooterData(entry.before);
  entry.data.startnummer = counter_->nextStartNumber();
  entry.data.gebDat = kUnknownBirthDate.toString();
  entry.proposed = true;
  entry_ = entry;
  showEntry();
  begin();
}

void ShooterForm::begin() {
  ui_->tabsSchuetze->setCurrentWidget(ui_->tabPerson);
  ui_->txtNachname->setFocus();
}

void ShooterForm::reset() {
  if (entry_.id != 0)
    showShooter(entry_.id);
  else
    startNext();
}

void ShooterForm::showEntry() {
  entry_.club = counter_->clubs().shown(entry_.data.vereinsID);
  entry_.team = counter_->teams().shown(entry_.data.mannID);
  entry_.shownClub = entry_.club;
  entry_.shownTeam = entry_.team;
  {
    const QSignalBlocker quiet(this);
    const ShooterData& shooter = entry_.data;
    ui_->txtStartnummer->setText(shooter.startnummer);
    // Results and payments bear it: changing it is an act of its own.
    ui_->txtStartnummer->setReadOnly(entry_.id != 0);
    ui_->txtNachname->setText(shooter.person.last);
    ui_->txtVorname->setText(shooter.person.first);
    ui_->txtGeburtsdatum->setText(shooter.gebDat == kUnknownBirthDate ? QString() : shooter.gebDat);
    ui_->cboGeschlecht->setCurrentIndex(qMax(0, ui_->cboGeschlecht->findData(shooter.geschlecht)));
    ui_->txtVerein->setText(entry_.club);
    ui_->txtMannschaft->setText(entry_.team);
    ui_->txtAusweisNr->setText(shooter.ausweisNr);
    ui_->chkKlasseManuell->setChecked(shooter.klasseManuell);
    chooseClass(shooter.klassenID);
    for (const QString& column : furtherColumns()) further(column)->setText(shooter.further.value(column));
    for (QLineEdit* field : findChildren<QLineEdit*>()) field->setCursorPosition(0);
    setEnabled(true);
  }
  showClass();
  showNamesakes();
  Q_EMIT changed();
}

/// What stands in the fields; what nobody touched says what it said.
ShooterEntry ShooterForm::typed() const {
  ShooterEntry entry = entry_;
  ShooterData& shooter = entry.data;
  shooter.startnummer = ui_->txtStartnummer->text().trimmed();
  entry.proposed = entry_.proposed && shooter.startnummer == entry_.data.startnummer;
  shooter.person = {ui_->txtNachname->text().simplified(), ui_->txtVorname->text().simplified()};
  const QString shownDate = entry_.data.gebDat == kUnknownBirthDate ? QString() : entry_.data.gebDat;
  if (ui_->txtGeburtsdatum->text() != shownDate) {
    const BirthDate date = readBirthDate(ui_->txtGeburtsdatum->text(), counter_->classes().refDatum());
    shooter.gebDat = date.ok() ? date.stored : ui_->txtGeburtsdatum->text();
  }
  const int sex = ui_->cboGeschlecht->findData(entry_.data.geschlecht);
  if (ui_->cboGeschlecht->currentIndex() != qMax(0, sex))
    shooter.geschlecht = ui_->cboGeschlecht->currentData().toString();
  shooter.klasseManuell = ui_->chkKlasseManuell->isChecked();
  shooter.klassenID = ui_->cboKlasse->currentData().toInt();
  shooter.ausweisNr = ui_->txtAusweisNr->text().trimmed();
  for (auto it = shooter.further.begin(); it != shooter.further.end(); ++it) *it = further(it.key())->text();
  entry.club = ui_->txtVerein->text();
  entry.team = ui_->txtMannschaft->text();
  return entry;
}

bool ShooterForm::isEdited() const {
  if (!counter_ || !isEnabled()) return false;
  const ShooterEntry now = typed();
  if (now.club != entry_.club || now.team != entry_.team) return true;
  if (entry_.id != 0) return !changedValues(now.data, entry_.before).isEmpty();
  const dao::RowValues changed = changedValues(now.data, entry_.before);
  const dao::RowValues offered = changedValues(entry_.data, entry_.before);
  for (auto it = changed.begin(); it != changed.end(); ++it)
    if (it.key() != "KlassenID" && offered.value(it.key()) != it.value()) return true;
  return false;
}

QString ShooterForm::who() const {
  return ui_->txtStartnummer->text() + "  " +
         storedName({ui_->txtNachname->text(), ui_->txtVorname->text()}).name;
}

void ShooterForm::edited() {
  if (!signalsBlocked()) Q_EMIT changed();
}

void ShooterForm::normaliseDate() {
  if (!counter_ || ui_->txtGeburtsdatum->text() == entry_.data.gebDat) return;
  const BirthDate date = readBirthDate(ui_->txtGeburtsdatum->text(), counter_->classes().refDatum());
  if (date.ok()) ui_->txtGeburtsdatum->setText(date.stored == kUnknownBirthDate ? QString() : date.stored);
  showClass();
}

/// As long as it isn't set by hand the class follows date and sex; one that was stored stays until one of
/// them changes.
void ShooterForm::showClass() {
  if (!counter_ || signalsBlocked()) return;
  const bool byHand = ui_->chkKlasseManuell->isChecked();
  ui_->cboKlasse->setEnabled(byHand);
  classHint_.clear();
  const ShooterData now = typed().data;
  const bool touched = now.gebDat != entry_.data.gebDat || now.geschlecht != entry_.data.geschlecht ||
                       byHand != entry_.data.klasseManuell || entry_.id == 0;
  const DeterminedClass determined = counter_->classes().determine(now.gebDat, now.geschlecht);
  const BirthDate date = readBirthDate(now.gebDat, counter_->classes().refDatum());
  if (!byHand) {
    const qint32 id = touched ? determined.id : entry_.data.klassenID;
    {
      const QSignalBlocker quiet(ui_->cboKlasse);
      chooseClass(id);
    }
    if (!date.ok())
      classHint_ = date.trouble;
    else if (determined.id == 0 && now.gebDat != kUnknownBirthDate && !now.gebDat.isEmpty())
      classHint_ = determined.why;
    else if (determined.id != 0 && determined.id != id)
      classHint_ =
          QString("Nach Geburtsdatum und Geschlecht: %1.").arg(counter_->classes().nameOf(determined.id));
  }
  showHint();
}

/// Somebody of that name and birth date who is there already, beside the one that is being typed.
void ShooterForm::showNamesakes() {
  if (!counter_) return;
  namesakes_.clear();
  const ShooterData now = typed().data;
  try {
    for (const PresentShooter& other :
         counter_->namesakes(storedName(now.person).name, now.gebDat, entry_.id))
      namesakes_ += (namesakes_.isEmpty() ? "Gibt es schon: " : "\nund: ") + lineOf(other);
  } catch (const Error&) {
    // Storing asks again, and reports then.
    namesakes_ = "Ob es den Namen schon gibt, ließ sich nicht nachsehen.";
  }
  showHint();
}

void ShooterForm::showHint() {
  QStringList lines;
  for (const QString& line : {namesakes_, classHint_})
    if (!line.isEmpty()) lines << line;
  ui_->lblHinweis->setText(lines.join('\n'));
  ui_->lblHinweis->setVisible(!lines.isEmpty());
}

/// One that is gone stays what it is until another is chosen.
void ShooterForm::chooseClass(qint32 id) {
  if (ui_->cboKlasse->findData(id) < 0) ui_->cboKlasse->addItem(QString("unbekannt (Nr. %1)").arg(id), id);
  ui_->cboKlasse->setCurrentIndex(ui_->cboKlasse->findData(id));
}

QWidget* ShooterForm::controlOf(const QString& column) const {
  static const QHash<QString, QString> names = {{"Name", "txtNachname"},
                                                {"Gebdat", "txtGeburtsdatum"},
                                                {"Geschlecht", "cboGeschlecht"},
                                                {"VereinsID", "txtVerein"},
                                                {"lMannID", "txtMannschaft"},
                                                {"KlassenID", "cboKlasse"},
                                                {"bGebKlasseManuell", "chkKlasseManuell"}};
  return findChild<QWidget*>(names.value(column, "txt" + column));
}

void ShooterForm::focusOn(const QString& column) {
  QWidget* field = controlOf(column);
  if (!field) return;
  ui_->tabsSchuetze->setCurrentWidget(ui_->tabWeitere->isAncestorOf(field) ? ui_->tabWeitere
                                                                           : ui_->tabPerson);
  field->setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(field)) line->selectAll();
}

bool ShooterForm::store() {
  if (!counter_ || !isEnabled()) return true;
  normaliseDate();
  const dao::RowValues before = entry_.before;
  const qint64 known = entry_.id;
  const ShooterEntry wanted = typed();
  const StoringResult result = ShooterStoring(*counter_, *dialogs_).store(wanted);
  switch (result.outcome) {
    case StoringResult::Outcome::Refused:
      fillLists();
      showClass();
      focusOn(result.column);
      return false;
    case StoringResult::Outcome::Unchanged:
      return true;
    case StoringResult::Outcome::Reload:
      fillLists();
      Q_EMIT reloadWanted();
      return false;
    case StoringResult::Outcome::Stored:
      break;
  }
  reported(fehlerReport(*dialogs_, "Der Schütze ist gespeichert, lässt sich aber nicht lesen."), [&](Steps&) {
    counter_->refresh();
    fillLists();
    showShooter(result.id);
  });
  QString done = "Gespeichert: " + who();
  if (entry_.data.klassenID != wanted.data.klassenID)
    done += ", jetzt in der Klasse: " + ui_->cboKlasse->currentText();
  Q_EMIT stored(result.id, done);
  if (known != 0) Q_EMIT regrouped(result.id, before);
  return true;
}

}  // namespace qk
