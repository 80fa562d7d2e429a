// What the plugin costs who types a statement in Qt Designer, in a form of 2,000 statements.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDesignerFormWindowCursorInterface>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include <ctime>

#include "designertools.h"
#include "statementspanel.h"
#include "support/designerhost.h"

namespace {

const int Labels = 500;

QString Form()
{
    const char property[] = R"(<property name="~%1" stdset="0"><string notr="true">%2</string></property>)";
    QString form
        = R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form"><layout class="QVBoxLayout">)";
    for (int i = 0; i < Labels; ++i) {
        form += QString(R"(<item><widget class="QLabel" name="label%1">)").arg(i);
        form += QString(property).arg("text", "names[1] + ': ' + identity .'model' + rpm");
        form += QString(property).arg("indent", "(rpm - 100) / 3 * count");
        form += QString(property).arg(
            "toolTip", QString("'Value ' + @TopWidget\\label%1:indent + ' of ' + limit").arg(i * 7 % Labels));
        form += QString(property).arg("visible", "ready AND rpm &gt; limit");
        form += "</widget></item>";
    }
    return form + "</layout></widget></ui>";
}

void Write(const QString& name, const QByteArray& content)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(file.errorString()));
    file.write(content);
}

/// How long this thread has computed, in seconds.
double Worked()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// A form of a project that is open in Designer with the plugin, whose first statement is being edited.
class Edited
{
public:
    Edited() : tools(designer.Core())
    {
        Write(folder.filePath("data.json"), R"({ "P": { "names": ["a", "b"], "identity": { "model": "x" }, "rpm": 900,
                                                 "count": 3, "limit": 800, "ready": true } })");
        Write(folder.filePath("declcheck.json"), R"({ "data": "data.json", "package": "P" })");
        QDesignerFormWindowInterface* const form = designer.Open(Form());
        form->setFileName(folder.filePath("form.ui"));
        tools.Panel()->resize(1200, 400);
        tools.Panel()->show();
        tools.Panel()->SetCurrent(form->mainContainer()->findChild<QWidget*>("label0"), "~text");
        editor = tools.Panel()->findChild<QPlainTextEdit*>();
        AwaitFindings();
    }

    /// Until what was last read has been checked.
    void AwaitFindings()
    {
        bool isChecked = false;
        const auto connection = QObject::connect(tools.Checks(), &FormChecks::Checked, [&] { isChecked = true; });
        while (!isChecked)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QObject::disconnect(connection);
        QCoreApplication::processEvents();
    }

    /// A word that is wrong, or takes it away.
    void Type()
    {
        QTextCursor cursor = editor->textCursor();
        cursor.movePosition(QTextCursor::End);
        if (m_isWrong)
            cursor.setPosition(cursor.position() - int(Wrong.size()), QTextCursor::KeepAnchor);
        cursor.insertText(m_isWrong ? QString() : Wrong);
        m_isWrong = !m_isWrong;
    }

    QTemporaryDir folder;
    DesignerHost designer;
    DesignerTools tools;
    QPlainTextEdit* editor = nullptr;

private:
    const QString Wrong = " and";
    bool m_isWrong = false;
};

/// What Designer does by itself when such a property changes.
void TypedWithoutPlugin(benchmark::State& state)
{
    DesignerHost designer;
    QDesignerFormWindowInterface* const form = designer.Open(Form());
    auto* const label = form->mainContainer()->findChild<QWidget*>("label0");
    bool isWrong = false;
    for (auto _ : state) {
        form->cursor()->setWidgetProperty(label, "~text", isWrong ? "rpm" : "rpm and");
        QCoreApplication::processEvents();
        isWrong = !isWrong;
    }
}

void TypedWithPlugin(benchmark::State& state)
{
    Edited edited;
    for (auto _ : state) {
        const double start = Worked();
        edited.Type();
        edited.AwaitFindings();
        state.SetIterationTime(Worked() - start);
    }
}

void KeystrokeToFindings(benchmark::State& state)
{
    Edited edited;
    for (auto _ : state) {
        edited.Type();
        edited.AwaitFindings();
    }
}

BENCHMARK(TypedWithoutPlugin)->Unit(benchmark::kMillisecond);
BENCHMARK(TypedWithPlugin)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(KeystrokeToFindings)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("PATH", TOOLS_FOLDER ":" + qgetenv("PATH"));
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
