#ifndef STATEMENTSMENU_H
#define STATEMENTSMENU_H

#include <QAction>
#include <QDesignerTaskMenuExtension>
#include <QExtensionFactory>
#include <QPointer>

#include <functional>

/// Opens the statements of an object.
using StatementsOpener = std::function<void(QObject* object)>;

/// The entries of an object's context menu: those that it has without this, and "Statements...".
class StatementsMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)

public:
    /// \a others, which may be null, has the entries besides. What is \a done by a double click without this is done
    /// with it.
    StatementsMenu(QObject* object, QObject* others, QAction* done, const StatementsOpener& opener, QObject* parent);

    QAction* preferredEditAction() const override;
    QList<QAction*> taskActions() const override;

    /// Adds an entry for the statements of that object.
    void AddEntry(const QString& text, QObject* object);

private:
    const QPointer<QObject> m_others;
    const QPointer<QAction> m_done;
    const StatementsOpener m_opener;
    QAction m_separator;
    QList<QAction*> m_entries;
};

/// Makes the menus of the objects that statements can belong to.
class StatementsMenuFactory : public QExtensionFactory
{
    Q_OBJECT

public:
    StatementsMenuFactory(QExtensionManager* manager, const StatementsOpener& opener);
    ~StatementsMenuFactory() override;

    QObject* extension(QObject* object, const QString& iid) const override;

protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;

private:
    QAction* DoneWithout(QObject* object, const QDesignerTaskMenuExtension* others) const;

    const StatementsOpener m_opener;
    mutable bool m_asksOthers = false;
};

#endif
