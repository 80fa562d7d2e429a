// A form whose data lives in an SQLite file: it is there again after a restart, and several programs on
// the same file follow each other.
//   sqliteform FILE            shows the form
//   sqliteform FILE --script   takes each line of standard input for a name that the user enters, and prints
//                              what the form greets with; ends with standard input
#include <QApplication>
#include <QFile>
#include <QFormLayout>
#include <QLineEdit>
#include <QSocketNotifier>
#include <QSpinBox>
#include <QTextStream>

#include <cstdio>

#include "DeclarationForms/formbinding.h"
#include "sqlitedata.h"

namespace {

void Print(const QString& text)
{
    QTextStream(stdout) << text << '\n';
}

/// Enters what comes on standard input, as long as something comes.
void RunScript(QLineEdit* name, const QLineEdit* greeting)
{
    auto* const input = new QFile(name);
    input->open(stdin, QIODevice::ReadOnly | QIODevice::Unbuffered);
    auto* const notifier = new QSocketNotifier(input->handle(), QSocketNotifier::Read, name);
    QObject::connect(notifier, &QSocketNotifier::activated, name, [=] {
        const QByteArray line = input->readLine();
        if (line.isEmpty())
            return qApp->quit();
        name->setText(QString::fromUtf8(line).trimmed());
        Q_EMIT name->editingFinished();
    });
    QObject::connect(greeting, &QLineEdit::textChanged, Print);
    Print(greeting->text());
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString error = arguments.count() < 2 ? "no file named" : SqliteData::Open(arguments.at(1));
    if (!error.isNull()) {
        std::fprintf(stderr, "sqliteform: %s\n", qPrintable(error));
        return 1;
    }

    QWidget form;
    auto* const name = new QLineEdit;
    auto* const visits = new QSpinBox;
    auto* const greeting = new QLineEdit;
    greeting->setReadOnly(true);
    auto* const layout = new QFormLayout(&form);
    layout->addRow("Name", name);
    layout->addRow("Visits", visits);
    layout->addRow(greeting);

    //! [form]
    FormBinding binding(&form);
    binding.SetDefaultPackage("Guest");
    binding.SetSavePolicy(FormBinding::SaveOnEditingFinished);
    binding.Bind(name, "_text", "name");
    binding.Bind(visits, "_value", "visits");
    binding.Bind(greeting, "~text", "'Hello, ' + name + '!'");
    //! [form]

    if (arguments.contains("--script"))
        RunScript(name, greeting);
    else
        form.show();
    return application.exec();
}
