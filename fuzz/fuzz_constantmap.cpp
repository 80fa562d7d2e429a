#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "fuzzing.h"

// The names of properties: markers, and references to entries of constant maps.

namespace {

void CheckEntry(const QString& text)
{
    QString map = "untouched";
    QString key = map;
    const bool parsed = ConstantMapParser::Parse(text, &map, &key);
    Require(parsed || (map == "untouched" && key == map), "a failure writes nothing");
    Require(ConstantMapParser::GetMapName(text) == (parsed ? map : QString()),
            "the name is the one that Parse() gives");
    Require(parsed || !ConstantMapParser::IsLocalizableMapEntry(text), "an entry of a localizable map is an entry");
    if (!parsed)
        return;
    Require(!map.isEmpty() && !key.trimmed().isEmpty(), "name and key are not blank");
    QString mapAgain;
    QString keyAgain;
    Require(ConstantMapParser::Parse("~" + map + "['" + key + "']", &mapAgain, &keyAgain) && mapAgain == map
                && keyAgain == key,
            "name and key make the same reference again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    CheckEntry(text);
    const QString normal = PropertyInfo::ToNormal(text);
    Require(!PropertyInfo::IsOvexProperty(normal), "a normal name has no marker");
    Require(text.endsWith(normal), "a normal name is the end of the marked one");
    Require(PropertyInfo::IsOvexProperty(text) == (normal.length() < text.length()), "a marker is taken off");
    PropertyInfo::IsLocalizableProperty(text);
    return 0;
}
