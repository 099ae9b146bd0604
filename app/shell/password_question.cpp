#include "app/shell/password_question.h"

namespace qk {

dao::SharedPasswords::Ask passwordQuestion(PasswordBox box) {
  return [box = std::move(box)](const dao::ServerAddress& address, bool again) -> std::optional<QString> {
    const QString prompt =
        QString(again ? "Das Passwort war falsch.\n\n" : "") +
        QString("Passwort von %1 für den Wettkampf %2:").arg(address.user, placeOf(address));
    const QString answer = box(prompt, "Anmeldung am Datenbankserver");
    return answer.isEmpty() ? std::nullopt : std::optional(answer);
  };
}

}  // namespace qk
