#include "platform/report/line_reader.h"

#include "platform/report/report_error.h"
#include "platform/report/text_template.h"
#include "platform/runtime/numbers.h"

namespace qk::report {

LineReader::LineReader(const QString& file, int line, const QString& text) : file_(file), line_(line) {
  QString problem;
  tokens_ = tokensOf(text, problem);
  if (!problem.isEmpty()) fail(problem);
}

void LineReader::fail(const QString& problem) const {
  report::fail(file_, line_, problem);
}

bool LineReader::takes(const char* word) {
  if (!nextIs(Token::Kind::Word) || tokens_[at_].text.compare(QString(word), Qt::CaseInsensitive) != 0)
    return false;
  ++at_;
  return true;
}

double LineReader::number(const QString& what, double least, double most) {
  if (!nextIs(Token::Kind::Number)) fail(QString("Hier fehlt eine Zahl: %1.").arg(what));
  const double value = take().value;
  if (value < least || value > most)
    fail(QString("%1 muss zwischen %2 und %3 liegen.").arg(what, numberText(least), numberText(most)));
  return value;
}

QString LineReader::text(const QString& what) {
  if (!nextIs(Token::Kind::Text)) fail(QString("Hier fehlt ein Text in Anführungszeichen: %1.").arg(what));
  return take().text;
}

Template LineReader::textTemplate(const QString& what) {
  QString problem;
  Template result = parseTemplate(text(what), line_, problem);
  if (!problem.isEmpty()) fail(problem);
  return result;
}

QString LineReader::name(const QString& what) {
  if (!nextIs(Token::Kind::Word) && !nextIs(Token::Kind::Name))
    fail(QString("Hier fehlt ein Name: %1.").arg(what));
  return take().text;
}

Template LineReader::value(const QString& what) {
  Template result{{}, line_};
  result.pieces.push_back(parseValue(name(what)));
  return result;
}

void LineReader::end() {
  if (!atEnd()) fail(QString("\"%1\" ist hier nicht zu verstehen.").arg(tokens_[at_].text));
}

}  // namespace qk::report
