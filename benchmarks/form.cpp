#include "form.h"

#include <QLabel>
#include <QLineEdit>

#include "item.h"

namespace {

int CountVariables(Form::Kind kind, int targets)
{
    if (kind == Form::Kind::Load)
        return std::max(16, targets / 4);
    return kind == Form::Kind::Save ? targets : 1;
}

} // namespace

Form::Form(Kind kind, Targets targets, int count) : kind(kind), property(targets == Targets::Widgets ? "text" : "value")
{
    for (int i = 0; i < CountVariables(kind, count); ++i) {
        const QString name = QString("v%1").arg(i);
        variables.push_back({{name, QString()}, name, 100.5 + i});
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
    else if (kind == Kind::Save || index % 2 == 1)
        target = new QLineEdit(static_cast<QWidget*>(top.get()));
    else
        target = new QLabel(static_cast<QWidget*>(top.get()));
    target->setObjectName(QString("o%1").arg(index));
    return target;
}

Binding Form::MakeBinding(QObject* target, int i) const
{
    const int count = int(variables.size());
    if (kind == Kind::Chain && i > 0) {
        const QString previous = QString("o%1").arg(i - 1);
        return {target, "@TopWidget\\" + previous + ":value - 1", previous + ".value - 1", {}, bindings.back().target};
    }
    Binding binding = {target, "v0 - 1", QString(), {0}};
    if (kind == Kind::Load) {
        binding.reads = {i % count, (i * 7 + 1) % count, (i * 13 + 2 + i / count) % count};
        binding.own = QString("v%1 * 2 + v%2 - v%3").arg(binding.reads[0]).arg(binding.reads[1]).arg(binding.reads[2]);
    } else if (kind == Kind::Fan) {
        binding.own = QString("v0 * 2 - %1").arg(i);
    } else if (kind == Kind::Save) {
        binding.reads = {i};
        binding.own = variables[i].script;
    }
    binding.script = binding.own;
    return binding;
}

double Form::Expected(int index) const
{
    if (kind == Kind::Fan)
        return Number(0) * 2 - index;
    if (kind == Kind::Chain)
        return Number(0) - 1 - index;
    const std::vector<int>& reads = bindings[index].reads;
    return Number(reads[0]) * 2 + Number(reads[1]) - Number(reads[2]);
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
