#ifndef UNATTENDEDRUN_H
#define UNATTENDEDRUN_H

#include <QSize>
#include <QString>

class FormSession;
class QWidget;

/// What is done without a person.
struct UnattendedTasks
{
    QString picture; ///< File for a picture; may be empty.
    bool formAlone;  ///< Is in the picture, without the window around it.
    QSize formSize;  ///< Invalid for the form's own.
    double scale;    ///< Pixels of the picture for each of the screen.
    bool print;      ///< What the bound properties hold, on stdout.
    bool asJson;

    bool Any() const { return print || !picture.isEmpty(); }
};

/// Lets the form settle and does the tasks; \a shown is in the picture. The last diagnostic of each property goes to
/// stderr. False when the picture cannot be written.
bool RunUnattended(const UnattendedTasks& tasks, const FormSession& session, QWidget* shown);

#endif
