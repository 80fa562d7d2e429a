#include "form.h"

#include <QLabel>
#include <QLineEdit>

Form::Form(Kind kind, Targets targets, int count) : kind(kind), property(targets == Targets::Widgets ? "text" : "value")
{
    const int variableCount = kind == Kind::Load ? std::max(16, count / 4) : HasOwnVariables() ? count : 1;
    for (int i = 0; i < variableCount; ++i) {
        const QString name = QString("v%1").arg(i);
        variables.push_back({name, QString(), name, 100.5 + i});
    }
    top.reset(targets == Targets::Widgets ? new QWidget : new QObject);
    for (int i = 0; i < count; ++i)
        bindings.push_back(MakeBinding(MakeTarget(targets, i), i));
}

QObject* Form::MakeTarget(Targets targets, int index) const
{
    QObject* target = nullptr;
    if (targets == Targets::Objects)
        target = new Item(top.get());
    else if (kind == Kind::Save || (kind == Kind::Load && index % 2 == 1))
        target = new QLineEdit(static_cast<QWidget*>(top.get()));
    else
        target = new QLabel(static_cast<QWidget*>(top.get()));
    target->setObjectName(QString("o%1").arg(index));
    return target;
}

Binding Form::MakeBinding(QObject* target, int i) const
{
    if ((kind == Kind::Chain && i > 0) || (kind == Kind::Diamond && i > 1))
        return MakeReader(target, i);
    const int count = int(variables.size());
    QString text = "v0 - 1";
    std::vector<int> reads = {0};
    if (kind == Kind::Load) {
        reads = {i % count, (i * 7 + 1) % count, (i * 13 + 2 + i / count) % count};
        text = QString("v%1 * 2 + v%2 - v%3").arg(reads[0]).arg(reads[1]).arg(reads[2]);
    } else if (kind == Kind::Fan) {
        text = QString("v0 * 2 - %1").arg(i);
    } else if (HasOwnVariables()) {
        reads = {i};
        text = QString("v%1").arg(i);
    }
    return {target, text, text, reads};
}

Binding Form::MakeReader(QObject* target, int i) const
{
    if (kind == Kind::Chain) {
        const QString source = QString("o%1").arg(i - 1);
        return {target, "@TopWidget\\" + source + ":value - 1", source + ".value - 1", {}, ItemAt(i - 1)};
    }
    const int first = i / 2 * 2 - 2;
    const QString own = "@TopWidget\\o%1:value / 2 + @TopWidget\\o%2:value / 2 - 1";
    const QString script = "o%1.value / 2 + o%2.value / 2 - 1";
    return {target,           own.arg(first).arg(first + 1), script.arg(first).arg(first + 1), {}, ItemAt(first),
            ItemAt(first + 1)};
}

double Form::Expected(int index) const
{
    const auto number = [this](int variable) { return variables[variable].value.toDouble(); };
    if (kind == Kind::Fan)
        return number(0) * 2 - index;
    if (kind == Kind::Chain)
        return number(0) - 1 - index;
    if (kind == Kind::Diamond)
        return number(0) - 1 - index / 2;
    if (HasOwnVariables())
        return number(index);
    const std::vector<int>& reads = bindings[index].reads;
    return number(reads[0]) * 2 + number(reads[1]) - number(reads[2]);
}

QString Form::Error() const
{
    for (int i = 0; i < int(bindings.size()); ++i) {
        bool isNumber = false;
        const QVariant value = bindings[i].target->property(property);
        if (!qFuzzyCompare(value.toDouble(&isNumber), Expected(i)) || !isNumber)
            return QString("target %1 holds '%2' instead of %3").arg(i).arg(value.toString()).arg(Expected(i));
    }
    return QString();
}
