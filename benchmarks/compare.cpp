#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>

// Runs the benchmarks one by one, each in a process of its own, in several rounds, and prints tables of
// their figures. A machine that is busy slows down all benchmarks of a round alike: what is compared is
// therefore the ratio of two figures of the same round, and of those the median.

namespace {

struct Row
{
    QString title;
    QString measured;  ///< A benchmark.
    QString reference; ///< The one that it is compared with.
    double limit;      ///< How many times the reference it may take.
    QStringList peers = {};
    double peerLimit = 0; ///< How many times the best peer it may take; 0: no matter.
    QString quantity = "items_per_second";
};

QTextStream out(stdout);
QTextStream err(stderr);

double Value(const QJsonObject& figure, const QString& quantity)
{
    const double value = figure[quantity].toDouble(qQNaN());
    return quantity == "items_per_second" ? 1e9 / value : value;
}

QString Shown(double value, const QString& quantity)
{
    const QStringList units
        = quantity == "items_per_second" ? QStringList{"ns", "us", "ms", "s"} : QStringList{"B", "KB"};
    int unit = 0;
    for (; value >= 1000 && unit + 1 < units.size(); ++unit)
        value /= 1000;
    return QString("%1 %2").arg(value, 0, 'f', value < 10 ? 2 : value < 100 ? 1 : 0).arg(units[unit]);
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? qQNaN() : values[values.size() / 2];
}

/// Row of the workload for the library, against a floor.
Row Against(const QString& floor, const QString& title, const QString& workload, double limit)
{
    return {title,
            "library/" + workload,
            floor + '/' + workload,
            limit,
            {"QQmlExpression/" + workload, "QScriptProgram/" + workload}};
}

QVector<Row> Comparisons()
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
        Against(relay, "W3 memory of 1,000 objects, each", "W3_load/objects/1000", 1.2 / 0.66),
        Against(relay, "W4 one change, read by 10,000", "W4_fan/10000", 1.15),
        Against(relay, "W4 one change, through a chain of 1,000", "W4_chain/1000", 1.5),
        Against(direct, "W5 save of 1,000 objects", "W5_save/objects/1000", 1.3),
        Against(direct, "W5 save of 1,000 widgets", "W5_save/widgets/1000", 1.3),
    };
    rows[0].peerLimit = 1.0 / 3;
    rows[7].quantity = "bytes_per_item";
    return rows;
}

class Comparison
{
public:
    explicit Comparison(const QStringList& arguments) : m_arguments(arguments) {}

    bool HasFailed() const { return m_failed; }

    QJsonArray Run(const QString& filter)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::SeparateChannels);
        process.start(QCoreApplication::applicationDirPath() + "/benchmark_measure",
                      m_arguments + QStringList{"--benchmark_format=json", "--benchmark_filter=" + filter});
        process.waitForFinished(-1);
        const QJsonObject report = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
        const QJsonArray figures = report["benchmarks"].toArray();
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            Fail(filter, process.errorString() + process.readAllStandardError());
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

    void Print(const QVector<Row>& rows, const QString& reference) const
    {
        out << "\n| Workload | " << reference << " | Library | Ratio | Target | Best peer | Target met |\n"
            << "|---|---|---|---|---|---|---|\n";
        for (const Row& row : rows)
            Print(row);
    }

private:
    void Fail(const QString& name, const QString& error)
    {
        err << name << ": " << error << Qt::endl;
        m_failed = true;
    }

    double MedianOf(const QString& name, const QString& quantity) const
    {
        QVector<double> values;
        for (const QJsonObject& figure : m_figures[name])
            values.append(Value(figure, quantity));
        return Median(values);
    }

    double Ratio(const QString& measured, const QString& reference, const QString& quantity) const
    {
        QVector<double> ratios;
        for (int i = 0; i < m_figures[measured].size(); ++i)
            ratios.append(Value(m_figures[measured][i], quantity) / Value(m_figures[reference][i], quantity));
        return Median(ratios);
    }

    void Print(const Row& row) const
    {
        const double ratio = Ratio(row.measured, row.reference, row.quantity);
        bool met = ratio <= row.limit;
        QString best = "-";
        double bestValue = qInf();
        for (const QString& peer : row.peers) {
            const double value = MedianOf(peer, row.quantity);
            met = met && (row.peerLimit == 0 || !(Ratio(row.measured, peer, row.quantity) > row.peerLimit));
            if (value >= bestValue)
                continue;
            bestValue = value;
            best = Shown(value, row.quantity) + ", " + peer.section('/', 0, 0);
        }
        out << "| " << row.title << " | " << Shown(MedianOf(row.reference, row.quantity), row.quantity) << " | "
            << Shown(MedianOf(row.measured, row.quantity), row.quantity) << " | " << QString::number(ratio, 'f', 2)
            << " | " << QString::number(row.limit, 'f', 2) << " | " << best << " | " << (met ? "yes" : "no") << " |\n";
    }

    const QStringList m_arguments;
    QHash<QString, QVector<QJsonObject>> m_figures;
    bool m_failed = false;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures the library beside hand-written code and other ways to bind.");
    parser.addHelpOption();
    parser.addOption({"quick", "Fewer and shorter rounds."});
    parser.addOption({"smoke", "Run everything small once: checks results and tells no times."});
    parser.addPositionalArgument("filter", "Regular expression on the names of workloads.", "[filter]");
    parser.process(application);

    const bool quick = parser.isSet("quick");
    Comparison comparison({quick ? "--benchmark_min_time=0.02" : "--benchmark_min_time=0.1"});
    const QRegularExpression filter(parser.positionalArguments().value(0));
    QVector<Row> rows;
    for (const Row& row : Comparisons()) {
        if (filter.match(row.measured).hasMatch())
            rows.append(row);
    }
    comparison.Measure(rows, quick ? 3 : 9);
    comparison.Print(rows, "Floor");
    return comparison.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
