#include "platform/dao/server/server_choice.h"

namespace qk::dao {
namespace {

bool isAnother(const HostAnswer& answer, const ServerKnowledge& known) {
  return !known.system.isEmpty() && answer.identity.system != known.system;
}

bool isOutOfDate(const HostAnswer& answer, const ServerKnowledge& known) {
  return answer.identity.timeline < known.timelineOf(answer.identity.system);
}

bool isKnown(const HostAnswer& answer) {
  return !answer.identity.system.isEmpty();
}

/// A server that tells nothing of itself only stands in where no other is.
bool isBetter(const HostAnswer& answer, const HostAnswer& than) {
  if (!isKnown(than) || !isKnown(answer)) return isKnown(answer) && !isKnown(than);
  return answer.identity.system == than.identity.system && answer.identity.timeline > than.identity.timeline;
}

QString sentenceOf(const QString& name, const HostAnswer& answer, const ServerKnowledge& known) {
  switch (answer.kind) {
    case HostAnswer::Kind::Silent:
      return silenceOf(name);
    case HostAnswer::Kind::Refused:
      return answer.refusal;
    case HostAnswer::Kind::TooOld:
      return QString("Der Datenbankserver '%1' ist zu alt: PostgreSQL 15 oder neuer ist nötig.").arg(name);
    case HostAnswer::Kind::Standby:
      return QString("'%1' antwortet, ist aber noch Ersatz: Er muss erst zum Hauptserver gemacht werden.")
          .arg(name);
    case HostAnswer::Kind::Primary:
      break;
  }
  return isAnother(answer, known)
             ? QString("'%1' ist ein anderer Server als der, mit dem dieses Programm bisher gearbeitet hat.")
                   .arg(name)
             : QString(
                   "'%1' war früher der Hauptserver, inzwischen hat ein anderer übernommen. Was dort "
                   "gespeichert würde, ginge verloren.")
                   .arg(name);
}

}  // namespace

std::optional<size_t> primaryAmong(const std::vector<HostAnswer>& answers, const ServerKnowledge& known) {
  std::optional<size_t> best;
  for (size_t i = 0; i < answers.size(); ++i) {
    const HostAnswer& answer = answers[i];
    if (answer.kind != HostAnswer::Kind::Primary) continue;
    if (isKnown(answer) && (isAnother(answer, known) || isOutOfDate(answer, known))) continue;
    if (!best || isBetter(answer, answers[*best])) best = i;
  }
  return best;
}

QString whyNoPrimary(const ServerAddress& address, const std::vector<HostAnswer>& answers,
                     const ServerKnowledge& known) {
  QStringList sentences;
  for (size_t i = 0; i < answers.size(); ++i) {
    const QString name = nameOf(address, static_cast<qsizetype>(i));
    const QString sentence = sentenceOf(name, answers[i], known);
    const bool plain = answers.size() == 1 || sentence.contains(u'\'' + name + u'\'');
    sentences.append(plain ? sentence : QString("'%1': %2").arg(name, sentence));
  }
  return sentences.join(' ');
}

QString silenceOf(const QString& host) {
  return QString("Der Rechner '%1' gibt keine Antwort. Ist er eingeschaltet, und ist das Netz in Ordnung?")
      .arg(host);
}

}  // namespace qk::dao
