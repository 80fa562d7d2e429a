#include "DeclarationForms/propertyorder.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace {

const QLatin1String FormatEnding("_format");

struct BoundsRow
{
    const char* bounds;
    const char* properties;
};

const BoundsRow BoundsRows[] = {
    // Spin boxes, sliders, dials, progress bars and displays.
    {"decimals", "minimum maximum singleStep value"},
    {"minimum maximum", "value sliderPosition"},
    {"digitCount mode smallDecimalPoint", "value intValue"},
    // Dates and times.
    {"timeSpec", "minimumDate maximumDate minimumTime maximumTime minimumDateTime maximumDateTime date time dateTime"},
    {"minimumDate maximumDate minimumTime maximumTime minimumDateTime maximumDateTime",
     "date time dateTime selectedDate"},
    {"displayFormat", "date time dateTime currentSection currentSectionIndex"},
    // Line edits and texts.
    {"inputMask", "maxLength"},
    {"inputMask maxLength", "text cursorPosition"},
    {"text", "cursorPosition modified shortcut"},
    {"textFormat maximumBlockCount", "text html markdown plainText"},
    {"lineWrapMode", "lineWrapColumnOrWidth"},
    {"searchPaths", "source"},
    {"maximumSequenceLength", "keySequence"},
    // Choices.
    {"maxCount sortingEnabled", "items rows currentIndex currentText currentData currentRow"},
    {"items editable modelColumn", "currentIndex currentText currentData currentRow"},
    {"fontFilters writingSystem", "currentFont"},
    {"columnCount rowCount", "rows"},
    {"exclusive", "checkedValue"},
    // Buttons, actions and groups.
    {"checkable autoExclusive", "checked"},
    // Any widget.
    {"minimumSize maximumSize minimumWidth maximumWidth minimumHeight maximumHeight", "size geometry"},
};

typedef QHash<QString, QStringList> BoundsTable;

QStringList Words(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '));
}

BoundsTable MakeBoundsTable()
{
    BoundsTable table;
    for (const BoundsRow& row : BoundsRows) {
        const QStringList bounds = Words(row.bounds);
        for (const QString& bound : bounds)
            table[bound] += Words(row.properties);
    }
    return table;
}

} // namespace

bool PropertyOrder::Bounds(const QString& bound, const QString& property)
{
    static const BoundsTable table = MakeBoundsTable();
    const BoundsTable::const_iterator row = table.constFind(bound);
    if (row != table.constEnd() && row->contains(property))
        return true;
    return bound.length() == property.length() + FormatEnding.size() && bound.endsWith(FormatEnding)
        && bound.startsWith(property);
}
