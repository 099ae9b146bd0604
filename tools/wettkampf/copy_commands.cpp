#include "tools/wettkampf/copy_commands.h"

#include "backup/copy_check.h"
#include "backup/copy_making.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "tools/wettkampf/progress_lines.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

namespace {

constexpr int kDifferent = errors::kChangedMeanwhile;

struct BringBackRequest {
  MoveRequest move;
  bool unproven = false;
};

BringBackRequest parseBringBack(const QStringList& arguments) {
  BringBackRequest request;
  QStringList paths;
  for (const QString& argument : arguments) {
    if (argument == "--von-vorn")
      request.move.again = true;
    else if (argument == "--ungeprueft")
      request.unproven = true;
    else if (argument.startsWith("--"))
      throw UsageError{QString("Unbekannte Angabe »%1«.").arg(argument)};
    else
      paths.append(argument);
  }
  if (paths.size() != 2) throw UsageError{"Es fehlt, welche Kopie wohin: zurueck KOPIE ZIEL."};
  request.move.from = paths.at(0);
  request.move.to = paths.at(1);
  return request;
}

QString momentOf(const Evidence& evidence) {
  return evidence.moment.toString("dd.MM.yyyy HH:mm:ss");
}

Evidence provenOrExplained(Files& files, const QString& copy) {
  try {
    return requireProven(files, copy);
  } catch (const Error& error) {
    if (error.number() != kDifferent) throw;
    throw Error(kDifferent, error.description() +
                                " Nehmen Sie eine andere Kopie. Soll es diese sein, so bringt sie "
                                "--ungeprueft zurück, wenn die Datei in sich stimmt.");
  }
}

}  // namespace

void runCopyCommand(const QStringList& arguments, QTextStream& out) {
  if (arguments.size() != 2 || arguments.join(' ').contains("--"))
    throw UsageError{"Es fehlt, was wohin gesichert wird: sichern WETTKAMPF ORDNER."};
  Files files;
  const QString& competition = arguments.at(0);
  dao::SnapshotReader reader(competition, [] { return false; });
  const CopyResult result = makeCopy(reader, {competition, arguments.at(1), SystemClock().now()}, files);
  if (!result.copy)
    throw Error(errors::kFileInUse,
                "Ein anderes Programm sichert diesen Wettkampf gerade in denselben Ordner.");
  const Evidence& evidence = result.copy->evidence;
  out << (result.kind == CopyResult::Kind::Made ? "Gesichert und geprüft: "
                                                : "Unverändert seit der letzten Sicherung: ")
      << result.copy->path << "\n"
      << QString("Stand %1, %2 Tabellen mit %3 Zeilen.")
             .arg(momentOf(evidence))
             .arg(evidence.tables.size())
             .arg(counted(evidence.rows()))
      << Qt::endl;
}

void runBringBackCommand(const QStringList& arguments, QTextStream& out) {
  const BringBackRequest request = parseBringBack(arguments);
  const MoveRequest& move = request.move;
  Files files;
  if (request.unproven) {
    requireFlawless(move.from);
    out << "Die Kopie wird ohne Beleg zurückgeholt; die Datei ist in sich stimmig." << Qt::endl;
  } else {
    const Evidence evidence = provenOrExplained(files, move.from);
    out << QString("Die Kopie ist unversehrt: Stand %1 von %2, %3 Tabellen mit %4 Zeilen.")
               .arg(momentOf(evidence), evidence.source)
               .arg(evidence.tables.size())
               .arg(counted(evidence.rows()))
        << Qt::endl;
  }
  moveWithLines(move, out);
  out << "Zurückgeholt nach " << move.to << ". " << move.from << " ist unverändert." << Qt::endl;
}

}  // namespace qk
