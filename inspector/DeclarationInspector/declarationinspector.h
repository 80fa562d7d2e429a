#ifndef DECLARATIONINSPECTOR_H
#define DECLARATIONINSPECTOR_H

#include "DeclarationInspector/declarationinspector_export.h"

/// A window that shows what the statements of a running program do: every FormBinding of the process with its
/// declarations, their values and evaluations, what caused them and what they cost, and the data.
///
/// A program shows it by itself, or, without knowing of it, when the environment variable DECLARATIONFORMS_INSPECT is
/// 1. It keeps no form and no binding alive, and the program ends with its own last window.
class DECLARATIONINSPECTOR_EXPORT DeclarationInspector
{
public:
    /// Shows the one window of the process, or brings it to the front. It belongs to the inspector, which deletes it
    /// when the user closes it or the application ends. In the thread of the widgets; without a QApplication it only
    /// warns.
    static void Show();
};

#endif
