#ifndef FORMADAPTERS_H
#define FORMADAPTERS_H

#include <QString>
#include <QVariant>

#include <functional>

#include "DeclarationForms/declarationforms_export.h"

class QObject;
struct QMetaObject;

/// Properties that classes lack: `~items` of a combo box, where QComboBox has no property of that name.
///
/// The library brings these:
/// - `items` of QComboBox and QListWidget: a list of texts, or of maps with `text`, `data` and `icon` (the path of
///   an image, or an image). Of a list widget that sorts, in its order.
/// - `currentData` of QComboBox, which can be written: the item with that data.
/// - `rows` of QTableWidget and QTreeWidget: a list of lists, or of maps. The header labels name the maps' keys;
///   without headers the keys in order become the headers. A cell is a text, a number, a truth value or an image.
/// - `checkedValue` of QButtonGroup, and of a widget around radio buttons: the dynamic property `value` of the
///   button that is checked. Of the buttons around which a widget is, those are followed that are there when it
///   is bound; a group follows later ones too.
///
/// What is shown twice keeps the current item and the selection: an item is known by its data or else its text,
/// a row by its first cell. There are at most 100,000 items or rows, and half a million cells; longer lists, and
/// values of another shape, are not taken.
class DECLARATIONFORMS_EXPORT FormAdapters
{
public:
    /// Adds a property to a class and those derived from it, or replaces one: that of the most derived class is
    /// used, and of one class the last. Before the forms are bound, in the thread of the widgets, for good.
    /// \a read answers what is there now. \a write answers whether the value was taken; it may get any value.
    /// \a notifySignal, a signal of the class as SIGNAL() writes it, tells of changes; null for none.
    /// Without class, name or one of the functions, or with a marked name, nothing is registered; with a signal
    /// that the class lacks the adapter tells of no changes. Both are told in the log.
    static void Register(const QMetaObject* type, const QString& property, std::function<QVariant(const QObject*)> read,
                         std::function<bool(QObject*, const QVariant&)> write, const char* notifySignal = nullptr);

    /// Whether that property of the object is an adapter's.
    static bool IsAdapted(const QObject* object, const QString& property);
};

#endif
