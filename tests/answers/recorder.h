#ifndef RECORDER_H
#define RECORDER_H

#include <QStringList>

/// All that the library does with the random statement of that number: the values of the variables, the
/// parser's messages, the value, what is stored, a property bound to it, each call of the data peer, and the
/// lines on the debug stream. The same seed and number give the same record, whatever was recorded before.
QStringList Record(quint64 seed, int number);

#endif
