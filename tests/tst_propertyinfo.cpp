#include <QtTest>

#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "support/values.h"

class tst_PropertyInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Name => the letters of what it is (read-only, mutable, property with a statement, prefixed, localizable)
    // and its normal form.
    void Names_data()
    {
        Rows({{" =>  ''", "~ => RS ''", "_ => MS ''", "text => L 'text'", "~text => RS 'text'", "_text => MS 'text'",
               "~_~text => RS 'text'", "~~ => RS ''", "_locTitle => MSPL 'locTitle'", "loc_caption => PL 'loc_caption'",
               "locTitle =>  'locTitle'", "    =>  '   '", " text =>  ' text'", "toolTip => L 'toolTip'",
               "ToolTip =>  'ToolTip'", "Loc_x =>  'Loc_x'", "a~b =>  'a~b'"}});
    }

    void Names()
    {
        QFETCH(QString, given);
        QString letters;
        const auto add = [&](bool (*is)(const QString&), const char* letter) { letters += is(given) ? letter : ""; };
        add(PropertyInfo::IsReadOnly, "R");
        add(PropertyInfo::IsMutable, "M");
        add(PropertyInfo::IsOvexProperty, "S");
        add(PropertyInfo::HasLocalizablePrefix, "P");
        add(PropertyInfo::IsLocalizableProperty, "L");
        QTEST(letters + " " + Exact(PropertyInfo::ToNormal(given)), "expected");
        QCOMPARE(PropertyInfo::GetLocalizableProperties().join(","),
                 QString("text,windowTitle,title,accessibleName,toolTip"));
    }

    // Reference => map and key, and "localizable" for a map of such texts.
    void ConstantMaps_data()
    {
        Rows({{"~colors[red] => 'colors' 'red'", " ~ colors [ 'dark red' ]  => 'colors' 'dark red'",
               "~colors[' red '] => 'colors' ' red '", "~colors[ red  ] => 'colors' 'red'",
               "~colors[dark red ] => 'colors' 'dark red'", "~_c1[_2] => '_c1' '_2'",
               "~locTexts[a] => 'locTexts' 'a' localizable", "~_locTexts['a'] => '_locTexts' 'a' localizable",
               " ~locTexts[a] => 'locTexts' 'a'", "~ loc[a] => 'loc' 'a'"},
              {"~colors['red] => ", "~colors[red'] => ", "~colors[] => ", "~colors[red-1] => ", "colors[red] => ",
               "~colors[red] x => ", "~my colors[red] => ", "~~colors[red] => ", "~colors['  '] => ", "abc => ",
               "~locTexts[a => ", "_locTexts[a] => "}});
    }

    void ConstantMaps()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        QString map = "untouched";
        QString key = "untouched";
        const bool parsed = ConstantMapParser::Parse(given, &map, &key);
        QCOMPARE(parsed, !expected.isEmpty());
        QCOMPARE(ConstantMapParser::Parse(given, nullptr, nullptr), parsed);
        const QString localizable = ConstantMapParser::IsLocalizableMapEntry(given) ? " localizable" : "";
        QCOMPARE(Exact(map) + " " + Exact(key) + localizable, parsed ? expected : QString("'untouched' 'untouched'"));
        QCOMPARE(ConstantMapParser::GetMapName(given).isNull(), !parsed);
        QCOMPARE(ConstantMapParser::GetMapNameWithPrefix(given), parsed ? "~" + map : QString("~"));
    }
};

QTEST_APPLESS_MAIN(tst_PropertyInfo)
#include "tst_propertyinfo.moc"
