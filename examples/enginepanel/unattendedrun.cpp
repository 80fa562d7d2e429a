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
#include "enginepanel.h"
#include "qtversion.h"

namespace {

/// Properties that follow the engine, and so must change in any run.
const QStringList Moving{"speedDisplay ~text",    "speedBar ~value",          "oilDisplay ~text",
                         "temperatureBar ~value", "temperatureDisplay ~text", "stateLabel ~text",
                         "startLamp ~pixmap",     "temperatureNote ~text",    "cylinderTable ~rows"};

QVariant ReadVariable(const QString& package, const QString& name)
{
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    return data->GetValue(VariableIdentifier(name, package), QVariant());
}

QString NameOf(const BoundProperty& property)
{
    return property.object->objectName() + ' ' + property.property;
}

QString ToText(const QVariant& value)
{
    if (value.userType() == QMetaType::QVariantList)
        return QString("%1 rows").arg(value.toList().count());
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

int UnattendedRun::Run(EnginePanel* panel, double seconds)
{
    m_panel = panel;
    const int quarter = int(1000 * seconds / 4);
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
    CheckProblems();
    for (const QString& problem : qAsConst(m_problems))
        QTextStream(stderr) << problem << '\n';
    return m_problems.isEmpty() ? 0 : 1;
}

void UnattendedRun::CheckProblems()
{
    const QVector<FormProblem> problems = m_panel->GetBinding().Problems();
    for (const FormProblem& problem : problems)
        Complain(problem.message);
}

void UnattendedRun::RememberValues()
{
    const QVector<BoundProperty> properties = m_panel->GetBinding().BoundProperties();
    for (const BoundProperty& property : properties)
        m_firstValues.append(property.shown);
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
    m_panel->findChild<QAbstractButton*>("manualButton")->click();
    Expect("edited", m_panel->GetBinding().IsEdited(), true);

    m_panel->findChild<QAbstractButton*>("applyButton")->click();
    Expect("limits[0] after applying the limits", ReadVariable("Engine", "limits").toList().value(0), newSpeed);
    Expect("vessel name after applying the limits", ReadVariable("Ship", "vessel").toMap().value("name"), oldName);

    auto* const save = m_panel->findChild<QAbstractButton*>("saveButton");
    save->click();
    Expect("vessel name after the save", ReadVariable("Ship", "vessel").toMap().value("name"), "Aurora");
    Expect("port of the vessel after the save", ReadVariable("Ship", "vessel").toMap().value("port"), "Bergen");
    Expect("quiet after the save", ReadVariable("Engine", "quiet"), true);
    Expect("mode after the save", ReadVariable("Engine", "mode"), "manual");
    Expect("edited after the save", m_panel->GetBinding().IsEdited(), false);

    messages->setChecked(true);
    save->click();
    Expect("quiet after the second save", ReadVariable("Engine", "quiet"), false);
}

void UnattendedRun::ClickLock()
{
    m_panel->findChild<QAbstractButton*>("lockBox")->click();
}

void UnattendedRun::CheckLocked(bool locked)
{
    Expect("locked", ReadVariable("Engine", "locked"), locked);
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
    const QVector<BoundProperty> properties = m_panel->GetBinding().BoundProperties();
    for (int i = 0; i < properties.count(); ++i) {
        if (properties.at(i).shown != m_firstValues.at(i))
            missing.removeOne(NameOf(properties.at(i)));
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
    const QVector<BoundProperty> properties = m_panel->GetBinding().BoundProperties();
    for (const BoundProperty& property : properties)
        out << NameOf(property) << ": " << ToText(property.shown) << '\n';
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
