#ifndef INSPECTEDFORM_H
#define INSPECTEDFORM_H

#include <QDateTime>
#include <QHash>
#include <QPointer>

#include <deque>
#include <unordered_map>

#include "DeclarationForms/formobserver.h"
#include "view/declarationsource.h"

/// What the evaluations of one declaration have cost since it was inspected first.
struct EvaluationFigures
{
    quint64 evaluations = 0;
    int lastSecond = 0; ///< Evaluations in the last second that is over.
    qint64 nanoseconds = 0;
    QString cause; ///< Of the last one, in words; empty before the first.
};

/// A time as the tables show it, without its unit.
QString InMilliseconds(qint64 nanoseconds);

/// One delivery with evaluations.
struct InspectedDelivery
{
    QDateTime end;
    int evaluations;
    qint64 nanoseconds;
    QString cause; ///< Of what was to be evaluated first.
};

/// A form binding as the inspector sees it. What it is told of is counted at once; the lists and the values follow
/// with Refresh(). Holds neither the binding nor the form.
class InspectedForm : public DeclarationSource
{
    Q_OBJECT

public:
    static const int MaxDeliveries = 1000;

    explicit InspectedForm(FormBinding* binding);

    /// Null once it is gone: then nothing is listed any more.
    FormBinding* Binding() const { return m_binding; }
    /// Names of the form's object and class.
    QString Title() const;

    const QVector<ViewedProperty>& Properties() const override { return m_properties; }
    BoundProperty Bound(int position) const override { return m_bound.value(position); }
    QVector<int> ReadersOf(int position) const override;
    QObject* Form() const override;
    QString DefaultPackage() const override;
    /// Null also from a change of what is bound to the next refresh: then the host may have deleted the peer.
    IDataPeer* Data() const override;

    /// Whether a declaration is of that object.
    bool Has(const QObject* object) const;
    EvaluationFigures FiguresOf(int position) const;
    /// The last ones, the newest last.
    const std::deque<InspectedDelivery>& Deliveries() const { return m_deliveries; }
    /// How many there have been.
    quint64 DeliveryCount() const { return m_deliveryCount; }
    /// What the statements read, each once and sorted.
    QVector<VariableIdentifier> Variables() const;

    // What the observer is told.
    void NoteBound();
    void NoteMarked(int place, const FormCause& cause);
    void NoteEvaluated(const FormEvaluation& evaluation);
    void NoteDelivered(int evaluations, qint64 nanoseconds);
    void NoteGone();

    /// Brings lists and counts up to date, and announces what has changed.
    void Refresh();
    /// In addition the problems, what is edited, and the evaluations in the second that is over.
    void EndSecond();

Q_SIGNALS:
    /// What is bound has changed; the peer is still there.
    void BoundChanged();

private:
    struct Cause
    {
        FormCause::Kind kind = FormCause::Call;
        VariableIdentifier variable;
        QPointer<QObject> object;
        QString name;
    };
    struct Counted
    {
        QPointer<QObject> object; ///< Null before the first evaluation.
        QString property;
        quint64 evaluations = 0;
        int fresh = 0; ///< Evaluations since the last refresh.
        int thisSecond = 0;
        int lastSecond = 0;
        qint64 nanoseconds = 0;
        Cause pending; ///< Of the evaluation to come.
        Cause cause;   ///< Of the last one.
    };
    typedef QPair<const QObject*, QString> Key;

    static QString Describe(const Cause& cause);
    void Rebuild();
    void AppendUnbound();
    QVector<FormProblem> UnboundProblems(const QVector<FormProblem>& standing) const;
    void ListReaders();
    void ForgetFresh();
    void MatchPlaces();
    void TakeState();
    void TakeProblems();

    QPointer<FormBinding> m_binding;
    bool m_isStale = true;
    QVector<ViewedProperty> m_properties; ///< Those that are bound, then those that cannot be.
    QVector<BoundProperty> m_bound;
    QHash<Key, QVector<int>> m_readers;
    QVector<int> m_places;                      ///< For each property; -1 before its first evaluation here.
    QHash<int, int> m_rows;                     ///< For each place.
    std::unordered_map<int, Counted> m_counted; ///< By place.
    QVector<int> m_changed;                     ///< Places with fresh evaluations.
    bool m_hasNewPlaces = false;                ///< Some were evaluated here for the first time.
    std::deque<InspectedDelivery> m_deliveries;
    quint64 m_deliveryCount = 0;
    QString m_firstMark;       ///< Why something was to be evaluated first, since the last delivery.
    QString m_firstEvaluation; ///< The cause of what was evaluated first.
};

#endif
