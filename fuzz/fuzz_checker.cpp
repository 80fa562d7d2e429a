#include "check/formchecker.h"
#include "check/translationchecker.h"
#include "common/checksettings.h"
#include "common/projectfile.h"
#include "formparts.h"
#include "fuzzing.h"

#ifdef Q_CC_GNU
// There under the sanitizers alone.
extern "C" __attribute__((weak)) void __lsan_disable();
extern "C" __attribute__((weak)) void __lsan_enable();
#endif

// Files that declcheck reads, a line "%%" between them, of which the later ones may be missing: a form, data, a project
// file, translations. A form that starts with a digit is not XML but a list of widgets, to come to the statements
// without breaking the elements around them; each line is a digit for the class, and PROPERTY|STATEMENT.

namespace {

const char* const Classes[] = {"QLabel",   "QSlider",   "QComboBox",  "QDateEdit",      "QPushButton",
                               "QSpinBox", "QLineEdit", "QTabWidget", "QDoubleSpinBox", "Gauge"};

QByteArray FormOf(const QByteArray& lines)
{
    QByteArray form = "<ui version=\"4.0\">\n<class>F</class><widget class=\"QWidget\" name=\"F\">";
    int number = 0;
    const QList<QByteArray> widgets = lines.split('\n');
    for (const QByteArray& line : widgets) {
        const int digit = line.isEmpty() ? 0 : uchar(line.at(0)) % 10;
        const int bar = line.indexOf('|');
        const auto escaped = [](const QByteArray& text) { return QString::fromUtf8(text).toHtmlEscaped().toUtf8(); };
        form += "<widget class=\"" + QByteArray(Classes[digit]) + "\" name=\"w" + QByteArray::number(number++)
            + "\">\n<property name=\"" + escaped(line.mid(1, bar - 1)) + "\"><string>" + escaped(line.mid(bar + 1))
            + "</string></property></widget>";
    }
    return form
        + "</widget><customwidgets><customwidget><class>Gauge</class><extends>QDial</extends></customwidget>"
          "</customwidgets></ui>";
}

QVector<QByteArray> FilesOf(const QByteArray& input)
{
    const QByteArray separator = "\n%%\n";
    QVector<QByteArray> files;
    int start = 0;
    for (int end = 0; end >= 0; start = end + separator.size()) {
        end = input.indexOf(separator, start);
        files.append(input.mid(start, end < 0 ? -1 : end - start));
    }
    files.resize(4);
    return files;
}

void CheckFindings(const QVector<Finding>& findings, const CheckOptions& options)
{
    int before = 0;
    for (const Finding& finding : findings) {
        Require(options.IsEnabled(finding.check), "a check that is left out finds nothing");
        Require(!finding.message.isEmpty() && !finding.message.contains('\n'), "a message is one line");
        Require(finding.source.offset >= before, "findings are in the order of the file");
        Require(finding.start.line >= 1 && finding.start.column >= 1, "a place lies in the file");
        Require(finding.end.line > finding.start.line
                    || (finding.end.line == finding.start.line && finding.end.column >= finding.start.column),
                "a place ends behind its start");
        before = finding.source.offset;
    }
}

void RequireReason(const QString& error, const char* file)
{
    Require(error.startsWith(QLatin1String(file)) && error.size() > int(qstrlen(file)), "a refusal has a reason");
}

/// Qt 5 loses what it has read of a text that proves to be no JSON.
template<typename File>
bool ParseJson(File* file, const QByteArray& content, const char* name, QString* error)
{
#ifdef Q_CC_GNU
    if (__lsan_disable)
        __lsan_disable();
#endif
    const bool isGood = !content.isEmpty() && file->Parse(content, name, error);
#ifdef Q_CC_GNU
    if (__lsan_enable)
        __lsan_enable();
#endif
    return isGood;
}

template<typename Checker>
bool RunChecker(Checker* checker, const QByteArray& content, const char* file, const CheckOptions& options)
{
    QString error;
    if (!checker->Run(content, &error)) {
        RequireReason(error, file);
        return false;
    }
    CheckFindings(checker->Findings(), options);
    return true;
}

void CheckFiles(const QVector<QByteArray>& files, const CheckOptions& options)
{
    FormChecker form("form.ui", options);
    if (!RunChecker(&form, files.at(0), "form.ui", options))
        return;
    form.Variables();
    int count = 0;
    const QByteArray fixed = form.Fixed(&count);
    Require(fixed.isEmpty() || count > 0, "a form that is mended has something to mend");
    if (!fixed.isEmpty()) {
        FormChecker again("form.ui", options);
        Require(RunChecker(&again, fixed, "form.ui", options), "a form that is mended can be read");
    }
    const QVector<FormTexts> texts{form.Texts()};
    TranslationChecker translations("form.ts", options, texts);
    if (!files.at(3).isEmpty() && RunChecker(&translations, files.at(3), "form.ts", options))
        translations.Fixed(&count);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    StartApplication();
    SilenceMessages();
    QVector<QByteArray> files = FilesOf(Input(data, size).TakeRest());
    if (!files.at(0).isEmpty() && isdigit(uchar(files.at(0).at(0))))
        files[0] = FormOf(files.at(0));
    CheckSettings settings;
    QString error;
    JsonData values;
    if (ParseJson(&values, files.at(1), "data.json", &error))
        settings.SetData(values);
    ProjectFile project;
    if (ParseJson(&project, files.at(2), "/declcheck.json", &error))
        settings.SetProject(project);
    if (!error.isEmpty())
        RequireReason(error, error.startsWith('/') ? "/declcheck.json" : "data.json");
    CheckFiles(files, settings.Options());
    return 0;
}
