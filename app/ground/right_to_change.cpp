#include "app/ground/right_to_change.h"

#include "platform/runtime/error.h"

namespace qk {

namespace {

constexpr int kNoReadPermission = 3112;
constexpr int kReadOnly = 3027;

}  // namespace

void refuseReadOnly(dao::Database& store, const QString& sWettkampf) {
  try {
    store.execute("UPDATE Wettkampf SET Ort = Ort WHERE 1 = 0");
  } catch (const Error& error) {
    if (error.number() == kNoReadPermission || error.number() == kReadOnly)
      throw Error(kReadOnly,
                  "In den Wettkampf darf hier nicht geschrieben werden, nur gelesen: " + sWettkampf);
  }
}

}  // namespace qk
