#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>

// Runs the benchmarks one by one, each in a process of its own, in several rounds, and prints tables of
// their figures. A machine that is busy slows down all benchmarks of a round alike: what is compared is
// therefore the ratio of two figures of the same round, and of those the median.

namespace {

/// Figures are named by their benchmark; those that are no times have one of these behind it.
const QString memory = " memory";
const QString evaluations = " evaluations";

/// Two figures that are compared.
struct Row
{
    QString title;
    QString reference;
    QString measured;
    double limit; ///< How many times the reference it may take; infinite for rows that are there to compare with.
    QStringList peers = {};
    double peerLimit = qInf(); ///< How many times the best peer it may take.
    double most = qInf();      ///< How much it may take at most, in nanoseconds or bytes.
};

/// The library against the floor.
Row Against(const QString& title, const QString& workload, double limit, double peerLimit = qInf())
{
    const QStringList peers = {"QQmlExpression/" + workload, "QScriptProgram/" + workload, "muParser/" + workload};
    return {title, "floor/" + workload, "library/" + workload, limit, peers, peerLimit};
}

/// Of a load whose texts are marked as missing first.
Row Initializing(const QString& title, const QString& workload, double limit)
{
    Row row = Against(title + ", initialized", workload, limit);
    row.measured = "initializing/" + workload;
    return row;
}

/// Of a save, against the floor that is notified of what it writes.
Row AgainstRelay(const QString& title, const QString& workload, double limit)
{
    Row row = Against(title + ", against relays", workload, limit);
    row.reference = "relay/" + workload;
    return row;
}

QVector<Row> ComparisonRows()
{
    return {
        Against("W1 first value, each of 12 statements", "W1_first", 3, 1.0 / 3),
        Against("W2 one evaluation, 1 read", "W2_evaluate/1", 1.5),
        Against("W2 one evaluation, 3 reads", "W2_evaluate/3", 1.5),
        Against("W2 one evaluation, 8 reads", "W2_evaluate/8", 1.5),
        Against("W3 load of 1,000 objects, each", "W3_load/objects/1000", 4),
        Against("W3 load of 1,000 widgets, each", "W3_load/widgets/1000", 1.6),
        Against("W3 load of 10,000 widgets, each", "W3_load/widgets/10000", 1.6),
        Against("W3 memory of 1,000 objects, each", "W3_load/objects/1000" + memory, 1.2 / 0.66),
        Initializing("W3 load of 1,000 widgets, each", "W3_load/widgets/1000", 1.6),
        Initializing("W3 memory of 1,000 objects, each", "W3_load/objects/1000" + memory, 1.2 / 0.66),
        Against("W4 one change, read by 10,000", "W4_fan/10000", 1.15),
        Against("W4 one change, through a chain of 1,000", "W4_chain/1000", 1.5),
        Against("W5 save of 1,000 objects", "W5_save/objects/1000", 1.3),
        Against("W5 save of 1,000 widgets", "W5_save/widgets/1000", 1.3),
        AgainstRelay("W5 save of 1,000 objects", "W5_save/objects/1000", 1.3),
        AgainstRelay("W5 save of 1,000 widgets", "W5_save/widgets/1000", 1.3),
    };
}

/// The forms library against another one, by default at the same workload. Limits are as in Row.
Row Forms(const QString& title, const QString& workload, const QString& reference, double limit,
          double peerLimit = qInf())
{
    Row row = Against(title, workload, limit, peerLimit);
    // What knows no texts cannot show a form.
    row.peers.removeAll("muParser/" + workload);
    row.measured = "forms/" + workload;
    row.reference = reference.contains('/') ? reference : reference + '/' + workload;
    return row;
}

Row Bounded(Row row, double most)
{
    row.most = most;
    return row;
}

/// A page of a settings dialog, against hand-written code.
Row Settings(const QString& title, const QString& workload, double limit, double peerLimit)
{
    Row row = Forms(title, workload, "hand", limit, peerLimit);
    row.peers = QStringList{"QDataWidgetMapper/" + workload, "KConfigDialogManager/" + workload, "library/" + workload};
    return row;
}

/// The forms library with the inspector shown, against itself without.
Row Inspected(const QString& title, const QString& workload, double most)
{
    return Bounded({title, "forms/" + workload, "inspected/" + workload, qInf()}, most);
}

QVector<Row> FormRows()
{
    return {
        Forms("W3 load of 1,000 widgets, each", "W3_load/widgets/1000", "library", 1.3),
        Forms("W3 load of 10,000 widgets, each", "W3_load/widgets/10000", "library", 1.3),
        Bounded(Forms("W3 memory of 1,000 objects, each", "W3_load/objects/1000" + memory, "library", qInf()), 1600),
        Forms("W4 one change, read by 10,000", "W4_fan/10000", "coalesced", 1.3, 1),
        Forms("W4 one change, through a chain of 1,000", "W4_chain/1000", "floor", 1.5),
        Forms("W5 save of 1,000 objects", "W5_save/objects/1000", "coalesced", 1.5, 1),
        Forms("W5 save of 1,000 widgets", "W5_save/widgets/1000", "coalesced", 1.5, 1),
        Forms("W5 save of 1,000 widgets, none edited", "W6_unedited/1000", "floor/W5_save/widgets/1000", 0.2),
        Forms("W6 one change, through a diamond of 12 levels", "W6_diamond/24", "coalesced", qInf()),
        Forms("W6 the same, evaluations", "W6_diamond/24" + evaluations, "coalesced", 1),
        Forms("W6 100 changes at once, read by 1,000", "W6_burst/1000", "coalesced", qInf()),
        Forms("W6 the same, evaluations", "W6_burst/1000" + evaluations, "coalesced", 1),
        Forms("W7 5,000 changes a second on 50 labels, each", "W7_stream/50", "timer", 1.5),
        // A twentieth of a processor.
        Inspected("W7 the same, inspected", "W7_stream/50", 10e3),
        Settings("W8 settings page of 1,000 line edits, load", "W8_load/1000", qInf(), qInf()),
        Forms("W8 the same, against a peer", "W8_load/1000", "KConfigDialogManager", 1),
        Settings("W8 the same, save all edited", "W8_save/1000", 3, 1),
        Bounded(Settings("W8 the same, save none edited", "W8_unedited/1000", qInf(), 1), 20e3),
    };
}

/// The largest size of each benchmark "growth/name/size" against its smallest.
QVector<Row> GrowthRows(const QStringList& benchmarks)
{
    const auto size
        = [](const QString& name) { return QLocale(QLocale::English).toString(name.section('/', -1).toInt()); };
    QVector<Row> rows;
    for (const QString& name : benchmarks.filter(QRegularExpression("^growth/"))) {
        const QString title = name.section('/', 1, -2);
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.title == title; });
        if (row == rows.end())
            rows.append({title, name, name, title.startsWith("QObject") ? qInf() : 2});
        else
            row->measured = name;
    }
    for (Row& row : rows)
        row.title += ", each of " + size(row.reference) + " and of " + size(row.measured);
    return rows;
}

QString WithoutKind(QString figure)
{
    return figure.remove(memory).remove(evaluations);
}

/// The rows whose names match, without the peers that are not there, and without rows against one of these.
QVector<Row> Selected(const QVector<Row>& rows, const QString& filter, const QStringList& benchmarks)
{
    QVector<Row> selected;
    for (Row row : rows) {
        const auto isMissing = [&](QString peer) { return !benchmarks.contains(WithoutKind(peer)); };
        row.peers.erase(std::remove_if(row.peers.begin(), row.peers.end(), isMissing), row.peers.end());
        if (row.measured.contains(QRegularExpression(filter)) && !isMissing(row.reference))
            selected.append(row);
    }
    return selected;
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? qQNaN() : values[values.size() / 2];
}

class Comparison
{
public:
    explicit Comparison(const QString& minTime) : m_minTime("--benchmark_min_time=" + minTime) {}

    bool HasFailed() const { return m_failed; }

    QStringList ListBenchmarks()
    {
        QString names = QString::fromUtf8(Output({"--benchmark_list_tests"}));
        names.remove(QRegularExpression("(/iterations:\\d+)?/process_time"));
        return names.split('\n', Qt::SkipEmptyParts);
    }

    /// Runs the benchmarks that match, and reports those that fail.
    QJsonArray Run(const QString& filter)
    {
        const QByteArray report = Output({m_minTime, "--benchmark_format=json", "--benchmark_filter=" + filter});
        const QJsonArray results = QJsonDocument::fromJson(report).object()["benchmarks"].toArray();
        if (results.isEmpty())
            Fail(filter, "no results");
        for (const QJsonValue& result : results) {
            if (result["error_occurred"].toBool())
                Fail(result["name"].toString(), result["error_message"].toString());
        }
        return results;
    }

    void Measure(const QVector<Row>& rows, int rounds)
    {
        QStringList names;
        for (const Row& row : rows)
            names << row.reference << row.measured << row.peers;
        std::transform(names.begin(), names.end(), names.begin(), WithoutKind);
        names.removeDuplicates();
        for (int round = 1; round <= rounds && !names.isEmpty(); ++round) {
            m_err << "Round " << round << " of " << rounds << Qt::endl;
            for (const QString& name : names) {
                const QJsonValue result = Run('^' + name + '/').at(0);
                m_figures[name].append(1e9 / result["items_per_second"].toDouble(qQNaN()));
                m_figures[name + memory].append(result["bytes_per_item"].toDouble(qQNaN()));
                m_figures[name + evaluations].append(result["evaluations"].toDouble(qQNaN()));
            }
        }
    }

    void Print(const QStringList& titles, const QVector<Row>& rows)
    {
        if (rows.isEmpty())
            return;
        QVector<QStringList> lines = {titles, QVector<QString>(titles.size(), "---").toList()};
        for (const Row& row : rows)
            lines.append(Cells(row).mid(0, titles.size()));
        m_out << Qt::endl;
        for (const QStringList& line : lines)
            m_out << "| " << line.join(" | ") << " |" << Qt::endl;
    }

private:
    QByteArray Output(const QStringList& arguments)
    {
        QProcess process;
        process.start(QCoreApplication::applicationDirPath() + "/benchmark_measure", arguments);
        process.waitForFinished(-1);
        if (process.error() != QProcess::UnknownError || process.exitCode() != 0)
            Fail(arguments.last(), process.errorString() + '\n' + process.readAllStandardError());
        return process.readAllStandardOutput();
    }

    void Fail(const QString& name, const QString& error)
    {
        m_err << name << ": " << error << Qt::endl;
        m_failed = true;
    }

    double Ratio(const QString& measured, const QString& reference) const
    {
        QVector<double> ratios;
        for (int i = 0; i < m_figures[measured].size(); ++i)
            ratios.append(m_figures[measured][i] / m_figures[reference][i]);
        return Median(ratios);
    }

    QString Shown(const QString& figure) const { return Shown(Median(m_figures[figure]), figure); }

    /// A value of the kind of that figure.
    static QString Shown(double value, const QString& figure)
    {
        if (figure.endsWith(evaluations))
            return QString::number(value);
        const QStringList units = figure.endsWith(memory) ? QStringList{"B", "KB"} : QStringList{"ns", "us", "ms", "s"};
        int unit = 0;
        for (; value >= 1000 && unit + 1 < units.size(); ++unit)
            value /= 1000;
        return QString::number(value, 'f', value < 10 ? 2 : value < 100 ? 1 : 0) + ' ' + units[unit];
    }

    QStringList Cells(const Row& row) const
    {
        const double ratio = Ratio(row.measured, row.reference);
        bool isMet = ratio <= row.limit && (qIsInf(row.most) || Median(m_figures[row.measured]) <= row.most);
        QMap<double, QString> peers;
        for (const QString& peer : row.peers) {
            peers.insert(Median(m_figures[peer]), peer);
            isMet = isMet && Ratio(row.measured, peer) <= row.peerLimit;
        }
        QStringList targets;
        if (qIsFinite(row.limit))
            targets << QString::number(row.limit, 'f', 2);
        if (qIsFinite(row.most))
            targets << Shown(row.most, row.measured);
        if (qIsFinite(row.peerLimit))
            targets << QString("%1 of peer").arg(row.peerLimit, 0, 'f', 2);
        const QString best = peers.isEmpty() ? "-" : Shown(peers.first()) + ", " + peers.first().section('/', 0, 0);
        return {row.title,
                Shown(row.reference)
                    + (row.measured.startsWith("forms/") ? ", " + row.reference.section('/', 0, 0) : QString()),
                Shown(row.measured),
                QString::number(ratio, 'f', 2),
                targets.isEmpty() ? "-" : targets.join(", "),
                targets.isEmpty() ? "-"
                    : isMet       ? "yes"
                                  : "no",
                best};
    }

    const QString m_minTime;
    QHash<QString, QVector<double>> m_figures; ///< By name, one for each round.
    QTextStream m_out{stdout};
    QTextStream m_err{stderr};
    bool m_failed = false;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures the libraries beside hand-written code and other ways to bind.");
    parser.addHelpOption();
    parser.addOption({"quick", "Fewer and shorter rounds."});
    parser.addOption({"smoke", "Run everything that is short once: checks results, tells no times."});
    parser.addPositionalArgument("filter", "Regular expression on the names of benchmarks.", "[filter]");
    parser.process(application);

    if (parser.isSet("smoke")) {
        Comparison comparison("0");
        QTextStream(stdout) << comparison.Run("-widgets/10000/|growth/.*/10000").size() << " benchmarks ran.\n";
        return comparison.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
    }

    const bool isQuick = parser.isSet("quick");
    const QString filter = parser.positionalArguments().value(0);
    Comparison comparison(isQuick ? "0.02" : "0.1");
    const QStringList benchmarks = comparison.ListBenchmarks();
    const QVector<Row> comparisons = Selected(ComparisonRows(), filter, benchmarks);
    const QVector<Row> forms = Selected(FormRows(), filter, benchmarks);
    const QVector<Row> growths = Selected(GrowthRows(benchmarks), filter, benchmarks);
    comparison.Measure(comparisons + forms, isQuick ? 3 : 9);
    comparison.Print({"Workload", "Floor", "Library", "Ratio", "Target", "Met", "Best peer"}, comparisons);
    comparison.Print({"Forms", "Reference", "Forms", "Ratio", "Target", "Met", "Best peer"}, forms);
    comparison.Measure(growths, isQuick ? 1 : 3);
    comparison.Print({"Growth", "Smallest", "Largest", "Ratio", "Target", "Met"}, growths);
    return comparison.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
