#pragma once

#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolView.h"

#include <QWidget>

namespace tallyfold {

/// A symbol and, beside it, a text that wraps.
class SymbolLabel final : public QWidget {
    Q_OBJECT
public:
    /// The symbol in `symbolTone`, the text in `textTone`.
    SymbolLabel(const QString &symbol, Tone symbolTone, TextStyle style, Tone textTone = Tone::text,
                QWidget *parent = nullptr);

    void setText(const QString &text);
    /// Has the text told to those who do not see it whenever it appears or changes.
    void setAnnounced();
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString symbol() const;

private:
    SymbolView *m_symbol;
    StyledLabel *m_text;
    bool m_isAnnounced = false;
};

} // namespace tallyfold
