// The start of the office with 24 lines on a competition of a million rows, from main() to the window's first
// picture, against that of an empty window with as many widgets of the same kinds.
#include <QComboBox>
#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSizeGrip>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>
#include <memory>
#include <numeric>
#include <stdexcept>

#include "app/frmLindorm.h"
#include "benchmarks/bench_line.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "tools/wettkampf/exchange.h"

namespace qk::bench {

namespace {

constexpr int kLines = 24;
constexpr QSize kScreen{1366, 740};

/// Shows a window until its first picture is there.
void showOnce(QWidget& window) {
  window.resize(kScreen);
  window.show();
  if (!QTest::qWaitForWindowExposed(&window)) throw std::runtime_error("the window doesn't show");
  QCoreApplication::processEvents();
}

BenchPlace& range() {
  static BenchPlace& place = []() -> BenchPlace& {
    BenchPlace& made = sharedPlace(kMillion);
    writeExchangeFolder(made.files(), made.exchangeFolder().chopped(1));
    made.workplace().settings.setValue("Tarvex", "Häring", "LinienAktiv", QString(kLines, '1'));
    // A copy that begins with the competition's opening is made beside it, in a thread of its own.
    made.workplace().settings.setValue("Tarvex", "Daten", "KopienAktiv", "0");
    return made;
  }();
  return place;
}

/// The office of a range, shown.
class Office {
 public:
  explicit Office(BenchPlace& place) : window_(place.workplace(), global_) {
    if (!window_.form_load(place.competition())) throw std::runtime_error("the competition doesn't open");
    showOnce(window_);
  }
  const QWidget& window() const { return window_; }

 private:
  GlobalVariablen global_;
  frmLindorm window_;
};

// --- the empty window ---

using Maker = QWidget* (*)(QWidget*);

template <class Widget>
QWidget* make(QWidget* parent) {
  return new Widget(parent);
}

QWidget* makeHeader(QWidget* parent) {
  return new QHeaderView(Qt::Horizontal, parent);
}

const QHash<QByteArray, Maker>& makers() {
  static const QHash<QByteArray, Maker> all{{"QWidget", make<QWidget>},
                                            {"QFrame", make<QFrame>},
                                            {"QLabel", make<QLabel>},
                                            {"QPushButton", make<QPushButton>},
                                            {"QToolButton", make<QToolButton>},
                                            {"QLineEdit", make<QLineEdit>},
                                            {"QComboBox", make<QComboBox>},
                                            {"QListView", make<QListView>},
                                            {"QListWidget", make<QListWidget>},
                                            {"QTreeWidget", make<QTreeWidget>},
                                            {"QTableView", make<QTableView>},
                                            {"QHeaderView", makeHeader},
                                            {"QScrollBar", make<QScrollBar>},
                                            {"QSplitter", make<QSplitter>},
                                            {"QTabWidget", make<QTabWidget>},
                                            {"QTabBar", make<QTabBar>},
                                            {"QStackedWidget", make<QStackedWidget>},
                                            {"QProgressBar", make<QProgressBar>},
                                            {"QToolBar", make<QToolBar>},
                                            {"QMenuBar", make<QMenuBar>},
                                            {"QMenu", make<QMenu>},
                                            {"QStatusBar", make<QStatusBar>},
                                            {"QSizeGrip", make<QSizeGrip>},
                                            {"QMainWindow", make<QMainWindow>}};
  return all;
}

/// The nearest kind of the toolkit's own that can be made.
QByteArray kindOf(const QWidget& widget) {
  const QMetaObject* meta = widget.metaObject();
  while (!makers().contains(meta->className())) meta = meta->superClass();
  return meta->className();
}

QList<QWidget*> partsOf(const QWidget& widget) {
  return widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
}

struct Shape {
  QByteArray kind;
  QRect geometry;
  bool hidden = false;
  QList<Shape> parts;
};

Shape shapeOf(const QWidget& widget) {
  Shape shape{kindOf(widget), widget.geometry(), !widget.isWindow() && widget.isHidden(), {}};
  for (const QWidget* part : partsOf(widget)) shape.parts << shapeOf(*part);
  return shape;
}

QDataStream& operator<<(QDataStream& out, const Shape& shape) {
  return out << shape.kind << shape.geometry << shape.hidden << shape.parts;
}

QDataStream& operator>>(QDataStream& in, Shape& shape) {
  return in >> shape.kind >> shape.geometry >> shape.hidden >> shape.parts;
}

qsizetype widgetsIn(const Shape& shape) {
  return std::accumulate(shape.parts.begin(), shape.parts.end(), shape.parts.size(),
                         [](qsizetype sum, const Shape& part) { return sum + widgetsIn(part); });
}

/// Gives a widget the shape's parts, less those that it came with.
void complete(QWidget& widget, const Shape& shape) {
  widget.setGeometry(shape.geometry);
  if (shape.hidden) widget.hide();
  QList<QWidget*> given = partsOf(widget);
  for (const Shape& part : shape.parts) {
    const auto found = std::find_if(given.begin(), given.end(),
                                    [&](const QWidget* child) { return kindOf(*child) == part.kind; });
    QWidget* child = nullptr;
    if (found != given.end()) {
      child = *found;
      given.erase(found);
    } else {
      child = makers()[part.kind](&widget);
    }
    complete(*child, part);
  }
}

// --- the sides ---

void house(Rounds& rounds) {
  BenchPlace& place = range();
  std::unique_ptr<Office> office;
  while (rounds.next()) office = std::make_unique<Office>(place);
}

/// Of a process that doesn't know the office's code; how its window looks, another has written down.
void bare(Rounds& rounds) {
  const QString name = "fenster";
  const OwnCopy made("startfenster", [&](const QString& folder) {
    const Office office(range());
    QFile file(QDir(folder).filePath(name));
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error(file.errorString().toStdString());
    QDataStream out(&file);
    out << shapeOf(office.window());
  });
  QFile file(QDir(made.path()).filePath(name));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(file.errorString().toStdString());
  QDataStream in(&file);
  Shape shape;
  in >> shape;
  std::unique_ptr<QMainWindow> window;
  while (rounds.next()) {
    window = std::make_unique<QMainWindow>();
    complete(*window, shape);
    showOnce(*window);
  }
  if (window && window->findChildren<QWidget*>().size() < widgetsIn(shape))
    rounds.fail("the empty window has fewer widgets");
}

const Registered start{Pair{.name = "Start mit 24 Linien, 1.000.000 Zeilen",
                            .bound = 3.4,
                            .unit = "gegen ein leeres Fenster mit so vielen Steuerelementen",
                            .house = house,
                            .bare = bare,
                            .counted = 1,
                            .fromStart = true}};

}  // namespace

}  // namespace qk::bench
