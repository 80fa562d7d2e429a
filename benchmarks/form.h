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
    QString own;            ///< The statement in the library's language.
    QString script;         ///< The same in JavaScript.
    std::vector<int> reads; ///< The variables it reads, by their places in Form::variables.
    Item* source = nullptr; ///< The target whose value it reads, if it does.
};

/// A form of many targets, each with one bound property.
struct Form
{
    enum class Kind
    {
        Load,  ///< Each reads three of many variables: v[a] * 2 + v[b] - v[c].
        Fan,   ///< All read one variable: v[0] * 2 - i.
        Chain, ///< Each reads the target before it and takes 1 off; the first reads v[0].
        Save   ///< Each belongs to a variable of its own: v[i].
    };
    enum class Targets
    {
        Objects, ///< Items, property "value".
        Widgets  ///< Labels and line edits in turn, line edits alone for Save; property "text".
    };

    Form(Kind kind, Targets targets, int count);

    /// What the first target holds that does not hold what it must; else empty. Not for Save.
    QString Error() const;

    const Kind kind;
    const char* const property;
    Variables variables;
    std::unique_ptr<QObject> top; ///< Parent of the targets, which are named o0, o1, ...
    std::vector<Binding> bindings;

private:
    QObject* MakeTarget(Targets targets, int index) const;
    Binding MakeBinding(QObject* target, int index) const;
    double Expected(int index) const;
};

#endif
