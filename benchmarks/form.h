#ifndef FORM_H
#define FORM_H

#include <QObject>
#include <memory>

#include "corpus.h"

/// A plain object whose properties are bound.
class Item : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double value MEMBER m_value NOTIFY ValueChanged)
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY EnabledChanged)

public:
    using QObject::QObject;

Q_SIGNALS:
    void ValueChanged();
    void EnabledChanged();

private:
    double m_value = -12345;
    bool m_enabled = false;
};

/// One property that is bound to one statement.
struct Binding
{
    QObject* target;
    QString own;                  ///< The statement in the library's language.
    QString script;               ///< The same in JavaScript.
    std::vector<int> reads;       ///< The variables it reads, by their places in Form::variables.
    Item* source = nullptr;       ///< The target whose value it reads, if it does.
    Item* secondSource = nullptr; ///< Another one.
};

/// A form of many targets, each with one bound property.
struct Form
{
    enum class Kind
    {
        Load,    ///< Each reads three of many variables: v[a] * 2 + v[b] - v[c].
        Fan,     ///< All read one variable: v[0] * 2 - i.
        Chain,   ///< Each reads the target before it and takes 1 off; the first reads v[0].
        Diamond, ///< Two on each level, which read both of the level before; those of the first read v[0].
        Save,    ///< Each belongs to a variable of its own: v[i].
        Watch    ///< The same on labels alone.
    };
    enum class Targets
    {
        Objects, ///< Items, property "value".
        Widgets  ///< Labels and line edits in turn, for Save line edits alone; property "text".
    };

    Form(Kind kind, Targets targets, int count);

    /// What the first target holds that does not hold what it must; else empty. Not for Save.
    QString Error() const;

    /// The name of the bound property behind its marker.
    QString MarkedProperty() const { return QString("_") + property; }

    const Kind kind;
    const char* const property;
    Variables variables;
    std::unique_ptr<QObject> top; ///< Parent of the targets, which are named o0, o1, ...
    std::vector<Binding> bindings;

private:
    QObject* MakeTarget(Targets targets, int index) const;
    Binding MakeBinding(QObject* target, int index) const;
    Binding MakeReader(QObject* target, int index) const;
    Item* ItemAt(int index) const { return static_cast<Item*>(bindings[index].target); }
    bool HasOwnVariables() const { return kind == Kind::Save || kind == Kind::Watch; }
    double Expected(int index) const;
};

#endif
