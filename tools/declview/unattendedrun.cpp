#include "declview/unattendedrun.h"

#include <QEventLoop>
#include <QImage>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

#include "declview/formsession.h"
#include "declview/propertyprinter.h"
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

void Print(const QVector<ViewedProperty>& properties, bool asJson)
{
    QStringList lines;
    for (const ViewedProperty& property : properties)
        lines.append(PropertyLine(property, asJson));
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
        if (!property.Problem().isEmpty())
            err << property.path << ':' << property.name << ": " << property.Problem() << '\n';
    }
}

/// On the background of a window, which a form alone does not paint itself.
QImage PictureOf(QWidget* widget, double scale)
{
    QImage image((QSizeF(widget->size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(widget->palette().color(QPalette::Window));
    if (!image.isNull())
        widget->render(&image);
    return image;
}

} // namespace

bool RunUnattended(const UnattendedTasks& tasks, const FormSession& session, QWidget* shown)
{
    LetSettle();
    PrintDiagnostics(session.Properties());
    if (tasks.print)
        Print(session.Properties(), tasks.asJson);
    if (tasks.picture.isEmpty() || PictureOf(shown, tasks.scale).save(tasks.picture))
        return true;
    QTextStream(stderr) << "The picture cannot be written: " << tasks.picture << '\n';
    return false;
}
