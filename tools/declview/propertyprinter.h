#ifndef PROPERTYPRINTER_H
#define PROPERTYPRINTER_H

#include <QObject>
#include <QStringList>

class FormSession;
struct ViewedProperty;

/// What a bound property holds in one line: path, property and value between tabs, or a JSON object.
QString PropertyLine(const ViewedProperty& property, bool asJson);

/// Prints bound properties to the standard output, all at first, then those that change.
class PropertyPrinter : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this.
    PropertyPrinter(const FormSession* session, bool asJson);

private:
    void PrintAll();
    void Print(int position);

    const FormSession* const m_session;
    const bool m_asJson;
    QStringList m_printed; ///< The last line of each property.
};

#endif
