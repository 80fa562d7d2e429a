#ifndef TABLECOLORS_H
#define TABLECOLORS_H

#include <QColor>

/// Text colours of the tables, legible on light and dark ones.
namespace TableColors {

const QColor Warning(0xc0, 0x5a, 0x00);
const QColor Error(0xc6, 0x28, 0x28);

} // namespace TableColors

#endif
