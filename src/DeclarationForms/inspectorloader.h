#ifndef INSPECTORLOADER_H
#define INSPECTORLOADER_H

class FormBinding;

/// Shows the inspector in programs that know nothing of it.
class InspectorLoader
{
public:
    /// If the environment variable DECLARATIONFORMS_INSPECT asks for it, and only once. The inspector is looked for
    /// beside this library, and then where the system looks; one line in the log tells of one that is not there
    /// or does not fit. In the thread of the widgets; does nothing in others.
    static void LoadIfAsked(FormBinding* binding);
};

#endif
