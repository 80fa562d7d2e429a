#include "declview/unattendedrun.h"

#include <QEventLoop>
#include <QPixmap>
#include <QTextStream>
#include <QTimer>

#include "common/jsondata.h"
#include "declview/formsession.h"
#include "declview/mainwindow.h"
#include "qtversion.h"

namespace {

/// For layouts, and for statements that wait for others.
const int SettleTime = 300;

void LetSettle()
{
    QEventLoop loop;
    QTimer::singleShot(SettleTime, &loop, &QEventLoop::quit);
    loop.exec();
}

QString ToTextLine(const ViewedProperty& property)
{
    return QStringList{property.path, property.name, ValueToText(property.Value())}.join('\t');
}

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

void Print(const QVector<ViewedProperty>& properties, bool asJson)
{
    QStringList lines;
    for (const ViewedProperty& property : properties)
        lines.append(asJson ? ToJsonLine(property) : ToTextLine(property));
    QTextStream out(stdout);
    QtVersion::UseUtf8(out);
    if (asJson)
        out << "[\n" << lines.join(",\n") << "\n]\n";
    else if (!lines.isEmpty())
        out << lines.join('\n') << '\n';
}

void PrintDiagnostics(const QVector<ViewedProperty>& properties)
{
    QTextStream err(stderr);
    for (const ViewedProperty& property : properties) {
        if (!property.diagnostic.isEmpty())
            err << property.path << ':' << property.name << ": " << property.diagnostic << '\n';
    }
}

} // namespace

bool RunUnattended(const UnattendedTasks& tasks, const FormSession& session, MainWindow* window)
{
    LetSettle();
    PrintDiagnostics(session.Properties());
    if (tasks.print)
        Print(session.Properties(), tasks.asJson);
    if (tasks.picture.isEmpty() || window->grab().save(tasks.picture))
        return true;
    QTextStream(stderr) << "The picture cannot be written: " << tasks.picture << '\n';
    return false;
}
