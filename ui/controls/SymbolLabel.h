#pragma once

#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolView.h"

#include <QWidget>

namespace tallyfold {

/// A symbol with wrapping text beside it.
class SymbolLabel final : public QWidget {
    Q_OBJECT
public:
    /// The symbol in `symbolTone`, the text in `textTone`.
    SymbolLabel(const QString &symbol, Tone symbolTone, TextStyle style, Tone textTone = Tone::text,
                QWidget *parent = nullptr);

    void setText(const QString &text);
    /// Lets screen readers speak the text whenever it appears or changes.
    void setAnnounced();
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString symbol() const;

private:
    SymbolView *m_symbol;
    StyledLabel *m_text;
    bool m_isAnnounced = false;
};

} // namespace tallyfold
