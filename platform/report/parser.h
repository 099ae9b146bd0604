// Report files (grammar.md). What is wrong is Error 321 that names file and line.
#pragma once

#include "platform/report/definition.h"

namespace qk {
class Files;
}

namespace qk::report {

/// Reads a report file. 53 when it is missing; the description names the file.
Definition readReport(Files& files, const QString& path);

/// `file` is what messages call it.
Definition parseReport(const QString& text, const QString& file);

}  // namespace qk::report
