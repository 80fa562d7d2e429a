#ifndef PROPERTYPROBE_H
#define PROPERTYPROBE_H

#include <QObject>
#include <QScopedPointer>
#include <QVariant>

class Declaration;
class DeclarationHandler;

/// Watches a bound property from outside, since a handler keeps its declarations to itself: it reads the
/// property, as other statements of the form might, and so is told after each evaluation.
///
/// Made after all declarations and before the references are connected, it is the first to be told.
class PropertyProbe : public QObject
{
    Q_OBJECT
    /// Where the reading goes. Nothing is kept, so no value is of a wrong type or the same as before.
    Q_PROPERTY(QVariant value READ Nothing WRITE Ignore) // clazy:exclude=qproperty-without-notify

public:
    /// Nothing is watched where a statement cannot name the property.
    PropertyProbe(DeclarationHandler* handler, QObject* object, const QString& property);
    ~PropertyProbe() override;

    bool Counts() const { return !m_declaration.isNull(); }

Q_SIGNALS:
    void Evaluated();
    /// The property has another value, from whomever; only of properties that announce it.
    void Changed();

private:
    QVariant Nothing() const { return QVariant(); }
    void Ignore(const QVariant&) {}

    QScopedPointer<Declaration> m_declaration;
};

#endif
