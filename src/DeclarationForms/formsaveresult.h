#ifndef FORMSAVERESULT_H
#define FORMSAVERESULT_H

#include <QVector>

#include "DeclarationForms/formproblem.h"

/// What became of a save.
struct FormSaveResult
{
    int saved = 0;                ///< Properties written back.
    QVector<FormProblem> refused; ///< One for each edited property that could not be.
};

#endif
