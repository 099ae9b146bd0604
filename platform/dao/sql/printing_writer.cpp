#include "platform/dao/sql/printing_writer.h"

namespace qk::dao::sql {

template <class Print>
NativeQuery PrintingWriter::printed(Print&& print) const {
  NativeQuery query;
  const auto made = printer(query.values, Printer::Literals::AsParameters);
  print(*made);
  query.text = made->take();
  return query;
}

NativeQuery PrintingWriter::statement(const Statement& statement) const {
  return printed([&](Printer& printer) {
    if (const auto* select = std::get_if<Select>(&statement)) {
      printer.select(*select);
    } else if (const auto* update = std::get_if<Update>(&statement)) {
      printer.update(*update);
    } else if (const auto* remove = std::get_if<Delete>(&statement)) {
      printer.remove(*remove);
    } else {
      printer.insert(std::get<Insert>(statement));
    }
  });
}

NativeQuery PrintingWriter::keysToChange(const Update& update, const QString& key) const {
  return printed([&](Printer& printer) { printer.keysToChange(update, key); });
}

NativeQuery PrintingWriter::select(const Select& select) const {
  return printed([&](Printer& printer) { printer.select(select); });
}

NativeQuery PrintingWriter::bare(const Select& select) const {
  return printed([&](Printer& printer) { printer.bare(select); });
}

NativeQuery PrintingWriter::condition(const Expression& expression) const {
  return printed([&](Printer& printer) { printer.condition(expression); });
}

NativeQuery PrintingWriter::conditionInKeyOrder(const Expression& expression) const {
  return printed([&](Printer& printer) {
    printer.keepToKeys();
    printer.condition(expression);
  });
}

NativeQuery PrintingWriter::orderTerm(const OrderItem& item) const {
  return printed([&](Printer& printer) { printer.orderItem(item); });
}

NativeQuery PrintingWriter::columnsOf(const QStringList& columns,
                                      const std::vector<SourcePtr>& sources) const {
  return printed([&](Printer& printer) { printer.columnsOf(columns, sources); });
}

QString PrintingWriter::plainText(const Select& select) const {
  QVariantList unused;
  const auto made = printer(unused, Printer::Literals::WrittenOut);
  made->select(select);
  return made->take();
}

}  // namespace qk::dao::sql
