#ifndef ADAPTERVALUES_H
#define ADAPTERVALUES_H

#include <QIcon>
#include <QVariant>

/// What adapters take out of values, which may be anything.
namespace AdapterValues {

/// How many items a list, and how many rows a table may have: what a widget shows without hanging.
const int MaxItems = 100000;

/// False for what is no list, or is longer than MaxItems.
bool ToList(const QVariant& value, QVariantList* list);

bool IsMap(const QVariant& value);

/// Whether it has a text to show: a text, a number, a truth value, a date.
bool IsScalar(const QVariant& value);

bool IsImage(const QVariant& value);

/// The icon for an image, or for the path of one; null for a file that is none.
QIcon ToIcon(const QVariant& value);

} // namespace AdapterValues

#endif
