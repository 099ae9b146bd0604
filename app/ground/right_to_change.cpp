#include "app/ground/right_to_change.h"

#include "platform/runtime/error.h"

namespace qk {

void refuseReadOnly(dao::Database& store, const QString& sWettkampf) {
  try {
    store.execute("UPDATE Wettkampf SET Ort = Ort WHERE 1 = 0");
  } catch (const Error& error) {
    if (error.number() == errors::kNoReadPermission || error.number() == errors::kNotUpdatable)
      throw Error(errors::kNotUpdatable,
                  "In den Wettkampf darf hier nicht geschrieben werden, nur gelesen: " + sWettkampf);
  }
}

}  // namespace qk
