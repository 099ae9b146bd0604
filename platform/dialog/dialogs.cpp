#include "platform/dialog/dialogs.h"

namespace qk {

BoxAnswer presetOf(const Box& box) {
  if (box.preset) return *box.preset;
  switch (box.buttons) {
    case BoxButtons::Ok:
    case BoxButtons::OkCancel:
      return BoxAnswer::Ok;
    case BoxButtons::YesNo:
      return BoxAnswer::Yes;
    case BoxButtons::RetryCancel:
    case BoxButtons::AbortRetryIgnore:
      return BoxAnswer::Retry;
  }
  Q_UNREACHABLE();
}

bool Dialogs::confirm(const QString& text, BoxIcon icon, std::optional<BoxAnswer> preset) {
  return show({.text = text, .icon = icon, .buttons = BoxButtons::YesNo, .preset = preset}) == BoxAnswer::Yes;
}

void Dialogs::note(const QString& text, BoxIcon icon, const QString& title) {
  show({.text = text, .title = title, .icon = icon});
}

namespace {

ErrorAnswer report(Dialogs& dialogs, const QString& text, const QString& sTitel) {
  const BoxAnswer answer = dialogs.show({.text = text,
                                         .title = sTitel.isEmpty() ? "Fehler" : sTitel,
                                         .icon = BoxIcon::Exclamation,
                                         .buttons = BoxButtons::AbortRetryIgnore});
  if (answer == BoxAnswer::Retry) return ErrorAnswer::Retry;
  if (answer == BoxAnswer::Ignore) return ErrorAnswer::Ignore;
  return ErrorAnswer::Abort;
}

QString reportText(const Error& error, const QString& sText) {
  return QString::number(error.number()) + " - " + error.description() + "\n" + sText;
}

}  // namespace

ErrorAnswer FehlerAnzeigen(Dialogs& dialogs, const Error& error, const QString& sText,
                           const QString& sTitel) {
  return report(dialogs, "Fehler: " + reportText(error, sText), sTitel);
}

ErrorReport fehlerReport(Dialogs& dialogs, const QString& sText, const QString& sTitel, bool withWord) {
  return [&dialogs, sText, sTitel, withWord](const Error& error) {
    return withWord ? FehlerAnzeigen(dialogs, error, sText, sTitel)
                    : report(dialogs, reportText(error, sText), sTitel);
  };
}

ErrorReport reportOfALoss(Dialogs& dialogs, ErrorReport report, std::function<QString(ErrorAnswer)> loss) {
  return [&dialogs, report = std::move(report), loss = std::move(loss),
          givenUp = false](const Error& error) mutable {
    for (;;) {
      const ErrorAnswer answer = report(error);
      if (givenUp || answer == ErrorAnswer::Retry) return answer;
      const QString lost = loss(answer);
      if (lost.isEmpty()) return answer;
      givenUp = dialogs.confirm(lost, BoxIcon::Exclamation, BoxAnswer::No);
      if (givenUp) return answer;
    }
  };
}

}  // namespace qk
