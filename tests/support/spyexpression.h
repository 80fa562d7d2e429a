#ifndef SPYEXPRESSION_H
#define SPYEXPRESSION_H

#include <QStringList>

#include "DeclarationHandler/iexpression.h"
#include "support/values.h"

/// A leaf that notes in a shared log what is done to it: its name for a read, «name=value» for a
/// store, «~name» for its end.
class SpyExpression : public IExpression
{
public:
    SpyExpression(const QString& name, const QVariant& value, QStringList* log, bool accepts = true)
        : m_name(name), m_value(value), m_log(log), m_accepts(accepts)
    {
    }
    ~SpyExpression() override { *m_log << "~" + m_name; }

    QVariant Retrieve() const override
    {
        *m_log << m_name;
        return m_value;
    }

    bool Store(const QVariant& value) override
    {
        *m_log << m_name + "=" + Exact(value);
        return m_accepts;
    }

private:
    QString m_name;
    QVariant m_value;
    QStringList* m_log;
    bool m_accepts;
};

#endif
