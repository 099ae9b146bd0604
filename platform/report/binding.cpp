#include "platform/report/binding.h"

#include <functional>

#include "platform/report/report_error.h"

namespace qk::report {

namespace {

using Visit = std::function<void(Template&)>;

void visit(std::optional<Condition>& when, const Visit& each) {
  if (when) each(when->value);
}

void visit(Band& band, const Visit& each) {
  visit(band.when, each);
  for (Element& element : band.elements) {
    visit(element.when, each);
    if (auto* text = std::get_if<TextElement>(&element.shape)) each(text->text);
    if (auto* picture = std::get_if<PictureElement>(&element.shape)) each(picture->source);
    if (auto* bars = std::get_if<BarElement>(&element.shape)) each(bars->text);
    if (auto* values = std::get_if<ValuesElement>(&element.shape))
      for (Template& value : values->values) each(value);
  }
}

int positionIn(const QStringList& names, const QString& name) {
  for (qsizetype i = 0; i < names.size(); ++i)
    if (dao::sameName(names[i], name)) return static_cast<int>(i);
  return -1;
}

class Binder {
 public:
  Binder(const QString& file, QStringList rowNames, const QStringList& fixedNames)
      : file_(file), rowNames_(std::move(rowNames)), fixedNames_(fixedNames) {}

  /// `behind`: sums and counts are known there.
  Visit visitor(bool behind) {
    return [this, behind](Template& text) {
      for (Piece& piece : text.pieces) bind(piece, text.line, behind);
    };
  }

  /// The place of a column's sum among those of the part.
  int sumOf(const QString& name, int line) {
    const int column = positionIn(rowNames_, name);
    if (column < 0) fail(file_, line, QString("Die Spalte \"%1\" gibt es nicht.").arg(name));
    for (size_t i = 0; i < sums.size(); ++i)
      if (sums[i] == column) return static_cast<int>(i);
    sums.push_back(column);
    return static_cast<int>(sums.size()) - 1;
  }

  std::vector<int> sums;
  bool namesPageCount = false;

 private:
  void bind(Piece& piece, int line, bool behind) {
    if (piece.kind == Piece::Kind::Literal) return;
    if (piece.kind != Piece::Kind::Value) {
      if (!behind) fail(file_, line, "Summen und Anzahl sind erst am Ende der Zeilen bekannt.");
      if (piece.kind == Piece::Kind::Sum) piece.slot = sumOf(piece.text, line);
      return;
    }
    using enum Piece::From;
    if (const int column = positionIn(rowNames_, piece.text); column >= 0)
      piece.from = Row, piece.slot = column;
    else if (const int fixed = positionIn(fixedNames_, piece.text); fixed >= 0)
      piece.from = Fixed, piece.slot = fixed;
    else if (dao::sameName(piece.text, "Seite"))
      piece.from = Page;
    else if (dao::sameName(piece.text, "Seiten"))
      piece.from = PageCount, namesPageCount = true;
    else if (dao::sameName(piece.text, "Nr"))
      piece.from = RowNumber;
    else
      fail(file_, line, QString("Die Spalte \"%1\" gibt es nicht.").arg(piece.text));
  }

  QString file_;
  QStringList rowNames_;
  const QStringList& fixedNames_;
};

}  // namespace

void bindPage(Definition& report, const QStringList& fixedNames) {
  Binder binder(report.file, {}, fixedNames);
  visit(report.pageHead, binder.visitor(false));
  visit(report.pageFoot, binder.visitor(false));
}

BoundPart bindPart(Definition& report, size_t index, const std::vector<dao::FieldDef>& fields,
                   const QStringList& fixedNames) {
  QStringList names;
  for (const dao::FieldDef& field : fields) names << field.name;
  Binder binder(report.file, names, fixedNames);
  const Visit before = binder.visitor(false), behind = binder.visitor(true);
  Part& part = report.parts[index];
  before(part.heading);
  before(part.empty);
  visit(part.start, before);
  visit(part.row, before);
  visit(part.end, behind);
  behind(part.total);
  for (Group& group : part.groups) {
    before(group.value);
    before(group.title);
    behind(group.sum);
    visit(group.head, before);
    visit(group.foot, behind);
  }
  for (Column& column : part.columns) {
    before(column.value);
    if (!column.summed) continue;
    const auto& pieces = column.value.pieces;
    if (pieces.size() != 1 || pieces.front().from != Piece::From::Row)
      fail(report.file, column.line, "Summieren lässt sich nur eine Spalte der Abfrage.");
    binder.sumOf(pieces.front().text, column.line);
  }
  return {binder.sums, binder.namesPageCount};
}

}  // namespace qk::report
