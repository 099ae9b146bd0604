#include "platform/dao/sql/parser.h"

#include "platform/dao/sql/expression_parser.h"

namespace qk::dao::sql {
namespace {

class StatementParser : public ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

  Statement statement();
  SelectPtr select() override;

 private:
  Select unionOfSelects();
  Select selectCore();
  void selectItems(Select& select);
  void orderBy(Select& select);
  SelectItem selectItem();
  SourcePtr joinedSource();
  SourcePtr singleSource();
  QString optionalAlias();
  Update update();
  Delete remove();
  Insert insert();
};

Statement StatementParser::statement() {
  Statement result;
  if (takeWord(Word::Update)) {
    result = update();
  } else if (takeWord(Word::Delete)) {
    result = remove();
  } else if (takeWord(Word::Insert)) {
    result = insert();
  } else {
    result = unionOfSelects();
  }
  end();
  return result;
}

SelectPtr StatementParser::select() {
  return std::make_unique<Select>(unionOfSelects());
}

Select StatementParser::unionOfSelects() {
  const Nesting nesting(*this);
  Select first = selectCore();
  Select* last = &first;
  for (int count = 1; takeWord(Word::Union); ++count) {
    limitChain(count);
    last->unionAll = takeWord(Word::All);
    last->unionNext = std::make_unique<Select>(selectCore());
    last = last->unionNext.get();
  }
  orderBy(first);
  return first;
}

Select StatementParser::selectCore() {
  Select select;
  expectWord(Word::Select);
  // TOP, DISTINCT and the like are names where an item could follow them as one: "Select Top from t".
  if (isWord(Word::Distinct) && !nextEndsItem()) {
    advance();
    select.distinct = true;
  }
  if (isWord(Word::Top) && peek().type == Token::Type::Number) {
    advance();
    select.top = wholeNumber();
  }
  selectItems(select);
  if (takeWord(Word::Into)) {
    select.into = name();
    if (takeWord(Word::In)) select.intoFile = string();
  }
  if (takeWord(Word::From)) {
    do select.from.push_back(joinedSource());
    while (takeSymbol(u','));
  }
  if (takeWord(Word::Where)) select.where = expression();
  if (takeWord(Word::Group)) {
    expectWord(Word::By);
    do select.groupBy.push_back(expression());
    while (takeSymbol(u','));
  }
  if (takeWord(Word::Having)) select.having = expression();
  return select;
}

void StatementParser::selectItems(Select& select) {
  do select.items.push_back(selectItem());
  while (takeSymbol(u','));
}

void StatementParser::orderBy(Select& select) {
  if (!takeWord(Word::Order)) return;
  expectWord(Word::By);
  do {
    OrderItem item{expression()};
    item.descending = takeWord(Word::Desc);
    if (!item.descending) takeWord(Word::Asc);
    select.orderBy.push_back(std::move(item));
  } while (takeSymbol(u','));
}

SelectItem StatementParser::selectItem() {
  SelectItem item;
  if (takeSymbol(u'*')) return item;
  if (starTable(item.starTable)) return item;
  item.expression = expression();
  if (takeWord(Word::As)) item.alias = name();
  return item;
}

SourcePtr StatementParser::joinedSource() {
  const Nesting nesting(*this);
  SourcePtr left = singleSource();
  for (int count = 1;; ++count) {
    limitChain(count);
    JoinKind kind = JoinKind::Inner;
    if (takeWord(Word::Left) || isWord(Word::Right)) {
      kind = takeWord(Word::Right) ? JoinKind::Right : JoinKind::Left;
      takeWord(Word::Outer);
    } else if (!takeWord(Word::Inner)) {
      return left;
    }
    expectWord(Word::Join);
    SourcePtr right = singleSource();
    expectWord(Word::On);
    Join join{kind, std::move(left), std::move(right), expression()};
    left = std::make_unique<Source>(Source{std::move(join)});
  }
}

SourcePtr StatementParser::singleSource() {
  if (takeSymbol(u'(')) {
    if (isWord(Word::Select)) {
      SelectSource source{select(), {}};
      expectSymbol(u')');
      source.alias = optionalAlias();
      return std::make_unique<Source>(Source{std::move(source)});
    }
    SourcePtr inner = joinedSource();
    expectSymbol(u')');
    return inner;
  }
  TableSource source{name(), {}, {}};
  if (takeWord(Word::In)) source.file = string();
  source.alias = optionalAlias();
  return std::make_unique<Source>(Source{std::move(source)});
}

QString StatementParser::optionalAlias() {
  if (takeWord(Word::As)) return name();
  return isName() ? name() : QString();
}

Update StatementParser::update() {
  Update update;
  update.source = joinedSource();
  expectWord(Word::Set);
  do {
    Assignment assignment;
    assignment.column = column();
    expectSymbol(u'=');
    assignment.value = expression();
    update.set.push_back(std::move(assignment));
  } while (takeSymbol(u','));
  if (takeWord(Word::Where)) update.where = expression();
  return update;
}

Delete StatementParser::remove() {
  Delete remove;
  if (!takeSymbol(u'*')) starTable(remove.starTable);
  expectWord(Word::From);
  remove.source = joinedSource();
  if (takeWord(Word::Where)) remove.where = expression();
  return remove;
}

Insert StatementParser::insert() {
  Insert insert;
  expectWord(Word::Into);
  insert.table = name();
  if (takeSymbol(u'(')) {
    do insert.columns.push_back(name());
    while (takeSymbol(u','));
    expectSymbol(u')');
  }
  if (takeWord(Word::Values)) {
    expectSymbol(u'(');
    insert.values = expressions();
    expectSymbol(u')');
  } else {
    insert.select = select();
  }
  return insert;
}

}  // namespace

Statement parseStatement(const QString& text) {
  return StatementParser(text).statement();
}

ExpressionPtr parseCriterion(const QString& text) {
  return StatementParser(text).criterion();
}

}  // namespace qk::dao::sql
