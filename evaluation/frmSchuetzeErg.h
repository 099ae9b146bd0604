// "Ergebnisse Schütze": all stored results of one shooter. Whoever has the right corrects them in place,
// deletes them, or moves and copies them to another discipline.
//
//   frmSchuetzeErg editor(workplace, global, papers, this);
//   editor.setStartnummer("107");
//   editor.setWettkampf(path);
//   if (editor.LoadSchuetzen() && editor.LoadErgebnisse()) editor.exec();
#pragma once

#include <QDialog>
#include <memory>

#include "app/ground/global_variablen.h"
#include "evaluation/result_table.h"
#include "evaluation/shooter_header.h"
#include "platform/report/report_control.h"
#include "platform/workplace.h"

namespace Ui {
class frmSchuetzeErg;
}

namespace qk {

class ResultsPage;

class frmSchuetzeErg : public QDialog {
  Q_OBJECT

 public:
  /// All of them outlive the window.
  frmSchuetzeErg(const Workplace& workplace, const GlobalVariablen& global, ReportControl::Papers papers,
                 QWidget* parent = nullptr);
  ~frmSchuetzeErg() override;

  void setStartnummer(const QString& sStartnummer) { sStartnummer_ = sStartnummer; }
  const QString& sStartnummer() const { return sStartnummer_; }
  /// Path of the competition file.
  void setWettkampf(const QString& sWettkampf) { sWettkampf_ = sWettkampf; }
  const QString& sWettkampf() const { return sWettkampf_; }

  /// Both report their failures; false when the operator aborted.
  bool LoadSchuetzen();
  bool LoadErgebnisse();

  /// Prints the grid as it stands: 1 on the printer, 0 on the screen.
  void Print_Teiler(qint16 nZiel);
  void Print_Serien(qint16 nZiel);

  /// Stays open while something typed can't be stored; stops a deletion instead of leaving it.
  void done(int result) override;

 Q_SIGNALS:
  /// F1.
  void helpWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void connectControls();
  ErrorReport report(const QString& text) const;
  dao::Database& database();
  ResultsPage& activePage() const;
  /// What is typed and can't be stored keeps its tab.
  void tabChanged(int tab);
  void say(const QString& text);
  void showMarks();

  void cmdEdit_Click();
  void cmdDelete_Click();
  void deleteRows(ResultsPage& page, const QList<QByteArray>& bookmarks);
  void setDeleting(bool deleting, qsizetype rows);
  void cmdChangeDiszi_Click();
  void change(ResultsPage& page, const DisciplineChange& change, const QString& discipline);
  void mnuEditSelAlle_Click();
  void mnuDateiPrintEdit_Click();
  void print(ResultsPage& page, qint16 nZiel);
  void printActive(qint16 nZiel);

  Workplace workplace_;
  const GlobalVariablen& global_;
  ReportControl reports_;
  std::unique_ptr<Ui::frmSchuetzeErg> ui_;
  std::unique_ptr<dao::Database> database_;
  std::unique_ptr<ResultsPage> teiler_, serien_;  // read from database_
  ShooterHeader header_;
  QString sStartnummer_, sWettkampf_;
  int tab_ = 0;
  bool deleting_ = false;
  bool stop_ = false;
};

}  // namespace qk
