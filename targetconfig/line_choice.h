// Which lines a dialog offers, and which picture was chosen for which of them.
#pragma once

#include <QString>
#include <map>
#include <vector>

namespace qk {

/// The numbers of the lines that the setting LinienAktiv marks as in use, from 1.
std::vector<int> aktiveLinien(const QString& LinienAktiv);

/// A choice of pictures is a text with an entry a line: number, tab, file name, semicolon.
QString bildEintrag(int nLinie, const QString& sBild);
/// The file names by line number. A semicolon within a name belongs to it.
std::map<int, QString> bilderJeLinie(const QString& sBildName);

}  // namespace qk
