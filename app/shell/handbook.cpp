#include "app/shell/handbook.h"

#include <QRegularExpression>

#include "platform/runtime/error.h"

namespace qk {

namespace {

QString plainText(QString html) {
  static const QRegularExpression head("<head>.*</head>", QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression tag("<[^>]*>");
  html.remove(head).replace(tag, " ");
  html.replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&");
  return html.simplified();
}

}  // namespace

Handbook::Handbook(Files& files, const QString& folder)
    : files_(files), folder_(withTrailingSeparator(folder)) {
  if (!files_.readable(folder_ + Contents)) return;
  const QString contents = html(Contents);
  pages_.push_back({Contents, "Inhalt", plainText(contents)});
  static const QRegularExpression link("<a href=\"([^\"#]+\\.html)\">([^<]+)</a>");
  for (auto match = link.globalMatch(contents); match.hasNext();) {
    const auto found = match.next();
    pages_.push_back({found.captured(1), found.captured(2), plainText(html(found.captured(1)))});
  }
}

QString Handbook::html(const QString& file) const {
  try {
    return QString::fromUtf8(files_.read(folder_ + file));
  } catch (const Error&) {
    return "<h1>Seite fehlt</h1><p>Diese Datei des Handbuchs ist nicht da:</p><p>" +
           (folder_ + file).toHtmlEscaped() + "</p>";
  }
}

}  // namespace qk
