// The list of lines that dialogs send to: "Linie 3" with a number as its data, several can be selected.
#pragma once

class QLabel;
class QListWidget;
class QPushButton;

namespace qk {

void addLine(QListWidget& list, int nLinie, int data, bool selected);
int lineData(const QListWidget& list, int row);

/// The two buttons select all or none; the label says how many are.
void connectLineList(QListWidget& list, QPushButton& all, QPushButton& none, QLabel& count);

}  // namespace qk
