// Values on their way into a field.
#pragma once

#include <QVariant>

#include "platform/dao/values/types.h"

namespace qk::dao {

/// The value in the form that a field of this definition holds. Numbers in texts are read strictly in the
/// German form; 0 and False in a date are 30.12.1899. 3421 for what can't be converted, 3163 for a text
/// longer than the field.
QVariant convertedValue(const QVariant& value, const FieldDef& field);

/// The value of a new row's field: its preset, 0 for a yes/no field without one, else Null.
QVariant presetValue(const FieldDef& field);

/// 3314 for Null in a required field, 3315 for an empty text where none may be.
void requireAllowed(const QVariant& value, const FieldDef& field);

/// A field value as a literal of the query language holds it.
QVariant literalValue(const QVariant& value);

}  // namespace qk::dao
