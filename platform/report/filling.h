// Puts values into the texts of a bound report.
#pragma once

#include <QVariantList>

#include "platform/report/definition.h"
#include "platform/report/totals.h"

namespace qk::report {

/// What is known where a text stands.
struct Known {
  const QVariantList* fixed = nullptr;
  const QVariantList* row = nullptr;
  const Level* level = nullptr;
  int rowNumber = 0;
  int page = 0;        ///< from 1
  int pageCount = -1;  ///< -1: not known yet, shown as dots
};

QString filled(const Template& text, const Known& known);
/// The value itself where the text is a lone one, else the filled text.
QVariant valueOf(const Template& text, const Known& known);
bool holds(const std::optional<Condition>& when, const Known& known);

}  // namespace qk::report
