#ifndef FORMREGISTRY_H
#define FORMREGISTRY_H

#include <QVector>

class FormBinding;

/// The bindings of the process, from any thread.
class FormRegistry
{
public:
    static void Add(FormBinding* binding);
    static void Remove(FormBinding* binding);
    static QVector<FormBinding*> Bindings();
};

#endif
