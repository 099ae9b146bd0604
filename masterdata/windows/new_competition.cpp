#include "masterdata/windows/new_competition.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPushButton>

#include "masterdata/making/starter_set.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "ui_new_competition.h"

namespace qk {

namespace {

const QString kTitle = "Neuer Wettkampf";
constexpr int kLinesAbout = 3;  // that a starter set may say of itself
const QString kFilter = "Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*";

/// A file's name of what the competition is called: nothing that a file system or another program stumbles
/// over.
QString fileNameOf(const QString& name) {
  QString plain;
  for (const QChar c : name.simplified())
    plain += c.isLetterOrNumber() || c == ' ' || c == '-' || c == '_' ? c : QChar('-');
  return plain.trimmed().left(60);
}

}  // namespace

NewCompetition::NewCompetition(const Workplace& workplace, const QString& folder, const QString& earlier,
                               QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::NewCompetition>()),
      folder_(withTrailingSeparator(folder)) {
  ui_->setupUi(this);
  ui_->lblBeginn->setMinimumHeight(kLinesAbout * fontMetrics().lineSpacing());
  fillStarters();
  ui_->txtFrueher->setText(earlier);
  ui_->txtStichtag->setText(workplace_.clock.now().date().toString("dd.MM.yyyy"));
  for (auto* button : {ui_->cmdFrueher, ui_->cmdPfad, ui_->cmdStopp, ui_->cmdCancel})
    button->setAutoDefault(false);
  for (auto* option : {ui_->optStarter, ui_->optFrueher, ui_->optLeer, ui_->optDatei, ui_->optServer})
    connect(option, &QRadioButton::toggled, this, &NewCompetition::showState);
  connect(ui_->chkSchuetzen, &QCheckBox::toggled, this, &NewCompetition::showState);
  connect(ui_->cboStarter, &QComboBox::currentIndexChanged, this, &NewCompetition::showState);
  connect(ui_->txtBezeichnung, &QLineEdit::textChanged, this, &NewCompetition::proposePath);
  connect(ui_->cmdFrueher, &QPushButton::clicked, this, &NewCompetition::chooseEarlier);
  connect(ui_->cmdPfad, &QPushButton::clicked, this, &NewCompetition::choosePath);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &NewCompetition::make);
  connect(ui_->cmdStopp, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  proposePath();
  showState();
}

NewCompetition::~NewCompetition() = default;

void NewCompetition::fillStarters() {
  for (const StarterSet& set : starterSets(workplace_.files, starterFolder())) {
    ui_->cboStarter->addItem(set.title, set.path);
    ui_->cboStarter->setItemData(ui_->cboStarter->count() - 1, set.about, Qt::UserRole + 1);
  }
  if (ui_->cboStarter->count() > 0) return;
  ui_->optLeer->setChecked(true);
  ui_->optStarter->setEnabled(false);
}

/// As long as nobody has typed another one the path follows the name.
void NewCompetition::proposePath() {
  if (ui_->txtPfad->text() != proposed_) return;
  const QString name = fileNameOf(ui_->txtBezeichnung->text());
  proposed_ = name.isEmpty() ? QString() : folder_ + name + ".qkk";
  ui_->txtPfad->setText(proposed_);
}

void NewCompetition::chooseEarlier() {
  const QString path = workplace_.dialogs.openFile(kFilter, ui_->txtFrueher->text());
  if (!path.isEmpty()) ui_->txtFrueher->setText(path);
}

void NewCompetition::choosePath() {
  const QString start = ui_->txtPfad->text().isEmpty() ? folder_ : ui_->txtPfad->text();
  QString path = ui_->optServer->isChecked() && workplace_.files.exists(ui_->txtPfad->text())
                     ? workplace_.dialogs.openFile(kFilter, start)
                     : workplace_.dialogs.saveFile(kFilter, start);
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += ".qkk";
  ui_->txtPfad->setText(path);
}

CompetitionPlan NewCompetition::plan() const {
  CompetitionPlan plan;
  plan.name = ui_->txtBezeichnung->text();
  plan.secondLine = ui_->txtBezeichnung2->text();
  plan.place = ui_->txtOrt->text();
  plan.refDatum = ui_->txtStichtag->text();
  plan.yearBegin = ui_->txtKlassenwechsel->text();
  plan.source = ui_->optStarter->isChecked()   ? CompetitionPlan::Source::Starter
                : ui_->optFrueher->isChecked() ? CompetitionPlan::Source::Earlier
                                               : CompetitionPlan::Source::Empty;
  plan.starter = ui_->cboStarter->currentData().toString();
  plan.earlier = ui_->txtFrueher->text().trimmed();
  plan.withClubs = ui_->chkVereine->isChecked();
  plan.withTeams = ui_->chkMannschaften->isChecked();
  plan.withShooters = ui_->chkSchuetzen->isChecked();
  plan.path = ui_->txtPfad->text().trimmed();
  plan.onServer = ui_->optServer->isChecked();
  plan.hosts = ui_->txtServer->text().trimmed();
  plan.port = ui_->spnPort->value();
  plan.database = ui_->txtDatenbank->text().trimmed();
  plan.user = ui_->txtBenutzer->text().trimmed();
  return plan;
}

void NewCompetition::focusOn(const QString& field) {
  static const QHash<QString, QString> controls = {{"name", "txtBezeichnung"},
                                                   {"secondLine", "txtBezeichnung2"},
                                                   {"place", "txtOrt"},
                                                   {"refDatum", "txtStichtag"},
                                                   {"yearBegin", "txtKlassenwechsel"},
                                                   {"starter", "cboStarter"},
                                                   {"earlier", "txtFrueher"},
                                                   {"path", "txtPfad"},
                                                   {"host", "txtServer"},
                                                   {"database", "txtDatenbank"},
                                                   {"user", "txtBenutzer"}};
  if (auto* control = findChild<QWidget*>(controls.value(field))) control->setFocus();
}

/// Lets the window live, so that it can be stopped.
bool NewCompetition::goesOn(const MakingStep& step) {
  constexpr int kPause = 50;  // milliseconds
  if (shown_.isValid() && shown_.elapsed() < kPause) return !stop_;
  ui_->barLauf->setMaximum(qMax(1, step.steps));
  ui_->barLauf->setValue(step.number);
  ui_->lblLauf->setText(step.rows > 0 ? QString("%1 (%2)").arg(step.text).arg(step.rows) : step.text);
  QCoreApplication::processEvents();
  shown_.start();
  return !stop_;
}

void NewCompetition::make() {
  const CompetitionPlan wanted = plan();
  if (const PlanTrouble trouble = troubleWith(wanted, workplace_.files); !trouble.text.isEmpty()) {
    workplace_.dialogs.note(trouble.text, BoxIcon::Exclamation, kTitle);
    return focusOn(trouble.field);
  }
  running_ = true;
  stop_ = false;
  showState();
  QString failure;
  try {
    const MakingResult made =
        makePlanned(wanted, workplace_.files, [this](const MakingStep& step) { return goesOn(step); });
    path_ = wanted.path;
    if (made.newClasses > 0 || made.withoutClass > 0)
      workplace_.dialogs.note(
          QString("%1 Schützen sind übernommen. Nach dem neuen Stichtag stehen %2 in einer "
                  "anderen Klasse, %3 finden keine.")
              .arg(made.shooters)
              .arg(made.newClasses)
              .arg(made.withoutClass),
          BoxIcon::Information, kTitle);
  } catch (const Error& error) {
    if (error.number() != errors::kCancelled) failure = error.description();
  }
  running_ = false;
  showState();
  if (!failure.isEmpty())
    workplace_.dialogs.note("Der Wettkampf wurde nicht angelegt.\n\n" + failure, BoxIcon::Exclamation,
                            kTitle);
  if (!path_.isEmpty()) accept();
}

void NewCompetition::reject() {
  if (running_)
    stop_ = true;
  else
    QDialog::reject();
}

void NewCompetition::showState() {
  const bool earlier = ui_->optFrueher->isChecked(), server = ui_->optServer->isChecked();
  for (QWidget* part : {ui_->grpTitel, ui_->grpBeginn, ui_->grpOrt}) part->setEnabled(!running_);
  ui_->cmdOK->setEnabled(!running_);
  ui_->cmdCancel->setEnabled(!running_);
  ui_->barLauf->setVisible(running_);
  ui_->cmdStopp->setVisible(running_);
  ui_->lblLauf->setVisible(running_);
  ui_->cboStarter->setEnabled(ui_->optStarter->isChecked());
  for (QWidget* part : {static_cast<QWidget*>(ui_->txtFrueher), static_cast<QWidget*>(ui_->cmdFrueher),
                        static_cast<QWidget*>(ui_->chkVereine), static_cast<QWidget*>(ui_->chkMannschaften),
                        static_cast<QWidget*>(ui_->chkSchuetzen)})
    part->setEnabled(earlier);
  for (QWidget* part : {static_cast<QWidget*>(ui_->txtServer), static_cast<QWidget*>(ui_->spnPort),
                        static_cast<QWidget*>(ui_->txtDatenbank), static_cast<QWidget*>(ui_->txtBenutzer)})
    part->setEnabled(server);
  ui_->lblBeginn->setText(
      earlier ? "Klassen, Disziplinen, Waffen, Kombinationen, Einlagen und Auswerteprofile kommen mit; "
                "Ergebnisse und Zahlungen nie."
      : ui_->optLeer->isChecked() ? "Ohne Klassen und Disziplinen; alles ist selbst einzugeben."
                                  : ui_->cboStarter->currentData(Qt::UserRole + 1).toString());
}

}  // namespace qk
