#include "unattendedrun.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QLineEdit>
#include <QPixmap>
#include <QSpinBox>
#include <QTextStream>
#include <QTimer>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "enginepanel.h"
#include "qtversion.h"

namespace {

/// Properties that follow the engine, and so must change in any run.
const QStringList Moving{"speedDisplay value",   "speedBar value",           "oilDisplay value", "oilBar value",
                         "temperatureBar value", "temperatureDisplay value", "stateLabel text",  "startLamp pixmap",
                         "portBar1 value",       "starboardBar3 value"};

QtMessageHandler previousHandler = nullptr;
QStringList libraryLines;

void CatchLibraryLines(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "default") == 0)
        libraryLines.append(message);
    previousHandler(type, context, message);
}

IDataPeer* Data()
{
    return Ovex_DataPeerFactory(false)->GetDataPeer(0);
}

QVariant Read(const QString& package, const QString& name)
{
    return Data()->GetValue(VariableIdentifier(name, package), QVariant());
}

QString NameOf(const MarkedProperty& property)
{
    return property.object->objectName() + ' ' + PropertyInfo::ToNormal(property.name);
}

QVariant ValueOf(const MarkedProperty& property)
{
    return property.object->property(PropertyInfo::ToNormal(property.name).toLatin1());
}

QString ToText(const QVariant& value)
{
    if (value.userType() != QMetaType::QPixmap)
        return value.toString();
    const QSize size = value.value<QPixmap>().size();
    return QString("picture of %1 x %2").arg(size.width()).arg(size.height());
}

/// Lets the panel follow its data for a while.
void RunEventLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

UnattendedRun::UnattendedRun(const QString& picture) : m_picture(picture)
{
    previousHandler = qInstallMessageHandler(CatchLibraryLines);
}

int UnattendedRun::Run(EnginePanel* panel, double seconds)
{
    m_panel = panel;
    const int quarter = int(1000 * seconds / 4);
    CheckStatements();
    RememberValues();
    RunEventLoop(quarter);
    ChangeSettings();
    CheckLocked(false);
    RunEventLoop(quarter);
    ClickLock();
    RunEventLoop(quarter);
    CheckLocked(true);
    ClickLock();
    RunEventLoop(quarter);
    CheckLocked(false);
    CheckReaders();
    CheckValuesHaveChanged();
    SavePicture();
    PrintValues();

    if (!m_panel->isVisible())
        Complain("The window was closed before the time was up.");
    libraryLines.removeDuplicates();
    for (const QString& line : qAsConst(libraryLines))
        Complain("The library says: " + line);
    for (const QString& problem : qAsConst(m_problems))
        QTextStream(stderr) << problem << '\n';
    return m_problems.isEmpty() ? 0 : 1;
}

void UnattendedRun::CheckStatements()
{
    const FormBinding& binding = m_panel->GetBinding();
    for (const MarkedProperty& property : binding.refused)
        Complain(NameOf(property) + " was refused.");
    const Interpreter interpreter(Data(), nullptr, nullptr);
    for (const MarkedProperty& property : binding.declarations) {
        IParsingResult* result = nullptr;
        delete interpreter.CreateStatement(property.text, Data(), nullptr, true, EnginePanel::DefaultPackage,
                                           property.object, m_panel, &result);
        const QScopedPointer<IParsingResult> owned(result);
        // A blank statement leaves no result. An error is among the warnings, too.
        if (!result || !result->HasSucceeded() || !result->GetWarningMessages().isEmpty())
            Complain(NameOf(property) + ": " + (result ? result->GetWarningMessages().join(' ') : "blank"));
    }
}

void UnattendedRun::RememberValues()
{
    for (const MarkedProperty& property : m_panel->GetBinding().declarations)
        m_firstValues.append(ValueOf(property));
}

void UnattendedRun::ChangeSettings()
{
    auto* const maximumSpeed = m_panel->findChild<QSpinBox*>("maximumSpeed");
    auto* const vessel = m_panel->findChild<QLineEdit*>("vesselEdit");
    auto* const messages = m_panel->findChild<QAbstractButton*>("messagesBox");
    const QString oldName = vessel->text();
    const int newSpeed = maximumSpeed->value() + 200;
    maximumSpeed->setValue(newSpeed);
    vessel->setText("Aurora");
    messages->setChecked(false);

    m_panel->findChild<QAbstractButton*>("applyButton")->click();
    Expect("limits[0] after applying the limits", Read("Engine", "limits").toList().value(0), newSpeed);
    Expect("vessel name after applying the limits", Read("Ship", "vessel").toMap().value("name"), oldName);

    auto* const save = m_panel->findChild<QAbstractButton*>("saveButton");
    save->click();
    Expect("vessel name after the save", Read("Ship", "vessel").toMap().value("name"), "Aurora");
    Expect("port of the vessel after the save", Read("Ship", "vessel").toMap().value("port"), "Bergen");
    Expect("quiet after the save", Read("Engine", "quiet"), true);

    messages->setChecked(true);
    save->click();
    Expect("quiet after the second save", Read("Engine", "quiet"), false);
}

void UnattendedRun::ClickLock()
{
    m_panel->findChild<QAbstractButton*>("lockBox")->click();
}

void UnattendedRun::CheckLocked(bool locked)
{
    Expect("locked", Read("Engine", "locked"), locked);
    for (const char* const name : {"maximumSpeed", "vesselEdit", "messagesBox", "saveButton"})
        Expect(QString(name) + " enabled", m_panel->findChild<QWidget*>(name)->isEnabled(), !locked);
    Expect("lockBox enabled", m_panel->findChild<QWidget*>("lockBox")->isEnabled(), true);
}

/// A title that reads a variable which was saved, and a property that reads another widget's.
void UnattendedRun::CheckReaders()
{
    Expect("window title", m_panel->windowTitle(), "Aurora - engine panel");
    Expect("maximum of speedBar", m_panel->findChild<QObject*>("speedBar")->property("maximum"),
           m_panel->findChild<QSpinBox*>("maximumSpeed")->value());
}

void UnattendedRun::CheckValuesHaveChanged()
{
    QStringList missing = Moving;
    const QVector<MarkedProperty>& declarations = m_panel->GetBinding().declarations;
    for (int i = 0; i < declarations.count(); ++i) {
        if (ValueOf(declarations.at(i)) != m_firstValues.at(i))
            missing.removeOne(NameOf(declarations.at(i)));
    }
    for (const QString& name : qAsConst(missing))
        Complain(name + " has not changed.");
}

void UnattendedRun::SavePicture()
{
    if (!m_picture.isEmpty() && !m_panel->grab().save(m_picture))
        Complain("Cannot write the picture " + m_picture);
}

void UnattendedRun::PrintValues() const
{
    QTextStream out(stdout);
    QtVersion::UseUtf8(out);
    for (const MarkedProperty& property : m_panel->GetBinding().declarations)
        out << NameOf(property) << ": " << ToText(ValueOf(property)) << '\n';
}

void UnattendedRun::Expect(const QString& what, const QVariant& value, const QVariant& expected)
{
    if (value != expected)
        Complain(QString("%1 is %2, not %3.").arg(what, ToText(value), ToText(expected)));
}

void UnattendedRun::Complain(const QString& problem)
{
    m_problems.append(problem);
}
