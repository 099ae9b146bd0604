// A line with a shooter, disciplines and a competition of its own, worked as the operator works it.
#pragma once

#include <QString>
#include <memory>

#include "capture/line_capture.h"
#include "tests/capture/workbench.h"

namespace qk::test {

inline const QString LineCompetition = R"(
Zeilen Disziplin
  ID | Name           | CmdIndex | Ringe | Teiler | RingSerie | ZusatzTeiler
  1  | 10m Luftgewehr | 1        | ja    | nein   | 4         | 0
  2  | Glücksscheibe  | 2        | nein  | ja     | 0         | 0
  3  | Luftpistole    | 3        | ja    | nein   | 10        | 0
  4  | Kette          | 4        | ja    | nein   | 40        | 1
Zeilen Kombination_Name
  ID | Kombinationsname | CmdIndex
  1  | Pokal            | 1
Zeilen Kombination_Diszi
  ID | KombiID | disziID
  1  | 1       | 1
  2  | 1       | 2
)";

/// The box that refuses a transfer.
inline QString tooMany(int shots, int capacity) {
  return QString(
             "Es sind mehr Schuss (%1) angewählt, als momentan in Tarvex (%2) aufgenommen werden können!\r\n"
             "Bitte wählen Sie andere Tarvex Disziplinen oder weniger Schuss zum Übernehmen")
      .arg(shots)
      .arg(capacity);
}

/// A line with a shooter, ready to shoot.
struct Line {
  Workbench bench;
  std::unique_ptr<LineCapture> capture;
  bool enabled = false;
  QString count;

  Line() {
    bench.fill(LineCompetition);
    restart();
  }
  /// A new line on the same competition, as after a restart of the program.
  void restart() {
    capture = std::make_unique<LineCapture>(bench.workplace());
    QObject::connect(capture.get(), &LineCapture::transferStateChanged,
                     [this](bool isEnabled, const QString& text) {
                       enabled = isEnabled;
                       if (!text.isEmpty()) count = text;
                     });
    capture->setDatabase(&bench.store());
    capture->fillLists(*LadeListen(bench.store()));
    capture->setShooter(std::make_shared<Schuetze>(shooter()));
    capture->setPictureCaption([] { return PictureCaption{"107", "Müller, Änne", "SV Grünau"}; });
  }
  void receive(const Shots& shots) {
    for (const auto& s : shots) {
      s->bAngewaehlt = false;
      capture->TransferInGrid(s);
      capture->SpeichereHaeringSchuss(*s);
    }
  }
  /// The operator's ticks in the list of disciplines, from 0.
  void choose(const QList<int>& positions) {
    for (int i = 0; i < capture->lstDisziTarvex().count(); ++i)
      capture->lstDisziTarvex().setTicked(i, positions.contains(i));
    capture->m_lstDisziTarvex_Click();
  }
  void tick(int row, const QString& mark = "-1") {
    capture->flex().setText(row, 0, mark);
    capture->flex_click(row, 0);
  }
  /// The ticks of the grid, a character a row, and those of the shots.
  QString ticks() {
    QString grid, shots;
    for (int row = 1; row < capture->flex().rows(); ++row)
      grid += capture->flex().text(row, 0) == "-1" ? "x" : ".";
    for (const auto& s : capture->m_colHaeringSchuss().objects()) shots += s->bAngewaehlt ? "x" : ".";
    return grid == shots ? grid : grid + " but " + shots;
  }
  QStringList pending() {
    QStringList all;
    for (const auto& r : capture->pending().m_colTeilerErg.objects())
      all += r->DisziplinName + " " + numberText(r->ergebnis);
    for (const auto& r : capture->pending().m_colRingErg.objects())
      all += r->DisziplinName + " " + numberText(r->ergebnis);
    return all;
  }
  QStringList rows(const QString& table, const QString& column) {
    return bench.read("Select * from " + table + " order by ID", {column});
  }
};

}  // namespace qk::test
