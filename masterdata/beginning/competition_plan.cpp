#include "masterdata/beginning/competition_plan.h"

#include <QFileInfo>
#include <QRegularExpression>

#include "masterdata/people/birth_date.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

constexpr int kLongestText = 255;

/// A competition's date may lie ahead, whatever it is that is written so.
QDate dateOf(const QString& typed) {
  const QDate far(QDate::currentDate().year() + 50, 1, 1);
  const BirthDate date = readBirthDate(typed, far);
  if (!date.ok() || date.stored == kUnknownBirthDate) return {};
  return parseDate(date.stored).date();
}

PlanTrouble placeTrouble(const CompetitionPlan& plan, Files& files) {
  const QString what = plan.onServer ? "Serverdatei" : "Datei";
  if (plan.path.trimmed().isEmpty()) return {"path", QString("Es fehlt der Name der %1.").arg(what)};
  const QFileInfo file(plan.path);
  if (!plan.path.endsWith(".qkk", Qt::CaseInsensitive))
    return {"path", QString("Der Name der %1 muss auf .qkk enden.").arg(what)};
  // The programs of the family stumble over another dot.
  if (file.absolutePath().contains('.') || file.completeBaseName().contains('.'))
    return {"path", "Im Pfad darf außer vor qkk kein Punkt stehen:\n" + plan.path};
  if (!files.folderExists(file.absolutePath()))
    return {"path", "Den Ordner gibt es nicht:\n" + file.absolutePath()};
  if (!plan.onServer)
    return files.exists(plan.path)
               ? PlanTrouble{"path", "Diese Datei gibt es schon, sie wird nicht überschrieben:\n" + plan.path}
               : PlanTrouble{};
  if (files.exists(plan.path)) {
    if (dao::isServerFile(plan.path)) return {};
    return {"path", "Diese Datei gibt es schon, und sie nennt keinen Server:\n" + plan.path};
  }
  if (plan.hosts.trimmed().isEmpty()) return {"host", "Es fehlt der Name des Servers."};
  if (const QString trouble = dao::endpointsIn(plan.hosts, plan.port).trouble; !trouble.isEmpty())
    return {"host", trouble};
  if (plan.database.trimmed().isEmpty()) return {"database", "Es fehlt der Name der Datenbank."};
  if (plan.user.trimmed().isEmpty()) return {"user", "Es fehlt der Name des Benutzers."};
  return {};
}

PlanTrouble sourceTrouble(const CompetitionPlan& plan, Files& files) {
  if (plan.source == CompetitionPlan::Source::Starter && plan.starter.isEmpty())
    return {"starter", "Es ist kein Startersatz gewählt."};
  if (plan.source != CompetitionPlan::Source::Earlier) return {};
  if (plan.earlier.trimmed().isEmpty()) return {"earlier", "Es fehlt der frühere Wettkampf."};
  if (!files.exists(plan.earlier)) return {"earlier", "Diesen Wettkampf gibt es nicht:\n" + plan.earlier};
  return {};
}

}  // namespace

QString yearBeginOf(const QString& typed) {
  static const QRegularExpression form("^(\\d{1,2})\\. ?(\\d{1,2})\\.?$");
  const auto match = form.match(typed.trimmed());
  if (!match.hasMatch()) return {};
  constexpr int kLeapYear = 2000;
  const QDate day(kLeapYear, match.captured(2).toInt(), match.captured(1).toInt());
  return day.isValid() ? day.toString("dd.MM.") : QString();
}

PlanTrouble troubleWith(const CompetitionPlan& plan, Files& files) {
  if (plan.name.trimmed().isEmpty()) return {"name", "Es fehlt die Bezeichnung des Wettkampfs."};
  for (const auto& [field, text] : {std::pair("name", plan.name), std::pair("secondLine", plan.secondLine),
                                    std::pair("place", plan.place)})
    if (text.size() > kLongestText)
      return {field, QString("Dieser Text ist zu lang: höchstens %1 Zeichen.").arg(kLongestText)};
  if (!dateOf(plan.refDatum).isValid())
    return {"refDatum", QString("»%1« ist kein Stichtag (TT.MM.JJJJ).").arg(plan.refDatum)};
  if (!plan.yearBegin.trimmed().isEmpty() && yearBeginOf(plan.yearBegin).isEmpty())
    return {"yearBegin", QString("»%1« ist kein Tag des Jahres (TT.MM.).").arg(plan.yearBegin)};
  if (const PlanTrouble trouble = sourceTrouble(plan, files); !trouble.text.isEmpty()) return trouble;
  return placeTrouble(plan, files);
}

MakingResult makePlanned(const CompetitionPlan& plan, Files& files, const MakingWatch& watch) {
  if (const PlanTrouble trouble = troubleWith(plan, files); !trouble.text.isEmpty())
    throw Error(errors::kInvalidCall, trouble.text);
  CompetitionRequest request;
  request.path = plan.path;
  request.title.name = plan.name.simplified();
  request.title.secondLine = plan.secondLine.simplified();
  request.title.place = plan.place.simplified();
  request.title.referenceDate = dateOf(plan.refDatum);
  request.yearBegin = yearBeginOf(plan.yearBegin);
  if (plan.source == CompetitionPlan::Source::Starter) request.starter = plan.starter;
  if (plan.source == CompetitionPlan::Source::Earlier) {
    request.earlier = plan.earlier;
    request.withClubs = plan.withClubs;
    request.withTeams = plan.withTeams;
    request.withShooters = plan.withShooters;
  }
  const bool writes = plan.onServer && !files.exists(plan.path);
  if (writes) {
    const dao::ServerAddress server{dao::endpointsIn(plan.hosts, plan.port).endpoints,
                                    plan.database.trimmed(), plan.user.trimmed()};
    files.write(plan.path, dao::serverAddressText(server));
  }
  try {
    return makeCompetition(request, watch);
  } catch (...) {
    if (writes) files.remove(plan.path);
    throw;
  }
}

}  // namespace qk
