#include "app/watch/watch_texts.h"

#include <QLocale>

namespace qk {

namespace {

const QLocale& german() {
  static const QLocale locale(QLocale::German, QLocale::Germany);
  return locale;
}

QString named(ThreatLevel level) {
  switch (level) {
    case ThreatLevel::Grave:
      return "Dringend";
    case ThreatLevel::Warning:
      return "Achtung";
    case ThreatLevel::Calm:
      break;
  }
  return "In Ordnung";
}

QString paragraph(const QString& title, const QString& text) {
  if (text.isEmpty()) return {};
  return "<p>" + (title.isEmpty() ? QString() : "<b>" + title + "</b> ") + text.toHtmlEscaped() + "</p>";
}

QString standingHtml(const ThreatBook::Entry& entry, const QDate& today) {
  const Threat& threat = entry.threat;
  const bool calm = threat.level == ThreatLevel::Calm;
  QString html = "<h2>" + threat.line.toHtmlEscaped() + "</h2>";
  html +=
      "<p>" + named(threat.level) + (calm ? QString() : ", seit " + timeText(entry.since, today)) + "</p>";
  html += paragraph({}, threat.what);
  if (!threat.things.isEmpty()) html += paragraph("Dort:", threat.things.join(", ") + '.');
  html += paragraph("Wenn nichts geschieht:", threat.consequence);
  html += paragraph("Was zu tun ist:", threat.remedy);
  if (!threat.page.isEmpty()) html += "<p><a href=\"" + threat.page + "\">Mehr im Handbuch</a></p>";
  return html;
}

QString pastHtml(const ThreatBook& book, const QDate& today) {
  if (book.past().empty()) return {};
  QString rows;
  for (const ThreatBook::Entry& entry : book.past())
    rows += QString("<tr><td>%1 bis %2</td><td>%3</td></tr>")
                .arg(timeText(entry.since, today), timeText(entry.until, today),
                     entry.threat.line.toHtmlEscaped());
  return "<h2>Vorbei</h2><table>" + rows + "</table>";
}

}  // namespace

QString sizeText(qint64 bytes) {
  return german().formattedDataSize(bytes, bytes < 1000 * 1000 * 1000 ? 0 : 1, QLocale::DataSizeSIFormat);
}

QString secondsText(std::chrono::milliseconds time) {
  return german().toString(static_cast<double>(time.count()) / 1000, 'f', 1) + " s";
}

QString timeText(const QDateTime& time, const QDate& today) {
  return time.toString(!today.isValid() || time.date() == today ? "HH:mm" : "dd.MM. HH:mm");
}

QString detailsHtml(const ThreatBook& book, const QDate& today, const QColor& ground, const QColor& link) {
  QString html =
      QString("<style>h2 { background-color: %1; } td { padding: 2px 12px 2px 0; } a { color: %2; }</style>")
          .arg(ground.name(), link.name());
  if (book.count() == 0) html += "<p>Zur Zeit ist nichts zu melden.</p>";
  for (const ThreatBook::Entry& entry : book.standing()) html += standingHtml(entry, today);
  return html + pastHtml(book, today);
}

}  // namespace qk
