// Windows-1252, the 8-bit text of the exchange files, and old configuration files.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace qk {

QString fromWindows1252(const QByteArray& bytes);

/// A character that the code page lacks becomes "?"; *lossy tells that it happened.
QByteArray toWindows1252(const QString& text, bool* lossy = nullptr);

/// The text in quotes as a line of its own, with CR LF. Quotes within it stay as they are.
QByteArray quotedLine(const QString& text);

/// Lines without their ends; CR LF, LF or a lone CR end a line; a last line without an end counts.
QStringList splitLines(const QString& text);

}  // namespace qk
