#pragma once

#include <QMenu>

namespace tallyfold {

/// Gives every entry of `menu` a letter that chooses it while the menu is open: the first of one of its words
/// that no other entry has, or any other letter of its. Entries that have one keep it.
void giveMnemonics(QMenu &menu);

} // namespace tallyfold
