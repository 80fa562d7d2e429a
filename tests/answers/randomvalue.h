#ifndef RANDOMVALUE_H
#define RANDOMVALUE_H

#include <QVariant>

class Random;

/// A value of a random type, at times one that holds others.
QVariant RandomValue(Random& random, int depth = 2);

/// A text that stands in a statement between single quotes.
QString RandomText(Random& random);

/// Type and content, exactly, with nothing that QVariant itself converts.
QString Describe(const QVariant& value);

#endif
