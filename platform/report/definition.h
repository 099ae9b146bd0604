// A report as its file describes it (grammar.md), before any data is known. All measures are millimetres.
// `line` is the line of the file that a part of it stands in, for messages.
#pragma once

#include <QColor>
#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <optional>
#include <variant>
#include <vector>

#include "platform/print/bars.h"

namespace qk::report {

enum class Align { Left, Centre, Right };

/// How a value becomes text; where none is told, the kind of the value decides.
struct Format {
  enum class Kind { Currency, Date, DateTime, Time, Number, YesNo };
  Kind kind = Kind::Number;
  int decimals = 0;
  bool grouped = false;

  bool operator==(const Format&) const = default;
};

/// A piece of a text: characters, or a value in braces.
struct Piece {
  enum class Kind { Literal, Value, Sum, Count };
  Kind kind = Kind::Literal;
  QString text;  ///< the characters, or the name of what is meant
  std::optional<Format> format = {};
  // Where the value comes from, once the names are known (binding.h).
  enum class From { Nowhere, Row, Fixed, Page, PageCount, RowNumber };
  From from = From::Nowhere;
  int slot = -1;
};

struct Template {
  std::vector<Piece> pieces;
  int line = 0;

  bool isEmpty() const { return pieces.empty(); }
};

/// Stands only where a value is there: not Null, not 0, no empty text, not "no".
struct Condition {
  Template value;
  bool negated = false;
};

struct TextStyle {
  QString family;
  double points = 0;  ///< 0: that of the report
  bool bold = false;
  bool italic = false;
  QColor colour = Qt::black;
  int font = -1;  ///< its number, once the report is laid out
};

/// A place on a band. A width below 0 reaches to the right edge.
struct Place {
  double left = 0, top = 0, width = -1, height = 0;
};

struct TextElement {
  Template text;
  TextStyle style;
  Align align = Align::Left;
  bool grows = false;  ///< wraps, and makes its band higher; else it ends in dots
};

struct LineElement {
  double thickness = 0.2;
  QColor colour = Qt::black;
};

struct BoxElement {
  double thickness = 0.2;
  QColor colour = Qt::black;
  QColor ground;  ///< invalid: none
};

struct PictureElement {
  Template source;  ///< a file's path from the report's folder, or one value that holds the picture's bytes
};

struct BarElement {
  Symbology kind = Symbology::Code128;
  Template text;
  bool withText = true;
};

/// The values of numbered columns (E1, E2 …) in rows of so many; empty ones are left out.
struct ValuesElement {
  std::vector<Template> values;
  int perRow = 10;
  bool evenDecimals = false;  ///< each with as many decimals as the one that has the most
  TextStyle style;
};

struct Element {
  Place place;
  std::variant<TextElement, LineElement, BoxElement, PictureElement, BarElement, ValuesElement> shape = {};
  std::optional<Condition> when = {};
  int line = 0;
};

struct Band {
  double height = 0;  ///< at least
  std::optional<Condition> when = {};
  std::vector<Element> elements;

  bool isEmpty() const { return elements.empty() && height == 0; }
};

struct Column {
  QString heading;
  Template value;
  double width = 0;  ///< with `share` a share of what the others leave
  bool share = false;
  std::optional<Align> align;  ///< else numbers and dates stand at the right
  bool bold = false;
  bool summed = false;
  bool oneLine = false;  ///< ends in dots instead of wrapping
  std::optional<Symbology> bars;
  double barHeight = 8;
  int line = 0;
};

struct Group {
  Template value;  ///< a new group begins where it changes
  Template title;  ///< a line above its rows, repeated on further pages
  Template sum;    ///< what stands before the sums of the columns
  Band head, foot;
  bool newPage = false;
  int line = 0;
};

/// One query and what is made of its rows. The parts of a report follow one another.
struct Part {
  QString name;
  QString query;  ///< with parameters in braces; empty: one row without columns
  int line = 0;   ///< where the query begins
  bool newPage = false;
  Template heading;       ///< above the part, with the style of a heading
  Template empty;         ///< what stands there where there are no rows
  bool leaveOut = false;  ///< without rows the whole part is left out
  Band start, row, end;
  std::vector<Group> groups;
  std::vector<Column> columns;
  Template total;      ///< what stands before the sums of all rows
  int sideBySide = 1;  ///< rows beside each other
  double gap = 4;      ///< between them
};

struct ValueQuery {
  QString query;
  int line = 0;
};

struct Parameter {
  QString name;
  int line = 0;
};

struct Definition {
  QString file;  ///< without its folder
  QString folder;
  QString title;
  QSizeF page{210, 297};
  QMarginsF margins{15, 15, 15, 15};
  TextStyle font{"Liberation Sans", 9};
  std::vector<Parameter> parameters;
  std::vector<ValueQuery> values;  ///< the columns of their first rows are known everywhere
  Band pageHead, pageFoot;
  std::vector<Part> parts;
};

}  // namespace qk::report
