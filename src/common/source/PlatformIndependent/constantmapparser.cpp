#include "common/source/PlatformIndependent/constantmapparser.h"

#include <QStringList>

#include "Common/qtcompat.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

// Map name, opening quote, key, closing quote.
const char* const EntryPattern = "^\\s*[~]\\s*(\\w+)\\s*\\[\\s*('?)(\\s*\\w(?:\\s|\\w)*)('?)\\s*\\]\\s*$";

} // namespace

bool ConstantMapParser::Parse(const QString& text, QString* mapName, QString* key)
{
    // Nearly all names are of properties, and an expression takes long for them.
    if (!text.contains(QLatin1Char('[')))
        return false;
    const QStringList captured = QtCompat::Capture(QLatin1String(EntryPattern), text);
    if (captured.count() != 5)
        return false;
    const bool quoted = !captured.at(2).isEmpty();
    if (quoted == captured.at(4).isEmpty())
        return false;

    if (mapName)
        *mapName = captured.at(1);
    if (key)
        *key = quoted ? captured.at(3) : captured.at(3).trimmed();
    return true;
}

QString ConstantMapParser::GetMapName(const QString& text)
{
    QString mapName;
    Parse(text, &mapName, nullptr);
    return mapName;
}

QString ConstantMapParser::GetMapNameWithPrefix(const QString& text)
{
    return QLatin1Char('~') + GetMapName(text);
}

bool ConstantMapParser::IsLocalizableMapEntry(const QString& text)
{
    return PropertyInfo::IsReadOnly(text)
        && PropertyInfo::ToNormal(text).startsWith(QLatin1String("loc"), Qt::CaseSensitive)
        && Parse(text, nullptr, nullptr);
}
