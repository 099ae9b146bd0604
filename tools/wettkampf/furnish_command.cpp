#include "tools/wettkampf/furnish_command.h"

#include "platform/dao/database.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

void runFurnishCommand(const QStringList& arguments, QTextStream& out) {
  if (arguments.size() != 1) throw UsageError{"Es fehlt die eine Serverdatei: einrichten SERVERDATEI."};
  const auto address = dao::serverAddressIn(arguments.first());
  if (!address) throw UsageError{QString("»%1« ist keine Serverdatei.").arg(arguments.first())};
  dao::Database::open(arguments.first());
  out << QString("Die Datenbank %1 ist auf dem Stand dieses Programms.\n").arg(placeOf(*address));
}

}  // namespace qk
