#ifndef CHOICEADAPTERS_H
#define CHOICEADAPTERS_H

class AdapterTable;

/// The value of the button that is checked, of button groups and of widgets around radio buttons.
namespace ChoiceAdapters {

void AddTo(AdapterTable* table);

} // namespace ChoiceAdapters

#endif
