#ifndef FORMFIXTURE_H
#define FORMFIXTURE_H

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMultiHash>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

#include <mutex>
#include <set>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "support/values.h"

/// A host's data layer: the least that the contract asks for, in any thread. Variables are named without package.
class FormPeer : public IDataPeer
{
public:
    ~FormPeer() {}

    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        m_reads += identifier.GetName();
        return m_values.value(identifier.GetName(), defaultValue);
    }

    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                     QFlags<IDataPeer::ChangeValueFlag>) override
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        if (m_refused.contains(identifier.GetName()))
            return false;
        m_values[identifier.GetName()] = value;
        ++m_writes;
        for (IDataObserver* observer : m_observers.values(identifier.GetName()))
            observer->OnNotify(identifier);
        return true;
    }

    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        m_observers.insert(identifier.GetName(), observer);
        return true;
    }

    void RemoveObserver(IDataObserver* observer) override
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        for (auto it = m_observers.begin(); it != m_observers.end();)
            it = it.value() == observer ? m_observers.erase(it) : std::next(it);
    }

    bool AddReference(const VariableIdentifier&) override { return true; }

    void Set(const QString& name, const QVariant& value) { ChangeValue({name, QString()}, value, NoFlag); }
    QVariant Get(const QString& name) { return GetValue({name, QString()}, QVariant()); }

    std::recursive_mutex m_mutex;
    QHash<QString, QVariant> m_values;
    QStringList m_refused;
    QMultiHash<QString, IDataObserver*> m_observers;
    int m_writes = 0;
    QString m_reads; ///< The names, in the order in which they were asked for.
};

/// A form with widgets named by their kind and a letter: «label a» or «spin b».
class Form
{
public:
    Form() : m_binding(new FormBinding(&m_form))
    {
        m_form.setObjectName("form");
        m_binding->SetDataPeer(&m_peer);
        QObject::connect(m_binding, &FormBinding::ProblemFound,
                         [this](const FormProblem& problem) { m_told << Describe(problem); });
        QObject::connect(m_binding, &FormBinding::EditedChanged,
                         [this](bool edited) { m_told << (edited ? "edited" : "not edited"); });
        QObject::connect(m_binding, &FormBinding::Saved,
                         [this](int count) { m_told << QString("saved %1").arg(count); });
    }

    ~Form() { delete m_binding; }

    template<typename Widget>
    Widget* Add(const char* name, const QVector<QPair<QByteArray, QVariant>>& properties = {},
                QWidget* parent = nullptr)
    {
        Widget* const widget = new Widget(parent ? parent : &m_form);
        widget->setObjectName(name);
        for (const auto& property : properties)
            widget->setProperty(property.first, property.second);
        return widget;
    }

    /// «a: UnknownObject ~text 3+4»
    static QString Describe(const FormProblem& problem)
    {
        static const char* const kinds[]
            = {"Syntax",    "LeftOver", "UnknownObject", "UnknownProperty", "ReadOnlyProperty", "NotAStatement",
               "Duplicate", "Cycle",    "NotTaken",      "NoValue",         "Evaluation",       "NotStored"};
        return QString("%1: %2 %3 %4+%5")
            .arg(problem.object ? problem.object->objectName() : "null", kinds[problem.kind], problem.property)
            .arg(problem.position)
            .arg(problem.length);
    }

    QString Problems(QObject* scope = nullptr) const
    {
        QStringList problems;
        for (const FormProblem& problem : m_binding->Problems(scope))
            problems << Describe(problem);
        return problems.join("; ");
    }

    /// What was told since the last time.
    QString Told() { return std::exchange(m_told, QStringList()).join("; "); }

    /// That of the first property that is bound on the object.
    BoundProperty Bound(const QObject* object, const QString& property = QString()) const
    {
        for (const BoundProperty& bound : m_binding->BoundProperties()) {
            if (bound.object == object && (property.isEmpty() || bound.property == property))
                return bound;
        }
        return BoundProperty();
    }

    void Turn() { QCoreApplication::processEvents(); }

    FormPeer m_peer;
    QWidget m_form;
    FormBinding* m_binding;
    QStringList m_told;
};

/// A widget of a class by name.
inline QWidget* NewWidget(const QString& kind, QWidget* parent)
{
    if (kind == "spin")
        return new QSpinBox(parent);
    if (kind == "double")
        return new QDoubleSpinBox(parent);
    if (kind == "edit")
        return new QLineEdit(parent);
    if (kind == "slider")
        return new QSlider(parent);
    if (kind == "check")
        return new QCheckBox(parent);
    if (kind == "button")
        return new QPushButton(parent);
    if (kind == "combo")
        return new QComboBox(parent);
    if (kind == "date")
        return new QDateEdit(parent);
    if (kind == "progress")
        return new QProgressBar(parent);
    return new QLabel(parent);
}

#endif
