#include "app/watch/disk_source.h"

#include <algorithm>
#include <utility>

#include "app/watch/watch_texts.h"

namespace qk {

namespace {

constexpr qint64 kMegabyte = 1000 * 1000;

}  // namespace

RoomLimits limitsOfADay(qint64 total) {
  return {std::min(500 * kMegabyte, total / 20), std::min(100 * kMegabyte, total / 100)};
}

RoomLimits limitsOfCopies(qint64 total, qint64 sizeOfOne) {
  const RoomLimits day = limitsOfADay(total);
  return {std::max(day.warning, 3 * sizeOfOne), std::max(day.grave, sizeOfOne)};
}

ThreatLevel roomLevel(qint64 free, const RoomLimits& limits, ThreatLevel before) {
  const auto isBelow = [free](qint64 limit, bool already) {
    return free < (already ? limit + limit / 4 : limit);
  };
  if (isBelow(limits.grave, before == ThreatLevel::Grave)) return ThreatLevel::Grave;
  if (isBelow(limits.warning, before != ThreatLevel::Calm)) return ThreatLevel::Warning;
  return ThreatLevel::Calm;
}

DiskSource::DiskSource(std::shared_ptr<Storage> storage, RoomUser user)
    : storage_(std::move(storage)), user_(std::move(user)) {}

RoomLimits DiskSource::limits(const DiskRoom& room) const {
  const QString original = user_.original ? user_.original() : QString();
  return original.isEmpty() ? limitsOfADay(room.total)
                            : limitsOfCopies(room.total, storage_->sizeOf(original));
}

std::vector<Threat> DiskSource::look(const QDateTime&) {
  const std::optional<DiskRoom> room = storage_->roomAt(user_.folder());
  const QString root = room ? room->root : QString();
  if (std::exchange(root_, root) != root) before_ = ThreatLevel::Calm;
  if (!room) return {};
  before_ = roomLevel(room->free, limits(*room), before_);
  if (before_ == ThreatLevel::Calm) return {};
  const bool grave = before_ == ThreatLevel::Grave;
  return {Threat{"platz:" + room->root,
                 before_,
                 (grave ? "Kaum noch Platz: " : "Wenig Platz: ") + sizeText(room->free),
                 QString("Auf »%1« sind nur noch %2 von %3 frei.")
                     .arg(room->root, sizeText(room->free), sizeText(room->total)),
                 user_.consequence,
                 "Was niemand braucht, auf einen anderen Datenträger bringen oder löschen; den Papierkorb "
                 "leeren. Liegen lassen: den Wettkampf und die Dateien neben ihm, die mit demselben Namen "
                 "beginnen.",
                 "stoerungen.html#platz",
                 {user_.thing}}};
}

Threat DiskSource::silence(const QDateTime& since) const {
  return {"still:" + user_.thing,
          ThreatLevel::Grave,
          "Datenträger hängt",
          QString("Ein Datenträger antwortet seit %1 nicht.").arg(timeText(since)),
          "Wer dorthin schreibt oder von dort liest, wartet. Das Fenster kann dabei stehen bleiben.",
          "Netz, Kabel und den Rechner prüfen, auf dem er liegt.",
          "stoerungen.html#platz",
          {user_.thing}};
}

}  // namespace qk
