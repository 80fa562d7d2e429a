#ifndef FORMSAVER_H
#define FORMSAVER_H

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

#include "DeclarationForms/formsaveresult.h"

class BoundStatement;
class Evaluation;
class FormDelivery;
class FormEdits;
class FormState;
class QObject;

/// Writes edited properties of a form back.
class FormSaver
{
public:
    typedef std::vector<std::shared_ptr<BoundStatement>> Statements;

    FormSaver(FormState* state, FormEdits* edits, FormDelivery* delivery)
        : m_state(*state), m_edits(*edits), m_delivery(*delivery)
    {
    }

    /// Those of \a waiting that are edited, given in the order bound. What a save edits in turn is written as well,
    /// where it comes later in the order bound and \a isMeant is true of its object.
    FormSaveResult Save(Statements waiting, const std::function<bool(const QObject*)>& isMeant);

private:
    /// Why a value cannot be saved; the causes are told apart.
    struct Refusal
    {
        enum Cause
        {
            NoNumber,
            NoConversion,
            NotPassedOn,
            NotAccepted
        };

        Cause cause;
        QString reason;
    };

    bool SaveOne(const std::shared_ptr<BoundStatement>& statement, FormSaveResult* result, Statements* written);
    void TellReaders(const BoundStatement& statement);
    bool Store(const std::shared_ptr<BoundStatement>& statement, const QVariant& held, Refusal* refusal,
               Statements* written);
    static const QVariant* Convert(const BoundStatement& statement, Evaluation* evaluation, const QVariant& held,
                                   QVariant* converted, Refusal* refusal);
    void Refuse(const std::shared_ptr<BoundStatement>& statement, const QVariant& held, const Refusal& refusal,
                FormSaveResult* result);

    FormState& m_state;
    FormEdits& m_edits;
    FormDelivery& m_delivery;
};

#endif
