#ifndef PROPERTYTRIAL_H
#define PROPERTYTRIAL_H

#include <QMetaProperty>
#include <QScopedPointer>
#include <QVariant>

class FormLoader;
struct FormObject;
class QWidget;

/// Tries what becomes of a value that a property of a form's object is set to.
class PropertyTrial
{
public:
    /// What the property cannot take \a value for, such as "it wants a whole number"; empty when it can.
    static QString Refusal(const QMetaProperty& property, QVariant value);

    /// \a className is the class to try it with, which \a loader makes. Object and loader must outlive this.
    PropertyTrial(const FormObject& object, const QString& className, FormLoader* loader);
    ~PropertyTrial();

    /// Why the property of such an object, as the form sets it up, takes another value in the place of \a value;
    /// empty when it does not, or when the form does not tell.
    QString Replacement(const QString& property, const QVariant& value);
    /// The properties of the object that limit the values of a property.
    static QStringList LimitsOf(const QString& property);
    /// Whether the form states one of the limits.
    bool StatesLimit(const QString& property) const;

private:
    void MakeWidget();
    void AddItems();

    const FormObject& m_object;
    const QString m_className;
    FormLoader* const m_loader;
    QScopedPointer<QWidget> m_widget; ///< Made when it is first asked for.
};

#endif
