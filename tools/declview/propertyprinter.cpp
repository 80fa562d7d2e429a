#include "declview/propertyprinter.h"

#include <QTextStream>

#include "common/jsondata.h"
#include "declview/formsession.h"
#include "qtversion.h"

namespace {

QString ToJsonLine(const ViewedProperty& property)
{
    const QVariant value = property.Value();
    // What JSON does not know stands there as a text.
    const bool known = !value.isValid() || JsonData::ValueToJson(value) != "null";
    const QVariantMap object{{"widget", property.path},
                             {"property", property.name},
                             {"value", known ? value : QVariant(ValueToText(value))}};
    return QString::fromUtf8(JsonData::ValueToJson(object));
}

} // namespace

QString PropertyLine(const ViewedProperty& property, bool asJson)
{
    return asJson ? ToJsonLine(property)
                  : QStringList{property.path, property.name, ValueToText(property.Value())}.join('\t');
}

PropertyPrinter::PropertyPrinter(const FormSession* session, bool asJson) : m_session(session), m_asJson(asJson)
{
    connect(session, &FormSession::PropertyChanged, this, &PropertyPrinter::Print);
    connect(session, &FormSession::Replaced, this, &PropertyPrinter::PrintAll);
    PrintAll();
}

void PropertyPrinter::PrintAll()
{
    for (int i = 0; i < m_session->Properties().size(); ++i) {
        if (i == m_printed.size())
            m_printed.append(QString());
        Print(i);
    }
}

void PropertyPrinter::Print(int position)
{
    const QString line = PropertyLine(m_session->Properties().at(position), m_asJson);
    if (position >= m_printed.size() || m_printed.at(position) == line)
        return;
    m_printed[position] = line;
    QTextStream out(stdout);
    QtVersion::UseUtf8(out);
    out << line << '\n';
}
