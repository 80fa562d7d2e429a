// Hosts Designer's form editor, and does in it what a form's author does.

#include <QComboBox>
#include <QDesignerFormWindowCursorInterface>
#include <QDesignerTaskMenuExtension>
#include <QExtensionFactory>
#include <QExtensionManager>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include "bindableproperties.h"
#include "designertools.h"
#include "edit/statementeditor.h"
#include "roweditor.h"
#include "statementspanel.h"
#include "support/designerhost.h"
#include "view/tablepanel.h"

namespace {

const char Form[] = R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
<layout class="QVBoxLayout" name="rows">
<property name="~spacing" stdset="0"><string notr="true">gap</string></property>
<item><widget class="QLabel" name="label">
<property name="~text" stdset="0"><string comment="short" extracomment="of the pump" notr="true">title</string></property>
<property name="~enabled" stdset="0"><bool>true</bool></property></widget></item>
<item><widget class="QSpinBox" name="box">
<property name="_value" stdset="0"><string>count &gt; 1</string></property></widget></item>
</layout>
<action name="act"><property name="~text" stdset="0"><string>name</string></property></action></widget></ui>)";

const int ReadTime = 5000;
const int CheckTime = 30000;

/// A menu that another plugin brings.
class OtherMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)

public:
    explicit OtherMenu(QObject* parent) : QObject(parent) {}
    QList<QAction*> taskActions() const override { return {m_entry}; }

private:
    QAction* const m_entry = new QAction("Other...", this);
};

class OtherMenus : public QExtensionFactory
{
    Q_OBJECT

public:
    explicit OtherMenus(QExtensionManager* manager) : QExtensionFactory(manager)
    {
        manager->registerExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
    }
    ~OtherMenus() override { extensionManager()->unregisterExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension)); }

protected:
    QObject* createExtension(QObject*, const QString&, QObject* parent) const override { return new OtherMenu(parent); }
};

} // namespace

class TestDesigner : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void Table();
    void Edits();
    void Typing();
    void KeepsTexts();
    void Selection();
    void Menus();
    void Choice();
    void Findings();

private:
    QDesignerFormWindowInterface* Open(const QString& content);
    QStringList Rows() const;
    template<typename Object>
    Object* Find(const QString& name) const
    {
        return m_form->mainContainer()->findChild<Object*>(name);
    }
    QString FindingOf(const QString& object) const;
    QString Line(const QString& start) const;
    void Type(const QString& text) { m_editor->setPlainText(text); }

    std::unique_ptr<DesignerHost> m_designer;
    QDesignerFormEditorInterface* m_core = nullptr;
    std::unique_ptr<DesignerTools> m_tools;
    QDesignerFormWindowInterface* m_form = nullptr;
    StatementsPanel* m_panel = nullptr;
    QPlainTextEdit* m_editor = nullptr;
};

void TestDesigner::initTestCase()
{
    // What is built with this goes before what is installed.
    qputenv("PATH", TOOLS_FOLDER ":" + qgetenv("PATH"));
    m_designer = std::make_unique<DesignerHost>();
    m_core = m_designer->Core();
}

void TestDesigner::init()
{
    m_tools = std::make_unique<DesignerTools>(m_core);
    m_panel = m_tools->Panel();
    m_editor = m_panel->findChild<QPlainTextEdit*>();
    m_form = Open(Form);
}

void TestDesigner::cleanup()
{
    m_tools.reset();
    m_designer->CloseAll();
}

void TestDesigner::cleanupTestCase()
{
    m_designer.reset();
}

QDesignerFormWindowInterface* TestDesigner::Open(const QString& content)
{
    QDesignerFormWindowInterface* const form = m_designer->Open(content);
    m_tools->Watcher()->ReadNow();
    return form;
}

/// «object property statement» of each row.
QStringList TestDesigner::Rows() const
{
    m_tools->Watcher()->ReadNow();
    QStringList rows;
    const QAbstractItemModel* const model = m_panel->Table()->View()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = StatementsModel::Object; column <= StatementsModel::Statement; ++column)
            cells.append(model->index(row, column).data().toString());
        rows.append(cells.join(' ').trimmed());
    }
    return rows;
}

/// The text of the first finding.
QString TestDesigner::FindingOf(const QString& object) const
{
    const QAbstractItemModel* const model = m_panel->Table()->View()->model();
    const QModelIndex row = model->match(model->index(0, StatementsModel::Object), Qt::DisplayRole, object).value(0);
    return row.siblingAtColumn(StatementsModel::FindingText).data().toString();
}

/// The first line of what would be saved that starts like that.
QString TestDesigner::Line(const QString& start) const
{
    const QStringList lines = m_form->contents().split('\n');
    for (const QString& line : lines) {
        if (line.trimmed().startsWith(start))
            return line.trimmed();
    }
    return QString();
}

void TestDesigner::Table()
{
    const QStringList all{"rows ~spacing gap", "label ~text title", "label ~enabled", "box _value count > 1",
                          "act ~text name"};
    QCOMPARE(Rows(), all);
    const QModelIndex value = m_panel->Table()->View()->model()->index(3, StatementsModel::Type);
    QCOMPARE(value.data().toString(), QString("int"));

    QDesignerFormWindowCursorInterface* const cursor = m_form->cursor();
    cursor->setWidgetProperty(Find<QLabel>("label"), "objectName", "other");
    QVERIFY(Rows().contains("other ~text title"));
    m_form->commandHistory()->undo();
    QCOMPARE(Rows(), all);

    m_form->clearSelection(false);
    m_form->selectWidget(Find<QLabel>("label"));
    QAction* const deletes = m_core->formWindowManager()->actionDelete();
    QTRY_VERIFY_WITH_TIMEOUT(deletes->isEnabled(), ReadTime);
    deletes->trigger();
    QCOMPARE(Rows(), QStringList({"rows ~spacing gap", "box _value count > 1", "act ~text name"}));
    m_form->commandHistory()->undo();
    QCOMPARE(Rows(), all);

    Open("<ui version='4.0'><widget class='QWidget' name='Other'/></ui>");
    QCOMPARE(Rows(), QStringList());
    m_core->formWindowManager()->setActiveFormWindow(m_form);
    QCOMPARE(Rows(), all);
    delete m_form;
    QCOMPARE(Rows(), QStringList());
}

void TestDesigner::Edits()
{
    QUndoStack* const history = m_form->commandHistory();
    auto* const box = Find<QSpinBox>("box");
    const QString before = m_form->contents();
    m_panel->SetCurrent(box, "_value");
    QCOMPARE(m_editor->toPlainText(), QString("count > 1"));

    // Typed in one go it is one step.
    Type("count");
    Type("count < 2");
    QCOMPARE(history->count(), 1);
    QVERIFY(m_form->isDirty());
    QVERIFY(Rows().contains("box _value count < 2"));
    QCOMPARE(Line("<string>count"), QString("<string>count &lt; 2</string>"));
    history->undo();
    QVERIFY(Rows().contains("box _value count > 1"));
    QCOMPARE(m_editor->toPlainText(), QString("count > 1"));

    // The row stays although the filter no longer takes it, until the user is done.
    m_panel->window()->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel->window()));
    m_editor->setFocus();
    auto* const filter = m_panel->Table()->findChild<QLineEdit*>();
    filter->setText("count");
    Type("limit");
    QCOMPARE(Rows(), QStringList("box _value limit"));
    filter->setFocus();
    QCOMPARE(Rows(), QStringList());
    filter->clear();
    history->undo();

    StatementEdits* const edits = m_tools->Edits();
    QVERIFY(edits->Add(box, "~maximum", "limit"));
    QVERIFY(!edits->Add(box, "~maximum", "again"));
    QVERIFY(Rows().contains("box ~maximum limit"));
    QCOMPARE(Line("<string notr=\"true\">limit"), QString("<string notr=\"true\">limit</string>"));
    QVERIFY(edits->Rename(box, "~maximum", "_maximum"));
    QVERIFY(Rows().contains("box _maximum limit"));
    QCOMPARE(history->count(), 2);
    edits->Remove(m_tools->Watcher()->Statements());
    QCOMPARE(Rows(), QStringList());
    QCOMPARE(history->count(), 3);
    for (int step = 0; step < 3; ++step)
        history->undo();
    QCOMPARE(m_form->contents(), before);
    QVERIFY(!m_form->isDirty());
    history->redo();
    history->redo();
    QVERIFY(Rows().contains("box _maximum limit"));
}

/// What is put in its place while one types is what Designer would save.
void TestDesigner::Typing()
{
    const QStringList typed{"a", "'<' + \"b\" & c > d\n", " \u00e4\U0001f600 ", "title", "", "a b"};
    const QVector<std::pair<QObject*, const char*>> places{{Find<QLabel>("label"), "~text"},
                                                           {Find<QSpinBox>("box"), "_value"},
                                                           {m_form->mainContainer()->layout(), "~spacing"}};
    for (const QString& text : typed) {
        for (const auto& [object, property] : places) {
            m_panel->SetCurrent(object, property);
            QSignalSpy reads(m_tools->Watcher(), &FormWatcher::Read);
            Type(text);
            if (reads.isEmpty())
                m_tools->Watcher()->ReadNow();
            QCOMPARE(m_tools->Watcher()->Content(), m_form->contents());
        }
    }
    // Nothing that waits to be read is lost.
    m_tools->Watcher()->ReadNow();
    m_form->cursor()->setWidgetProperty(Find<QLabel>("label"), "objectName", "other");
    m_panel->SetCurrent(Find<QSpinBox>("box"), "_value");
    Type("b");
    m_form->cursor()->setWidgetProperty(Find<QLabel>("other"), "objectName", "another");
    QTRY_COMPARE(m_tools->Watcher()->Content(), m_form->contents());
    // Nor by findings that come before it is read.
    Type("");
    m_tools->Watcher()->ReadNow();
    Type("c");
    emit m_tools->Checks()->Checked();
    QCOMPARE(m_editor->toPlainText(), QString("c"));
}

void TestDesigner::KeepsTexts()
{
    m_panel->SetCurrent(Find<QLabel>("label"), "~text");
    Type("  title + ' <' ");
    const QString line = Line("<string notr=\"true\" comment=\"short\"");
    QCOMPARE(
        line,
        QString("<string notr=\"true\" comment=\"short\" extracomment=\"of the pump\">  title + ' &lt;' </string>"));
    // What holds no text is not edited as one.
    m_panel->SetCurrent(Find<QLabel>("label"), "~enabled");
    QVERIFY(!m_panel->Editor()->isEnabled());
}

void TestDesigner::Selection()
{
    QDesignerFormWindowCursorInterface* const cursor = m_form->cursor();
    auto* const label = Find<QLabel>("label");
    m_panel->SetCurrent(label, "~text");
    QVERIFY(cursor->isWidgetSelected(label));
    m_form->clearSelection(false);
    m_form->selectWidget(Find<QSpinBox>("box"));
    QTRY_COMPARE_WITH_TIMEOUT(m_panel->Editor()->Shown().property, QString("_value"), ReadTime);
    m_panel->SetCurrent(Find<QAction>("act"), "~text");
    QTRY_COMPARE_WITH_TIMEOUT(m_core->propertyEditor()->object(), Find<QAction>("act"), ReadTime);
    QCOMPARE(m_panel->Editor()->Shown().objectName, QString("act"));
}

void TestDesigner::Menus()
{
    const auto texts = [this](QObject* object) {
        QStringList names;
        const auto* const menu = qt_extension<QDesignerTaskMenuExtension*>(m_core->extensionManager(), object);
        const QList<QAction*> actions = menu ? menu->taskActions() : QList<QAction*>();
        for (const QAction* const action : actions)
            names.append(action->isSeparator() ? "-" : action->text());
        return names;
    };
    const auto preferred = [this](QObject* object) {
        return qt_extension<QDesignerTaskMenuExtension*>(m_core->extensionManager(), object)
            ->preferredEditAction()
            ->text();
    };
    QCOMPARE(texts(Find<QLabel>("label")), QStringList({"Statements..."}));
    QCOMPARE(preferred(Find<QLabel>("label")), QString("Change plain text..."));
    QCOMPARE(texts(Find<QAction>("act")), QStringList({"Statements..."}));
    QCOMPARE(texts(m_form->mainContainer()), QStringList({"Statements...", "Statements of Layout..."}));
    // What others brought stays, and so does what a double click does.
    m_form = Open("<ui version='4.0'><widget class='QComboBox' name='F'/></ui>");
    OtherMenus others(m_core->extensionManager());
    m_tools.reset();
    m_tools = std::make_unique<DesignerTools>(m_core);
    QCOMPARE(texts(m_form->mainContainer()), QStringList({"Other...", "-", "Statements..."}));
    QCOMPARE(preferred(m_form->mainContainer()), QString("Other..."));
}

void TestDesigner::Choice()
{
    auto* const box = Find<QSpinBox>("box");
    QStringList names = BindableProperties::Unbound(m_core, box);
    QCOMPARE(names.mid(0, 2), QStringList({"minimum", "maximum"}));
    QVERIFY(!names.contains("value") && !names.contains("sizePolicy") && !names.contains("objectName"));
    m_tools->Edits()->Remove(m_tools->Watcher()->Statements());
    m_tools->Edits()->Add(box, "~minimum", "1");
    names = BindableProperties::Unbound(m_core, box);
    QCOMPARE(names.mid(0, 3), QStringList({"maximum", "value", "suffix"}));
    QCOMPARE(BindableProperties::Unbound(m_core, Find<QLabel>("label")).first(), QString("text"));
    m_form = Open("<ui version='4.0'><widget class='QComboBox' name='F'/></ui>");
    names = BindableProperties::Unbound(m_core, m_form->mainContainer());
    QCOMPARE(names.mid(0, 3), QStringList({"currentText", "items", "currentData"}));
}

void TestDesigner::Findings()
{
    const QTemporaryDir folder;
    const auto write = [&folder](const QString& name, const QByteArray& content) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write("data.json", R"({ "P": { "count": 3, "title": "Pump", "name": "x", "gap": 2 }, "Q": { "count": 4 } })");
    write("declcheck.json", R"({ "data": "data.json", "package": "P" })");
    m_form->setFileName(folder.filePath("form.ui"));
    auto* const editor = qobject_cast<StatementEditor*>(m_editor);
    m_panel->SetCurrent(Find<QLabel>("label"), "~text");
    Type("titlex and @TopWidget\\box:value");
    QVERIFY2(!editor->Remarks().isEmpty(), "The parser's words come with the keystroke");
    QTRY_VERIFY_WITH_TIMEOUT(FindingOf("label").contains("\"titlex\""), CheckTime);
    QVERIFY(editor->Fix());
    QCOMPARE(editor->toPlainText().section(' ', 0, 1), QString("title and"));
    QTRY_VERIFY_WITH_TIMEOUT(FindingOf("label").contains("\"and\""), CheckTime);
    QVERIFY(editor->Fix());
    QCOMPARE(editor->toPlainText().section(' ', 0, 1), QString("title AND"));
    m_form->commandHistory()->undo();
    QTRY_COMPARE(editor->toPlainText(), QString("title"));
    QTRY_VERIFY_WITH_TIMEOUT(FindingOf("label").isEmpty() && editor->Remarks().isEmpty(), CheckTime);

    FormSurroundings surroundings(m_tools->Watcher());
    surroundings.SetObject(Find<QLabel>("label"));
    QVERIFY(surroundings.Variables().contains("count") && surroundings.Variables().contains("@Q:count"));
    QVERIFY(surroundings.Paths().contains("TopWidget\\box"));
    QVERIFY(surroundings.Properties("TopWidget\\box").contains("maximum"));
    QVERIFY(surroundings.Properties("Widget").contains("wordWrap"));
    const StatementTokens tokens("@Q:count + @TopWidget\\box:maximum");
    QCOMPARE(surroundings.Describe(tokens.Variables().first()), QString("count: int, 4"));
    QCOMPARE(surroundings.Describe(tokens.Properties().first()), QString("maximum of box: int"));
}

QTEST_MAIN(TestDesigner)
#include "tst_designer.moc"
