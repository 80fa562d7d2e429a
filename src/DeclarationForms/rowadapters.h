#ifndef ROWADAPTERS_H
#define ROWADAPTERS_H

class AdapterTable;

/// The rows of table and tree widgets.
namespace RowAdapters {

void AddTo(AdapterTable* table);

} // namespace RowAdapters

#endif
