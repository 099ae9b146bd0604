#include "app/ground/print_data.h"

#include "app/ground/temp_module.h"
#include "platform/dao/store_files.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

QString kopiereVorlage(const Workplace& workplace, const QString& sVorlage, const QString& prefix) {
  const QString path = TempDateiName(workplace, prefix);
  try {
    workplace.files.copy(sVorlage, path);
  } catch (const Error&) {
    DateiLoeschen(workplace.files, path);  // the name was taken by an empty file
    throw;
  }
  return path;
}

void loescheDatendatei(const Workplace& workplace, const QString& path) {
  DateiLoeschen(workplace.files, path);
  for (const QString& beside : dao::filesBeside(path)) DateiLoeschen(workplace.files, beside);
}

}  // namespace qk
