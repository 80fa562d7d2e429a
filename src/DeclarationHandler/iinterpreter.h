#ifndef IINTERPRETER_H
#define IINTERPRETER_H

#include <QVariant>

#include "DeclarationHandler/declarationhandler_export.h"

class IDataObserver;
class IDataPeer;
class IExpression;
class IParsingResult;
class QObject;
class QString;

/// Evaluates single statements, or compiles them, for callers that bind no property.
///
/// Diagnostics: where \a result is not null, it receives a record that the caller owns; nothing is
/// printed. Where it is null, errors and warnings go to the debug stream. A blank statement is no
/// error: nothing is printed, and \a result is left as it is, so callers set it to null before.
///
/// The two short operations use the interpreter's own data peer and observer, the empty default
/// package and no widgets; they take turns under a lock, which a thread may take again from inside.
/// The two long ones take no lock and may run in several threads at once.
class DECLARATIONHANDLER_EXPORT IInterpreter
{
public:
    virtual ~IInterpreter() {}

    /// The statement's value; invalid when it has none or no tree can be built.
    virtual QVariant Evaluate(const QString& statement, IParsingResult** result) = 0;

    /// As above, with the context given. Variables are read through \a dataPeer, which may be null only
    /// where the statement names none. \a dataObserver may be null; one that is given stays
    /// subscribed to the variables when this returns. Widget paths start from \a widget and
    /// \a topWidget.
    virtual QVariant Evaluate(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                              const QString& defaultPackage, QObject* widget, QObject* topWidget,
                              IParsingResult** result) const = 0;

    /// The statement's tree, owned by the caller; null when none can be built. The nodes of a tree
    /// built with \a readOnly refuse to be written.
    virtual IExpression* CreateStatement(const QString& statement, bool readOnly, IParsingResult** result) = 0;

    /// As above, with the context given as for Evaluate().
    virtual IExpression* CreateStatement(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                                         bool readOnly, const QString& defaultPackage, QObject* widget,
                                         QObject* topWidget, IParsingResult** result) const = 0;
};

#endif
