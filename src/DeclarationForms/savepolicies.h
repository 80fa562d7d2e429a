#ifndef SAVEPOLICIES_H
#define SAVEPOLICIES_H

#include <vector>

#include "DeclarationForms/formbinding.h"

class QObject;

/// When the edits of an object are saved, and what ends editing.
namespace SavePolicies {

/// The one that the nearest dynamic property "savePolicy" of the object or above names, else \a policy. A text
/// that is none is told in the log.
FormBinding::SavePolicy Of(const QObject* object, FormBinding::SavePolicy policy);

/// The signals with which the user leaves or confirms an object, as indexes into the methods of its class.
std::vector<int> FinishSignals(const QObject* object);

/// Whether the object tells by itself when it is left.
bool TellsOfLeaving(const QObject* object);

/// Whether each change counts as confirmed, since the user neither confirms the object nor leaves it.
bool IsConfirmedByChange(const QObject* object);

} // namespace SavePolicies

#endif
