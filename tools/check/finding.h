#ifndef FINDING_H
#define FINDING_H

#include <QString>

#include "common/checks.h"
#include "common/statementtokens.h"
#include "common/xmlsource.h"

/// Something found in a form or a translation.
struct Finding
{
    Check check = {};
    Severity severity = {}; ///< As the checks have it, unless the project file says otherwise.
    QString message;
    QString file;
    TextPlace source; ///< In the source of the file.
    Position start;
    Position end;          ///< Behind the last character.
    QString object;        ///< The object that it is about, as «QLabel#name».
    QString property;      ///< The marked property, if it is about one.
    QString statement;     ///< The property's text.
    TextPlace place;       ///< In the statement.
    bool hasPlace = false; ///< Whether it is about a place in the statement.
    QString excerpt;       ///< Two lines to show the place.
    QString original;      ///< The statement of which it is a translation, if it is one.
    QString fix;           ///< What belongs in the place, where that is certain; else empty.
};

#endif
