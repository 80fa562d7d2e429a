#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

bool StartsWith(const QString& name, const char* prefix)
{
    return name.startsWith(QLatin1String(prefix), Qt::CaseSensitive);
}

} // namespace

const QStringList PropertyInfo::m_localizableProperties
    = QString::fromLatin1("text,windowTitle,title,accessibleName,toolTip").split(QLatin1Char(','));

bool PropertyInfo::IsReadOnly(const QString& name)
{
    return StartsWith(name, "~");
}

bool PropertyInfo::IsMutable(const QString& name)
{
    return StartsWith(name, "_");
}

bool PropertyInfo::IsOvexProperty(const QString& name)
{
    return IsReadOnly(name) || IsMutable(name);
}

QString PropertyInfo::ToNormal(const QString& name)
{
    int markers = 0;
    while (markers < name.length() && IsOvexProperty(name.at(markers)))
        ++markers;
    return name.mid(markers);
}

bool PropertyInfo::HasLocalizablePrefix(const QString& name)
{
    return StartsWith(name, "loc_") || StartsWith(name, "_loc");
}

bool PropertyInfo::IsLocalizableProperty(const QString& name)
{
    if (name.trimmed().isEmpty())
        return false;
    return HasLocalizablePrefix(name) || m_localizableProperties.contains(name);
}

const QStringList& PropertyInfo::GetLocalizableProperties()
{
    return m_localizableProperties;
}
