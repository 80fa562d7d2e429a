#ifndef ITEM_H
#define ITEM_H

#include <QObject>

/// A plain object whose properties are bound.
class Item : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double value READ GetValue WRITE SetValue NOTIFY ValueChanged)
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY EnabledChanged)

public:
    using QObject::QObject;

    double GetValue() const { return m_value; }
    void SetValue(double value)
    {
        if (m_value == value)
            return;
        m_value = value;
        Q_EMIT ValueChanged();
    }

Q_SIGNALS:
    void ValueChanged();
    void EnabledChanged();

private:
    double m_value = -12345;
    bool m_enabled = false;
};

#endif
