#include "DeclarationHandler/evaluationlistener.h"

namespace {

thread_local EvaluationListener* current = nullptr;

} // namespace

EvaluationListener::~EvaluationListener() {}

EvaluationListener* EvaluationListener::GetCurrent()
{
    return current;
}

EvaluationListener::Use::Use(EvaluationListener* listener) : m_outer(current)
{
    current = listener;
}

EvaluationListener::Use::~Use()
{
    current = m_outer;
}
