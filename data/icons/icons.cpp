#include "data/icons/icons.h"

#include <QFile>
#include <QHash>

// Q_INIT_RESOURCE stands outside every namespace; a static library would otherwise leave its resource behind.
static void loadResource() {
  Q_INIT_RESOURCE(icons);
}

namespace qk {

QIcon icon(const QString& key) {
  // Copies share what was read and drawn. Never destroyed: pictures can't be, once the application object is
  // gone.
  static auto* const known = new QHash<QString, QIcon>;
  if (const auto found = known->constFind(key); found != known->cend()) return *found;
  loadResource();
  const QString path = ":/icons/" + key + ".svg";
  return *known->insert(key, QFile::exists(path) ? QIcon(path) : QIcon());
}

}  // namespace qk
