#pragma once

#include "ui/theme/Tones.h"

#include <QWidget>

namespace tallyfold {

/// A decorative symbol; its meaning is in a text beside it.
class SymbolView final : public QWidget {
    Q_OBJECT
public:
    /// `size` in device-independent pixels.
    SymbolView(const QString &symbol, Tone tone, int size, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QString symbol() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    Tone m_tone;
    int m_size;
};

} // namespace tallyfold
