// What an author of statements sees of them while typing.

#include <QAbstractItemView>
#include <QCompleter>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include "edit/statementcompletion.h"
#include "edit/statementeditor.h"
#include "edit/statementsurroundings.h"

namespace {

class Surroundings : public StatementSurroundings
{
public:
    QStringList Paths() const override { return {"Widget", "TopWidget", "TopWidget\\box"}; }
    QStringList Properties(const QString& path) const override
    {
        return path == "TopWidget\\box" ? QStringList{"value", "visible"} : QStringList();
    }
    QStringList Variables() const override { return {"rpm", "ready", "@Engine:rpm"}; }
    QString Describe(const Reference& reference) const override { return reference.name; }
};

} // namespace

class StatementEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Completion_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("offered");
        QTest::newRow("variables") << "1 + r"
                                   << "ready rpm";
        QTest::newRow("keywords, in any case") << "a an"
                                               << "AND";
        QTest::newRow("objects and packages") << "@"
                                              << "@Engine:rpm @TopWidget: @TopWidget\\box: @Widget:";
        QTest::newRow("path") << "1+@TopWidget\\"
                              << "@TopWidget\\box:";
        QTest::newRow("properties") << "@TopWidget\\box:v"
                                    << "@TopWidget\\box:value @TopWidget\\box:visible";
        QTest::newRow("package") << "NOT @Engine:"
                                 << "@Engine:rpm";
        QTest::newRow("in a text") << "'it r"
                                   << "";
        QTest::newRow("behind a text") << "'it' + \"'\" + r"
                                       << "ready rpm";
    }

    void Completion()
    {
        QFETCH(QString, typed);
        const Surroundings surroundings;
        const StatementCompletion completion = StatementCompletion::At(typed + " rest", typed.size(), &surroundings);
        QTEST(completion.words.join(' '), "offered");
    }

    void Typing()
    {
        const Surroundings surroundings;
        StatementEditor editor;
        editor.SetSurroundings(&surroundings);
        editor.show();
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        auto* const popup = editor.findChild<QCompleter*>()->popup();
        QTest::keyClicks(&editor, "1+@TopWidget\\b");
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Return);
        QCOMPARE(editor.toPlainText(), QString("1+@TopWidget\\box:"));
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QCOMPARE(editor.toPlainText(), QString("1+@TopWidget\\box:visible"));
        QVERIFY(!popup->isVisible());
        QTest::keyClicks(&editor, " ");
        QVERIFY(!popup->isVisible());
        QTest::keyClick(&editor, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Escape);
        QVERIFY(!popup->isVisible());
        QCOMPARE(editor.toPlainText(), QString("1+@TopWidget\\box:visible "));
    }

    void Marks()
    {
        StatementEditor editor;
        const QSignalSpy changes(&editor, &StatementEditor::RemarksChanged);
        editor.setPlainText("a + + b and c");
        QVERIFY2(editor.Remarks().startsWith("error: "), qPrintable(editor.Remarks()));
        QVERIFY(!editor.extraSelections().isEmpty());
        QVERIFY(!editor.Fix());
        editor.setPlainText("a and b and c");
        // What was found in another statement is not shown.
        editor.SetMarks("a", {{TextPlace(0, 1), Severity::Note, "note", QString()}});
        QVERIFY(!editor.Remarks().contains("note"));
        editor.SetMarks("a and b and c",
                        {{TextPlace(2, 3), Severity::Warning, "first", "AND"},
                         {TextPlace(8, 3), Severity::Error, "second", "AND"}});
        QCOMPARE(editor.Remarks(), QString("error: second\nwarning: first"));
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(3);
        editor.setTextCursor(cursor);
        QCOMPARE(editor.Remarks(), QString("warning: first"));
        QTest::keyClick(&editor, Qt::Key_Return, Qt::AltModifier);
        QCOMPARE(editor.toPlainText(), QString("a AND b and c"));
        editor.undo();
        QCOMPARE(editor.toPlainText(), QString("a and b and c"));
        QVERIFY(changes.count() > 0);
    }

    /// A text that goes on in the next line has one colour.
    void Colors()
    {
        StatementEditor editor;
        editor.setPlainText("NOT 'a\nb' = 12");
        const auto colorAt = [&editor](int offset) {
            const QTextBlock block = editor.document()->findBlock(offset);
            const auto formats = block.layout()->formats();
            for (const QTextLayout::FormatRange& range : formats) {
                const int inBlock = offset - block.position();
                if (range.start <= inBlock && inBlock < range.start + range.length)
                    return range.format.foreground().color();
            }
            return QColor();
        };
        QVERIFY(colorAt(0).isValid() && colorAt(5).isValid() && colorAt(12).isValid());
        QCOMPARE(colorAt(5), colorAt(7));
        QVERIFY(colorAt(0) != colorAt(5) && colorAt(5) != colorAt(12) && !colorAt(10).isValid());
        const QColor before = colorAt(12);
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::black);
        editor.setPalette(dark);
        QVERIFY(colorAt(12) != before);
    }
};

QTEST_MAIN(StatementEditorTest)
#include "tst_statementeditor.moc"
