#ifndef NEIGHBOURHOOD_H
#define NEIGHBOURHOOD_H

#include <QPair>
#include <QString>
#include <QVector>

class DeclarationSource;

/// A declaration, a variable or a property without a declaration, near another declaration.
struct Neighbour
{
    QString label;
    int step;     ///< From the declaration in the middle: below 0 what it reads, above 0 who reads it.
    int position; ///< Of the declaration; -1 for none.
};

/// What a declaration reads and who reads it, in two steps each way.
struct Neighbourhood
{
    QVector<Neighbour> nodes;        ///< The declaration in the middle first; each thing once, with its shortest way.
    QVector<QPair<int, int>> arrows; ///< Nodes, from what is read to its reader.
};

/// Nothing for a position that is none.
Neighbourhood NeighbourhoodOf(const DeclarationSource& source, int position);

#endif
