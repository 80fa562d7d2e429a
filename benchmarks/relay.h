#ifndef RELAY_H
#define RELAY_H

#include <QObject>
#include <QVariant>
#include <functional>

#include "variables.h"

/// The least that a binding costs which is an object of its own and is called back by the data layer: it
/// sends itself the variable's name through a queued signal, and on delivery evaluates, compares with
/// what the property holds, writes, and tells that it has.
class Relay : public QObject
{
    Q_OBJECT

public:
    Relay(QObject* target, const char* property, std::function<QVariant()> expression)
        : m_target(target), m_property(property), m_expression(std::move(expression))
    {
        connect(this, &Relay::Notified, this, &Relay::Update, Qt::QueuedConnection);
    }

    void OnNotify(const DataName& name) { Q_EMIT Notified(name); }

    void Update()
    {
        const QVariant value = m_expression();
        if (!m_written || m_target->property(m_property) != value) {
            m_written = true;
            m_target->setProperty(m_property, value);
        }
        Q_EMIT Updated();
    }

Q_SIGNALS:
    void Notified(const DataName& name);
    void Updated();

private:
    QObject* const m_target;
    const char* const m_property;
    const std::function<QVariant()> m_expression;
    bool m_written = false;
};

#endif
