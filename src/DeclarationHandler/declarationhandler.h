#ifndef DECLARATIONHANDLER_H
#define DECLARATIONHANDLER_H

#include <QMap>
#include <QScopedPointer>
#include <QStringList>
#include <QVariant>

#include "DeclarationHandler/declaration.h"

class DeclarationHandlerPrivate;
class IDataObserver;
class IDataPeer;
class IExpression;

/// Holds the declarations of one form: it keeps bound properties equal to their statements and writes
/// them back on request.
///
/// For each form:
/// 1. AddDeclaration() for every bound property, then AddDefaultDeclaration() for properties that may
///    still want a statement; AddConstMapDeclaration() for entries of constant maps.
/// 2. ConnectPropertyCrossReferences(), once they are all in.
/// 3. Update() for the first values. From then on changes of data arrive by themselves, as long as an
///    event loop runs in this thread.
/// 4. Save() and SaveProperty() when the host wants the properties' values back in the data.
/// 5. Clear(), or the destructor, before the widgets go away and while the data layer still exists.
///
/// Everything belongs in the thread of the widgets. Objects stay the caller's. A bound object that is
/// destroyed early leaves a declaration that does nothing. A slot that runs because of Update() or
/// Save() may clear or delete the handler; declarations not reached by then are left out.
///
/// It does not show how a statement fails to parse, does not watch properties that no declaration
/// writes, and does not save by itself.
///
/// Property names come marked, with "~" or "_" in front (see PropertyInfo), or normal, without. The
/// two markers are alike to the handler.
class DECLARATIONHANDLER_EXPORT DeclarationHandler
{
public:
    DeclarationHandler();
    /// Clear().
    virtual ~DeclarationHandler();

    /// Binds a property of \a widget to a statement. \a property is the marked name. \a topWidget is
    /// the top of the form, where widget paths start, and \a defaultPackage the package of variables
    /// named without one. A \a readOnly declaration never writes back. With \a initialize,
    /// InitializeProperty() comes first.
    ///
    /// Objects in widget paths are looked for once for a form: until ConnectPropertyCrossReferences(), an
    /// object that is still there under its name is taken again, even where another of that name has come.
    ///
    /// False, with nothing done, for a name without a marker or a null widget. A statement that does not
    /// parse is added all the same and has no effect. A second declaration of the same property is
    /// added too.
    bool AddDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                        QString defaultPackage, bool readOnly, bool initialize);

    /// As AddDeclaration(), read-only and without initializing, unless the property has a declaration
    /// already: then false, with nothing done.
    bool AddDefaultDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                               QString defaultPackage);

    /// Puts one text into a map-valued property of \a widget. \a mapEntry names map and key, as
    /// ConstantMapParser reads it. The property and the entry are made where they are new. False, with
    /// nothing done, when \a mapEntry is no such reference or the widget is null.
    bool AddConstMapDeclaration(QObject* widget, QString mapEntry, QString value);

    /// Makes a declaration of the property with that normal name and notes which properties its
    /// statement reads, without adding it: the caller owns it. Never null.
    Declaration* CreateDeclaration(QObject* widget, QString property, QObject* topWidget, const QString& statement,
                                   const QString& defaultPackage, bool readOnly);

    /// Shows that a property has no value yet: hides the widget for "visible", marks text for the user's
    /// eyes with GetUninitializedVariant(), and leaves any other property alone. Takes the normal name.
    void InitializeProperty(QObject* widget, const QString& property) const;

    /// Makes every declaration whose statement reads a property run again whenever that property's
    /// declaration writes it; of several declarations of one property, the first added. Reads of
    /// properties that nobody declares are forgotten; those of "loc_" properties are told on the debug
    /// stream.
    void ConnectPropertyCrossReferences();

    /// Evaluates all declarations in the order added.
    void Update();

    /// Writes the properties' values back to the data, in the order added. With a null \a scope or an
    /// empty \a objectName, all of them. Else those of objects that bear that name, and once for each
    /// widget of that name below \a scope those of the widgets inside it.
    void Save(QObject* scope, const QString& objectName);

    /// Writes the value of one property back: that of the first declaration with this widget and this
    /// normal name. Without one, nothing happens.
    void SaveProperty(QObject* widget, const QString& property);

    /// Deletes all declarations. The handler can be filled again.
    void Clear();

    /// The tree of a statement, owned by the caller and not known to the handler; null when it does not
    /// parse. Arguments as for IParser::Parse().
    IExpression* ParseExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* topWidget, QObject* widget,
                                 const QString& statement, const QString& defaultPackage, bool readOnly);

    /// A declaration of the property with that marked name, owned by the caller, unknown to the handler
    /// and deaf to notifications. It takes ownership of the tree. Null for a name without a marker: the
    /// tree then stays the caller's.
    Declaration* ParseDeclaration(QObject* widget, QString property, IExpression* condition);

    /// The text with the sign for "not yet initialized", U+25BA, in front.
    QString GetUninitializedString(QString text) const;
    /// The list with every text marked.
    QStringList GetUninitializedStringList(QStringList list) const;
    /// The map with every value marked, maps inside it included.
    QMap<QString, QVariant> GetUninitializedMap(QMap<QString, QVariant> map) const;
    /// Texts, lists of texts and maps marked; any other value as it is, a QVariantList too.
    QVariant GetUninitializedVariant(QVariant value) const;

private:
    Q_DISABLE_COPY(DeclarationHandler)

    QScopedPointer<DeclarationHandlerPrivate> d;
};

#endif
