#include "platform/report/text_template.h"

#include "platform/report/formats.h"

namespace qk::report {

namespace {

void addLiteral(Template& result, const QString& text) {
  if (text.isEmpty()) return;
  if (!result.pieces.empty() && result.pieces.back().kind == Piece::Kind::Literal)
    result.pieces.back().text += text;
  else
    result.pieces.push_back({Piece::Kind::Literal, text});
}

/// "Name:Format" between braces.
QString addValue(Template& result, const QString& inside) {
  const qsizetype colon = inside.lastIndexOf(u':');
  Piece piece = parseValue(colon < 0 ? inside : inside.first(colon));
  if (piece.text.isEmpty() && piece.kind != Piece::Kind::Count) return "Zwischen { und } fehlt ein Name.";
  if (colon >= 0) {
    piece.format = formatNamed(inside.sliced(colon + 1));
    if (!piece.format) return QString("Das Format \"%1\" gibt es nicht.").arg(inside.sliced(colon + 1));
  }
  result.pieces.push_back(piece);
  return {};
}

}  // namespace

Piece parseValue(const QString& name) {
  const QString inner = name.trimmed();
  if (inner.startsWith("Summe(", Qt::CaseInsensitive) && inner.endsWith(u')'))
    return {Piece::Kind::Sum, inner.sliced(6).chopped(1).trimmed()};
  if (inner.compare("Anzahl", Qt::CaseInsensitive) == 0) return {Piece::Kind::Count, {}};
  return {Piece::Kind::Value, inner};
}

Template parseTemplate(const QString& text, int line, QString& problem) {
  Template result{{}, line};
  qsizetype at = 0;
  while (at < text.size()) {
    const qsizetype brace = text.indexOf(u'{', at);
    if (brace < 0) {
      addLiteral(result, text.sliced(at));
      break;
    }
    addLiteral(result, text.sliced(at, brace - at));
    if (brace + 1 < text.size() && text[brace + 1] == u'{') {
      addLiteral(result, "{");
      at = brace + 2;
      continue;
    }
    const qsizetype end = text.indexOf(u'}', brace);
    if (end < 0) {
      problem = "Zu { fehlt }.";
      return result;
    }
    problem = addValue(result, text.sliced(brace + 1, end - brace - 1));
    if (!problem.isEmpty()) return result;
    at = end + 1;
  }
  return result;
}

}  // namespace qk::report
