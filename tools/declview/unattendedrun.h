#ifndef UNATTENDEDRUN_H
#define UNATTENDEDRUN_H

#include <QString>

class FormSession;
class MainWindow;

/// What is done without a person.
struct UnattendedTasks
{
    QString picture; ///< File for a picture of the window; may be empty.
    bool print;      ///< What the bound properties hold, on stdout.
    bool asJson;

    bool Any() const { return print || !picture.isEmpty(); }
};

/// Lets the form settle and does the tasks. The last diagnostic of each property goes to stderr.
/// False when the picture cannot be written.
bool RunUnattended(const UnattendedTasks& tasks, const FormSession& session, MainWindow* window);

#endif
