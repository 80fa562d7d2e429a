#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>

// Runs the benchmarks one by one, each in a process of its own, in several rounds, and prints tables of
// their figures. A machine that is busy slows down all benchmarks of a round alike: what is compared is
// therefore the ratio of two figures of the same round, and of those the median.

namespace {

const char* const Time = "items_per_second";
const char* const Memory = "bytes_per_item";

/// Two benchmarks that are compared.
struct Row
{
    QString title;
    QString reference;
    QString measured;
    double limit; ///< How many times the reference it may take.
    QStringList peers = {};
    double peerLimit = qInf(); ///< How many times the best peer it may take.
    const char* quantity = Time;
};

QTextStream out(stdout);
QTextStream err(stderr);

double Value(const QJsonObject& figure, const char* quantity)
{
    const double value = figure[quantity].toDouble(qQNaN());
    return quantity == Time ? 1e9 / value : value;
}

QString Shown(double value, const char* quantity)
{
    static const QStringList times = {"ns", "us", "ms", "s"};
    static const QStringList sizes = {"B", "KB"};
    const QStringList& units = quantity == Time ? times : sizes;
    int unit = 0;
    for (; value >= 1000 && unit + 1 < units.size(); ++unit)
        value /= 1000;
    return QString::number(value, 'f', value < 10 ? 2 : value < 100 ? 1 : 0) + ' ' + units[unit];
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? qQNaN() : values[values.size() / 2];
}

/// The library against a floor.
Row Against(const QString& floor, const QString& title, const QString& workload, double limit)
{
    const QStringList peers = {"QQmlExpression/" + workload, "QScriptProgram/" + workload};
    return {title, floor + '/' + workload, "library/" + workload, limit, peers};
}

QVector<Row> ComparisonRows()
{
    const QString direct = "floor_direct";
    const QString relay = "floor_relay";
    QVector<Row> rows = {
        Against(direct, "W1 first value, each of 12 statements", "W1_first", 3),
        Against(direct, "W2 one evaluation, 1 read", "W2_evaluate/1", 1.5),
        Against(direct, "W2 one evaluation, 3 reads", "W2_evaluate/3", 1.5),
        Against(direct, "W2 one evaluation, 8 reads", "W2_evaluate/8", 1.5),
        Against(relay, "W3 load of 1,000 objects, each", "W3_load/objects/1000", 4),
        Against(relay, "W3 load of 1,000 widgets, each", "W3_load/widgets/1000", 1.6),
        Against(relay, "W3 load of 10,000 widgets, each", "W3_load/widgets/10000", 1.6),
        Against(relay, "W4 one change, read by 10,000", "W4_fan/10000", 1.15),
        Against(relay, "W4 one change, through a chain of 1,000", "W4_chain/1000", 1.5),
        Against(direct, "W5 save of 1,000 objects", "W5_save/objects/1000", 1.3),
        Against(direct, "W5 save of 1,000 widgets", "W5_save/widgets/1000", 1.3),
        Against(relay, "W3 memory of 1,000 objects, each", "W3_load/objects/1000", 1.2 / 0.66),
    };
    rows.first().peerLimit = 1.0 / 3;
    rows.last().quantity = Memory;
    return rows;
}

/// The largest size of each benchmark "growth/name/size" against its smallest.
QVector<Row> GrowthRows(const QStringList& names)
{
    const auto number
        = [](const QString& name) { return QLocale(QLocale::English).toString(name.section('/', -1).toInt()); };
    QVector<Row> rows;
    for (const QString& name : names.filter(QRegularExpression("^growth/"))) {
        const QString title = name.section('/', 1, -2);
        if (rows.isEmpty() || rows.last().title != title)
            rows.append({title, name, name, 2});
        rows.last().measured = name;
    }
    for (Row& row : rows)
        row.title += ", each of " + number(row.reference) + " and of " + number(row.measured);
    return rows;
}

class Comparison
{
public:
    explicit Comparison(const QString& minTime) : m_minTime("--benchmark_min_time=" + minTime) {}

    bool HasFailed() const { return m_failed; }

    QStringList ListBenchmarks()
    {
        QString names = QString::fromUtf8(Output({"--benchmark_list_tests"}));
        names.remove(QRegularExpression("(/iterations:1)?/process_time"));
        return names.split('\n', Qt::SkipEmptyParts);
    }

    /// Runs the benchmarks that match, and reports those that fail.
    QJsonArray Run(const QString& filter)
    {
        const QByteArray report = Output({m_minTime, "--benchmark_format=json", "--benchmark_filter=" + filter});
        const QJsonArray figures = QJsonDocument::fromJson(report).object()["benchmarks"].toArray();
        if (figures.isEmpty())
            Fail(filter, "no figures");
        for (const QJsonValue& figure : figures) {
            if (figure["error_occurred"].toBool())
                Fail(figure["name"].toString(), figure["error_message"].toString());
        }
        return figures;
    }

    void Measure(const QVector<Row>& rows, int rounds)
    {
        QStringList names;
        for (const Row& row : rows)
            names << row.reference << row.measured << row.peers;
        names.removeDuplicates();
        for (int round = 1; round <= rounds; ++round) {
            err << "Round " << round << " of " << rounds << Qt::endl;
            for (const QString& name : names)
                m_figures[name].append(Run('^' + name + '/').at(0).toObject());
        }
    }

    void Print(const QVector<Row>& rows, const QString& reference, const QString& measured) const
    {
        if (rows.isEmpty())
            return;
        const bool hasPeers = !rows.first().peers.isEmpty();
        out << "\n| Workload | " << reference << " | " << measured << " | Ratio | Target |"
            << (hasPeers ? " Best peer |" : "") << " Met |\n|---|---|---|---|---|---|" << (hasPeers ? "---|\n" : "\n");
        for (const Row& row : rows)
            Print(row);
        out << Qt::flush;
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
        err << name << ": " << error << Qt::endl;
        m_failed = true;
    }

    double Figure(const QString& name, const char* quantity) const
    {
        QVector<double> values;
        for (const QJsonObject& figure : m_figures[name])
            values.append(Value(figure, quantity));
        return Median(values);
    }

    double Ratio(const QString& measured, const QString& reference, const char* quantity) const
    {
        QVector<double> ratios;
        for (int i = 0; i < m_figures[measured].size(); ++i)
            ratios.append(Value(m_figures[measured][i], quantity) / Value(m_figures[reference][i], quantity));
        return Median(ratios);
    }

    void Print(const Row& row) const
    {
        const double ratio = Ratio(row.measured, row.reference, row.quantity);
        bool isMet = ratio <= row.limit;
        out << "| " << row.title << " | " << Shown(Figure(row.reference, row.quantity), row.quantity) << " | "
            << Shown(Figure(row.measured, row.quantity), row.quantity) << " | " << QString::number(ratio, 'f', 2)
            << " | " << QString::number(row.limit, 'f', 2) << " | ";
        QMap<double, QString> peers;
        for (const QString& peer : row.peers) {
            peers.insert(Figure(peer, row.quantity), peer);
            isMet = isMet && Ratio(row.measured, peer, row.quantity) <= row.peerLimit;
        }
        if (!peers.isEmpty())
            out << Shown(peers.firstKey(), row.quantity) << ", " << peers.first().section('/', 0, 0) << " | ";
        out << (isMet ? "yes" : "no") << " |\n";
    }

    const QString m_minTime;
    QHash<QString, QVector<QJsonObject>> m_figures;
    bool m_failed = false;
};

/// The rows whose workloads match, without the peers that are not there.
QVector<Row> Selected(const QVector<Row>& rows, const QRegularExpression& filter, const QStringList& names)
{
    QVector<Row> selected;
    for (Row row : rows) {
        const auto isMissing = [&](const QString& peer) { return !names.contains(peer); };
        row.peers.erase(std::remove_if(row.peers.begin(), row.peers.end(), isMissing), row.peers.end());
        if (filter.match(row.measured.section('/', 1)).hasMatch())
            selected.append(row);
    }
    return selected;
}

void Compare(Comparison& comparison, const QRegularExpression& filter, int rounds)
{
    const QStringList names = comparison.ListBenchmarks();
    const QVector<Row> comparisons = Selected(ComparisonRows(), filter, names);
    const QVector<Row> growths = Selected(GrowthRows(names), filter, names);
    comparison.Measure(comparisons, rounds);
    comparison.Print(comparisons, "Floor", "Library");
    comparison.Measure(growths, (rounds + 2) / 3);
    comparison.Print(growths, "Smallest", "Largest");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures the library beside hand-written code and other ways to bind.");
    parser.addHelpOption();
    parser.addOption({"quick", "Fewer and shorter rounds."});
    parser.addOption({"smoke", "Run everything that is short once: checks results, tells no times."});
    parser.addPositionalArgument("filter", "Regular expression on the names of workloads.", "[filter]");
    parser.process(application);

    const bool isQuick = parser.isSet("quick");
    const bool isSmoke = parser.isSet("smoke");
    Comparison comparison(isSmoke ? "0" : isQuick ? "0.02" : "0.1");
    if (isSmoke)
        out << comparison.Run("-widgets/10000/|growth/.*/10000").size() << " benchmarks ran." << Qt::endl;
    else
        Compare(comparison, QRegularExpression(parser.positionalArguments().value(0)), isQuick ? 3 : 9);
    return comparison.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
