#ifndef ITEMADAPTERS_H
#define ITEMADAPTERS_H

class AdapterTable;

/// The items of combo boxes and list widgets, and the data of the current one.
namespace ItemAdapters {

void AddTo(AdapterTable* table);

} // namespace ItemAdapters

#endif
