#include "targetconfig/line_choice.h"

#include <QStringList>

namespace qk {

std::vector<int> aktiveLinien(const QString& LinienAktiv) {
  std::vector<int> lines;
  for (int position = 1; position <= LinienAktiv.size(); ++position)
    if (LinienAktiv.at(position - 1) == '1') lines.push_back(position);
  return lines;
}

QString bildEintrag(int nLinie, const QString& sBild) {
  return QString::number(nLinie) + '\t' + sBild + ';';
}

std::map<int, QString> bilderJeLinie(const QString& sBildName) {
  std::map<int, QString> pictures;
  QStringList parts = sBildName.split(';');
  parts.removeLast();  // nothing stands behind the last semicolon
  int line = 0;
  for (const QString& part : parts) {
    const qsizetype tab = part.indexOf('\t');
    if (tab >= 0) {
      line = part.left(tab).toInt();
      pictures[line] = part.mid(tab + 1);
    } else {
      pictures[line] += ';' + part;
    }
  }
  return pictures;
}

}  // namespace qk
