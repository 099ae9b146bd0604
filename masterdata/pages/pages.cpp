#include "masterdata/pages/page_parts.h"
#include "platform/runtime/error.h"

namespace qk {

const PageColumn* Page::column(const QString& name) const {
  for (const PageColumn& one : columns)
    if (dao::sameName(one.column, name)) return &one;
  return nullptr;
}

const std::vector<Page>& masterDataPages() {
  static const std::vector<Page> all = {pages::competition(),    pages::shooters(),    pages::clubs(),
                                        pages::teams(),          pages::teamGroups(),  pages::shooterGroups(),
                                        pages::registrations(),  pages::classes(),     pages::classYear(),
                                        pages::weapons(),        pages::disciplines(), pages::combinations(),
                                        pages::disciplineKeys(), pages::profiles()};
  return all;
}

const Page& masterDataPage(const QString& key) {
  for (const Page& page : masterDataPages())
    if (page.key == key) return page;
  throw Error(errors::kIndexOutOfRange);
}

}  // namespace qk
