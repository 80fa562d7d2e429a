#include "DeclarationHandler/expression.h"

Expression::Expression(bool readOnly) : m_readOnly(readOnly) {}
