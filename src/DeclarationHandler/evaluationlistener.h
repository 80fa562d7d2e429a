#ifndef EVALUATIONLISTENER_H
#define EVALUATIONLISTENER_H

#include <QtGlobal>

#include "DeclarationHandler/declarationhandler_export.h"

class IExpression;
class QVariant;

/// Told what goes wrong while trees are evaluated, in place of the lines on the debug stream.
class DECLARATIONHANDLER_EXPORT EvaluationListener
{
public:
    /// Why a node has no value.
    enum Problem
    {
        NoCollection,     ///< What is indexed is neither a list nor a map.
        IndexNotInteger,  ///< The index into a list is no integer.
        IndexOutOfBounds, ///< The list has no element at that index.
        InvalidKey        ///< The key into a map is empty or blank.
    };

    virtual ~EvaluationListener();

    /// That \a node, which is being evaluated in this thread, has no value, because of \a value: what is
    /// indexed, the index or the key.
    virtual void OnEvaluationProblem(const IExpression& node, Problem problem, const QVariant& value) = 0;

    /// The one that evaluations in this thread tell; null when they write to the debug stream.
    static EvaluationListener* GetCurrent();

    /// Makes a listener the current one of this thread, for as long as this lives; null makes it the debug
    /// stream again. Uses may be nested, and end in the reverse order.
    class DECLARATIONHANDLER_EXPORT Use
    {
    public:
        /// \a listener must outlive this.
        explicit Use(EvaluationListener* listener);
        /// Makes the one before the current one again.
        ~Use();

    private:
        Q_DISABLE_COPY(Use)

        EvaluationListener* m_outer;
    };
};

#endif
