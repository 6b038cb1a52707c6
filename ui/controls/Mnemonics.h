#pragma once

#include <QMenu>

namespace tallyfold {

/// Assigns a mnemonic to every entry of `menu`: the first letter of one of its words that no other entry
/// uses, else any of its letters. Existing mnemonics are kept.
void giveMnemonics(QMenu &menu);

} // namespace tallyfold
