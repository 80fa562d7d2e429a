// Records what the library does with random statements, so that it can be compared: with another version of
// the library, or with another version of Qt.

#include <QCommandLineParser>
#include <QCryptographicHash>
#include <QFile>
#include <QGuiApplication>
#include <QTextStream>

#include "recorder.h"

namespace {

struct Range
{
    quint64 seed;
    int first;
    int count;
    int block;
};

int PrintRecords(const Range& range, QTextStream& output)
{
    for (int number = range.first; number < range.first + range.count; ++number)
        output << Record(range.seed, number).join('\n') << '\n';
    return 0;
}

QByteArray HashOf(const Range& range, int first)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int number = first; number < first + range.block && number < range.first + range.count; ++number)
        hash.addData(Record(range.seed, number).join('\n').toUtf8() + '\n');
    return hash.result().toHex().left(16);
}

int PrintHashes(const Range& range, QTextStream& output)
{
    output << range.seed << ' ' << range.first << ' ' << range.count << ' ' << range.block << '\n';
    for (int first = range.first; first < range.first + range.count; first += range.block)
        output << HashOf(range, first) << '\n';
    return 0;
}

/// Against a file with what PrintHashes() printed. The exit code is 1 if anything differs.
int Compare(const QString& fileName, QTextStream& output)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        output << "Cannot read " << fileName << '\n';
        return 2;
    }
    QTextStream input(&file);
    Range range = {};
    input >> range.seed >> range.first >> range.count >> range.block;
    if (range.count <= 0 || range.block <= 0) {
        output << "No hashes of records: " << fileName << '\n';
        return 2;
    }
    int different = 0;
    for (int first = range.first; first < range.first + range.count; first += range.block) {
        QString expected;
        input >> expected;
        if (expected.toLatin1() == HashOf(range, first))
            continue;
        ++different;
        output << "Different: --seed " << range.seed << " --first " << first << " --count " << range.block << '\n';
    }
    output << range.count << " statements compared, " << different << " blocks of them differ\n";
    return different > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    // Texts of dates depend on the time zone.
    qputenv("TZ", "UTC");
    const QGuiApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription("Records what the library does with random statements.");
    options.addHelpOption();
    options.addOptions({{"seed", "Where the random numbers start.", "number", "1"},
                        {"first", "Number of the first statement.", "number", "0"},
                        {"count", "How many statements.", "number", "20000"},
                        {"hashes", "Print, in place of the records, one hash for each so many.", "number", "0"},
                        {"compare", "Compare with what --hashes printed.", "file"}});
    options.process(application);
    QTextStream output(stdout);
    if (options.isSet("compare"))
        return Compare(options.value("compare"), output);
    const Range range = {options.value("seed").toULongLong(), options.value("first").toInt(),
                         options.value("count").toInt(), options.value("hashes").toInt()};
    return range.block > 0 ? PrintHashes(range, output) : PrintRecords(range, output);
}
