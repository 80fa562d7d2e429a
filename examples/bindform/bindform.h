#ifndef BINDFORM_H
#define BINDFORM_H

#include <QString>
#include <QVector>

class DeclarationHandler;
class QObject;
class QWidget;

/// A marked dynamic property, as the author of the form entered it.
struct MarkedProperty
{
    QObject* object;
    QString name; ///< With its marker.
    QString text; ///< The statement, or the entry of a constant map.
};

/// What BindForm() made of the marked properties of a form, each list in the order of its walk.
struct FormBinding
{
    QVector<MarkedProperty> declarations; ///< Bound to their statements.
    QVector<MarkedProperty> constants;    ///< Entered into constant maps.
    QVector<MarkedProperty> refused;      ///< Left alone: no text, or not taken by the handler.
};

/// Hands the statements that stand in a form's dynamic properties to the handler.
///
/// In Designer: add a dynamic property of type String, name it as the property to bind with a marker
/// in front, and enter the statement, not translatable:
///
///     ~text          engineSpeed + ' rpm'     the text follows the statement
///     _value         limits[0]                and is written back by a save
///     ~colors[true]  red                      the entry "true" of the constant map "colors"
///
/// The walk goes from the form to its children, in the order of QObject::children(), each with all
/// below it before the next; on one object, in the order in which the properties were set. Names that
/// start with "_q_" are Qt's own, on any widget, and passed over. "~" declares read-only, and every
/// declaration initializes its property.
///
/// It binds and no more: default declarations, ConnectPropertyCrossReferences() and Update() are left
/// to the caller, who may have declarations to add first. It does not tell whether the statements
/// parse; the Interpreter does.
FormBinding BindForm(DeclarationHandler& handler, QWidget* form, const QString& defaultPackage);

/// What became of one marked property.
enum class BindingKind
{
    Declaration, ///< Bound to its statement.
    Constant,    ///< Entered into a constant map.
    Refused      ///< Left alone: no text, or not taken by the handler.
};

/// The two steps of BindForm(), for callers with something to do in between. All properties are
/// collected before the first is bound.
QVector<MarkedProperty> CollectMarkedProperties(QWidget* form);
BindingKind BindProperty(DeclarationHandler& handler, QWidget* form, const MarkedProperty& property,
                         const QString& defaultPackage);

#endif
