#ifndef SLIPS_H
#define SLIPS_H

#include "common/checks.h"
#include "common/diagnosis.h"

/// What was probably meant where the parser stopped: an operator of another language, or words that stand where the
/// language does not have them. The message is empty when there is no guess.
StatementFinding FindSlip(const Diagnosis& diagnosis);

/// What a name stands for in other languages that is none here, such as "null"; empty when there is none.
QString ForeignWordHint(const QString& name);

#endif
