// Evaluating single statements, without any widget.

#include <QScopedPointer>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "expect.h"

namespace {

void ExpectValue(Interpreter& interpreter, const QString& statement, const QVariant& value)
{
    Expect(statement, interpreter.Evaluate(statement, nullptr), value);
}

/// The first thing that there is to say about the statement.
QString Diagnose(Interpreter& interpreter, const QString& statement)
{
    IParsingResult* result = nullptr;
    interpreter.Evaluate(statement, &result);
    const QScopedPointer<IParsingResult> owned(result);
    return result->GetWarningMessages().value(0);
}

} // namespace

int main()
{
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(VariableIdentifier("speed", "Engine"), 1500, IDataPeer::NoFlag);
    data->ChangeValue(VariableIdentifier("limits", "Engine"), QVariantList{600, 1800}, IDataPeer::NoFlag);

    Interpreter interpreter(data, nullptr, nullptr);
    ExpectValue(interpreter, "@Engine:speed", 1500);
    ExpectValue(interpreter, "@Engine:speed > 600 AND @Engine:speed < @Engine:limits[1]", true);
    ExpectValue(interpreter, "@Engine:speed / 60 + ' per second'", "25 per second");
    ExpectValue(interpreter, "HASVALUE @Engine:temperature", false);
    ExpectValue(interpreter, "@Engine:temperature", QVariant());

    // Numbers in a statement are texts: the plus sign joins them, the other operators compute.
    ExpectValue(interpreter, "1 + 2", "12");
    ExpectValue(interpreter, "3 - 1", 2.0);

    // "-1" is a number here, which leaves no operator between the two operands.
    Expect("@Engine:speed -1", Diagnose(interpreter, "@Engine:speed -1"), "Did not expect token: \"-1\".");
    Expect("(1 = 1", Diagnose(interpreter, "(1 = 1"), "Missing: \")\".");
    return failures;
}
