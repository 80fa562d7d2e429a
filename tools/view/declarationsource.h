#ifndef DECLARATIONSOURCE_H
#define DECLARATIONSOURCE_H

#include <QObject>
#include <QVector>

#include "DeclarationForms/formbinding.h"
#include "view/viewedproperty.h"

class IDataPeer;

/// The declarations of a form, for the tables and panels that show them.
class DeclarationSource : public QObject
{
    Q_OBJECT

public:
    /// In the order of the form.
    virtual const QVector<ViewedProperty>& Properties() const = 0;
    /// What the binding says of a property; without an object for one that is not bound.
    virtual BoundProperty Bound(int position) const = 0;
    /// Positions of the properties whose statements read that one.
    virtual QVector<int> ReadersOf(int position) const = 0;
    /// Where widget paths start; null when there is no form.
    virtual QObject* Form() const = 0;
    /// Of variables that the form names without one.
    virtual QString DefaultPackage() const = 0;
    /// Where the variables live; null when nowhere.
    virtual IDataPeer* Data() const = 0;

Q_SIGNALS:
    void AboutToBeReplaced();
    /// There are another form, or at the end none, and other properties; the old form goes soon.
    void Replaced();
    /// The value of a property may be another, or what is known about it.
    void PropertyChanged(int position);
};

#endif
