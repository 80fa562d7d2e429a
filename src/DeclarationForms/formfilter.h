#ifndef FORMFILTER_H
#define FORMFILTER_H

#include <QObject>
#include <QPointer>
#include <QVector>

class QDynamicPropertyChangeEvent;

/// Sees events of the bound objects of a form, and of the form and all above it.
class FormFilter : public QObject
{
public:
    class Listener
    {
    public:
        virtual void OnPropertySet(QObject* object, const QByteArray& name) = 0;
        virtual void OnLeft(QObject* object) = 0;
        virtual void OnLocaleChange(QObject* object) = 0;
        /// The form is about to handle a change of language.
        virtual void OnLanguageChange() = 0;
        /// With the next turn after PostTurn() or a change of language.
        virtual void OnTurn() = 0;

    protected:
        ~Listener() = default;
    };

    explicit FormFilter(Listener* listener);

    /// To be filtered is, besides the bound objects, the form with all above it.
    void SetForm(QObject* form);
    void PostTurn();
    void Close();

protected:
    bool event(QEvent* event) override;
    /// Events of bound objects.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// Apart, since the form may be bound as well.
    class Ancestors : public QObject
    {
    public:
        explicit Ancestors(FormFilter* owner) : m_owner(owner) {}
        void Install(QObject* form);
        void Remove();

    protected:
        bool eventFilter(QObject* object, QEvent* event) override;

    private:
        FormFilter* const m_owner;
        QPointer<QObject> m_form;
        QVector<QPointer<QObject>> m_objects;
    };

    Listener* m_listener;
    Ancestors m_ancestors;
    bool m_isPosted = false;
};

#endif
