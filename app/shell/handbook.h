// The handbook's pages, without a window: HTML files in one folder, in the order of the links of its first
// page.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/runtime/files.h"

namespace qk {

struct HandbookPage {
  QString file;   ///< "linie.html"
  QString title;  ///< as the contents say
  QString text;   ///< without tags, for the search
};

class Handbook {
 public:
  static inline const QString Contents = "inhalt.html";

  /// Reads all pages; a folder without the handbook gives none.
  Handbook(Files& files, const QString& folder);

  const std::vector<HandbookPage>& pages() const { return pages_; }  ///< the contents themselves first
  /// The HTML of a page, or one that says it is missing.
  QString html(const QString& file) const;

 private:
  Files& files_;
  QString folder_;
  std::vector<HandbookPage> pages_;
};

}  // namespace qk
