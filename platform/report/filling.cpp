#include "platform/report/filling.h"

#include "platform/report/formats.h"

namespace qk::report {

namespace {

QVariant valueOf(const Piece& piece, const Known& known) {
  if (piece.kind == Piece::Kind::Sum)
    return known.level && piece.slot < static_cast<int>(known.level->sums.size())
               ? known.level->sums[static_cast<size_t>(piece.slot)].value()
               : QVariant();
  if (piece.kind == Piece::Kind::Count) return known.level ? known.level->count : 0;
  switch (piece.from) {
    case Piece::From::Row:
      return known.row ? known.row->value(piece.slot) : QVariant();
    case Piece::From::Fixed:
      return known.fixed ? known.fixed->value(piece.slot) : QVariant();
    case Piece::From::Page:
      return known.page;
    case Piece::From::PageCount:
      return known.pageCount < 0 ? QVariant("…") : QVariant(known.pageCount);
    case Piece::From::RowNumber:
      return known.rowNumber + 1;
    case Piece::From::Nowhere:
      break;
  }
  return {};
}

}  // namespace

QString filled(const Template& text, const Known& known) {
  QString result;
  for (const Piece& piece : text.pieces)
    result +=
        piece.kind == Piece::Kind::Literal ? piece.text : formatted(valueOf(piece, known), piece.format);
  return result;
}

QVariant valueOf(const Template& text, const Known& known) {
  if (text.pieces.size() == 1 && text.pieces.front().kind != Piece::Kind::Literal)
    return valueOf(text.pieces.front(), known);
  return filled(text, known);
}

bool holds(const std::optional<Condition>& when, const Known& known) {
  return !when || isThere(valueOf(when->value, known)) != when->negated;
}

}  // namespace qk::report
